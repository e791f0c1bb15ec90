#pragma once

#include <QAbstractButton>
#include <QColor>

#include "ui/text_style.h"

namespace brimlo::ui {

/// A push button without a frame: a text, on a rounded rectangle where it has a fill. While the
/// keyboard is on it, a ring around it says so.
class Button : public QAbstractButton {
 public:
  struct Look {
    TextStyle style;
    QColor text;
    QColor fill = Qt::transparent;
    int horizontalPadding = 0;
    int verticalPadding = 0;
    double radius = 0;
  };
  Button(const QString& label, const Look& look);

  void setLabel(const QString& label);

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  Look look_;
  bool ringed_ = false;
};

}  // namespace brimlo::ui
