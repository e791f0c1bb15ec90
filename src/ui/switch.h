#pragma once

#include <QColor>

#include "ui/pressable.h"
#include "ui/text_style.h"

namespace brimlo::ui {

/// A text, and at the other end a switch, which is on while the button is checked. Only
/// `setChecked` changes that; a click is merely reported.
class Switch : public Pressable {
 public:
  struct Look {
    TextStyle style;
    QColor text;
    QColor tint;   ///< behind the knob while it is on
    QColor track;  ///< while it is off
    int horizontalPadding = 0;
  };
  Switch(const QString& label, const Look& look);

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void nextCheckState() override {}

 private:
  Look look_;
};

}  // namespace brimlo::ui
