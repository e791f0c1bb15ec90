#include "ui/button.h"

#include <QPainter>
#include <QTimerEvent>
#include <algorithm>
#include <cmath>

#include "ui/label.h"
#include "ui/shapes.h"
#include "ui/symbol.h"

namespace brimlo::ui {
namespace {

constexpr double kRingRadius = 4;  // of a button without fill and border

}  // namespace

Button::Button(const QString& label, const Look& look) : look_(look) {
  setLabel(label);
}

void Button::setLabel(const QString& label) {
  setText(label);
  setAccessibleName(label);
  setFixedSize(sizeHint());
}

void Button::setBusy(bool busy) {
  constexpr int kTurnMs = 90;
  if (busy == turning_.isActive()) return;
  if (busy) {
    turning_.start(kTurnMs, this);
  } else {
    turning_.stop();
  }
  update();
}

QSize Button::sizeHint() const {
  const QFontMetricsF metrics(ui::font(look_.style));
  const double width = symbolRoom(look_.leadingSymbol) + textWidth(text(), look_.style) +
                       symbolRoom(look_.trailingSymbol);
  return {static_cast<int>(std::ceil(width)) + 2 * look_.horizontalPadding,
          static_cast<int>(std::ceil(metrics.height())) + 2 * look_.verticalPadding};
}

/// The width of a symbol and of the gap between it and the text; 0 without a symbol.
double Button::symbolRoom(const QString& symbol) const {
  return symbol.isEmpty() ? 0 : symbolSize(symbol, look_.style).width() + look_.spacing;
}

void Button::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const bool shaped = look_.fill.alpha() > 0 || look_.border.alpha() > 0;
  painter.setOpacity(!isEnabled() ? 0.5 : isDown() ? 0.75 : 1);
  if (look_.fill.alpha() > 0) fillRounded(painter, rect(), look_.radius, look_.fill);
  if (look_.border.alpha() > 0) strokeRounded(painter, rect(), look_.radius, look_.border, 1);
  const int x = look_.horizontalPadding, y = look_.verticalPadding;
  QRectF room = QRectF(rect()).adjusted(x, y, -x, -y);
  const auto symbolAt = [&](const QString& symbol, double left) {
    const QSizeF size = symbolSize(symbol, look_.style);
    return QRectF({left, room.center().y() - size.height() / 2}, size);
  };
  if (!look_.leadingSymbol.isEmpty()) {
    const QRectF place = symbolAt(look_.leadingSymbol, room.left());
    if (turning_.isActive()) {
      paintWheel(painter, place);
    } else {
      paintSymbol(painter, look_.leadingSymbol, place, look_.text);
    }
    room.setLeft(room.left() + symbolRoom(look_.leadingSymbol));
  }
  if (!look_.trailingSymbol.isEmpty()) {
    const double width = symbolRoom(look_.trailingSymbol);
    const QRectF place = symbolAt(look_.trailingSymbol, room.right() - width + look_.spacing);
    paintSymbol(painter, look_.trailingSymbol, place, look_.text);
    room.setRight(room.right() - width);
  }
  paintText(painter, room, text(), look_.style, look_.text);
  if (!isRinged()) return;
  const QRectF ring = shaped ? QRectF(rect()).adjusted(2, 2, -2, -2) : QRectF(rect());
  strokeRounded(painter, ring, shaped ? look_.radius - 2 : kRingRadius, look_.text, 1.5);
}

void Button::paintWheel(QPainter& painter, const QRectF& rect) const {
  constexpr int kSpokes = 8;
  const double radius = std::min(rect.width(), rect.height()) / 2;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(rect.center());
  painter.rotate(360.0 / kSpokes * turn_);
  for (int spoke = 0; spoke < kSpokes; ++spoke) {
    QColor color = look_.text;
    color.setAlphaF(static_cast<float>(spoke + 1) / kSpokes);
    painter.setPen(QPen(color, radius / 4, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(0, -radius * 0.5), QPointF(0, -radius * 0.9));
    painter.rotate(360.0 / kSpokes);
  }
  painter.restore();
}

void Button::timerEvent(QTimerEvent* event) {
  if (event->timerId() != turning_.timerId()) return Pressable::timerEvent(event);
  ++turn_;
  update();
}

}  // namespace brimlo::ui
