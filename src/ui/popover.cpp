#include "ui/popover.h"

#include <QPainter>

#include "ui/shapes.h"
#include "ui/stack.h"

namespace brimlo::ui {
namespace {

constexpr int kMargin = 12;
constexpr double kCornerRadius = 10;

}  // namespace

Popover::Popover(QWidget* content) {
  layOutColumn(*this, {.padding = padding(kMargin, kMargin)}, {content});
}

void Popover::setColors(const QColor& surface, const QColor& border) {
  surface_ = surface;
  border_ = border;
  update();
}

QRegion Popover::opaqueShape() const {
  return {roundedRect(card(), kCornerRadius).toFillPolygon().toPolygon()};
}

void Popover::paintEvent(QPaintEvent*) {
  const double scale = devicePixelRatioF();
  if (shadow_.size() != (QSizeF(size()) * scale).toSize()) {
    const Shadow shadow{.opacity = 0.3, .blurRadius = 10, .offset = {0, 3}};
    shadow_ = shadowImage(size(), card(), kCornerRadius, shadow, scale);
  }
  QPainter painter(this);
  painter.drawImage(0, 0, shadow_);
  fillRounded(painter, card(), kCornerRadius, surface_);
  strokeRounded(painter, card(), kCornerRadius, border_, 1);
}

QRectF Popover::card() const {
  return QRectF(rect()).adjusted(kMargin, kMargin, -kMargin, -kMargin);
}

}  // namespace brimlo::ui
