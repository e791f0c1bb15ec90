#pragma once

#include <QColor>

#include "ui/pressable.h"
#include "ui/text_style.h"

namespace brimlo::ui {

/// A text, and at the other end a switch that is on or off. What it is on follows `setOn` alone: a
/// click only reports itself.
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

  void setOn(bool on);
  bool isOn() const { return on_; }

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Look look_;
  bool on_ = false;
};

}  // namespace brimlo::ui
