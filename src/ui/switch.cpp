#include "ui/switch.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "ui/label.h"
#include "ui/shapes.h"

namespace brimlo::ui {
namespace {

constexpr QSizeF kTrack{26, 15};
constexpr double kKnob = 11;
constexpr int kSpacing = 8;

}  // namespace

Switch::Switch(const QString& label, const Look& look) : look_(look) {
  setCheckable(true);
  setText(label);
  setAccessibleName(label);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize Switch::sizeHint() const {
  const double height = QFontMetricsF(ui::font(look_.style)).height();
  const double width = textWidth(text(), look_.style) + kSpacing + kTrack.width();
  return {static_cast<int>(std::ceil(width)) + 2 * look_.horizontalPadding,
          static_cast<int>(std::ceil(std::max(height, kTrack.height())))};
}

void Switch::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  QRectF room = QRectF(rect()).adjusted(look_.horizontalPadding, 0, -look_.horizontalPadding, 0);
  QRectF track({room.right() - kTrack.width(), room.center().y() - kTrack.height() / 2}, kTrack);
  room.setRight(track.left() - kSpacing);
  paintText(painter, room, text(), look_.style, look_.text);
  fillRounded(painter, track, kCapsule, isChecked() ? look_.tint : look_.track);
  const double margin = (kTrack.height() - kKnob) / 2;
  const double x = isChecked() ? track.right() - margin - kKnob : track.left() + margin;
  painter.setPen(Qt::NoPen);
  painter.setBrush(isDown() ? QColor(235, 235, 235) : QColor(Qt::white));
  painter.drawEllipse(QRectF(x, track.top() + margin, kKnob, kKnob));
  if (isRinged()) strokeRounded(painter, rect(), 4, look_.tint, 1.5);
}

}  // namespace brimlo::ui
