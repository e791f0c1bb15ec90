#include "ui/button.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QPainter>
#include <cmath>

#include "ui/label.h"
#include "ui/shapes.h"

namespace brimlo::ui {
namespace {

constexpr double kRingRadius = 4;  // of a button without a fill

}  // namespace

Button::Button(const QString& label, const Look& look) : look_(look) {
  setFocusPolicy(Qt::StrongFocus);
  setLabel(label);
}

void Button::setLabel(const QString& label) {
  setText(label);
  setAccessibleName(label);
  setFixedSize(sizeHint());
}

QSize Button::sizeHint() const {
  const QFontMetricsF metrics(ui::font(look_.style));
  return {static_cast<int>(std::ceil(textWidth(text(), look_.style))) + 2 * look_.horizontalPadding,
          static_cast<int>(std::ceil(metrics.height())) + 2 * look_.verticalPadding};
}

void Button::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const bool filled = look_.fill.alpha() > 0;
  if (isDown()) painter.setOpacity(0.75);
  if (filled) fillRounded(painter, rect(), look_.radius, look_.fill);
  const int x = look_.horizontalPadding, y = look_.verticalPadding;
  paintText(painter, QRectF(rect()).adjusted(x, y, -x, -y), text(), look_.style, look_.text);
  if (!ringed_) return;
  const QRectF ring = filled ? QRectF(rect()).adjusted(2, 2, -2, -2) : QRectF(rect());
  strokeRounded(painter, ring, filled ? look_.radius - 2 : kRingRadius, look_.text, 1.5);
}

void Button::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) return click();
  QAbstractButton::keyPressEvent(event);
}

void Button::focusInEvent(QFocusEvent* event) {
  ringed_ = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
  QAbstractButton::focusInEvent(event);
}

void Button::focusOutEvent(QFocusEvent* event) {
  ringed_ = false;
  QAbstractButton::focusOutEvent(event);
}

}  // namespace brimlo::ui
