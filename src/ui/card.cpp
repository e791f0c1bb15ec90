#include "ui/card.h"

#include <QPainter>

namespace brimlo::ui {

Card::Card(const Look& look) : look_(look) {
  setContentsMargins(look.margin, look.margin, look.margin, look.margin);
}

void Card::setColors(const QColor& surface, const QColor& border) {
  surface_ = surface;
  border_ = border;
  update();
}

QRegion Card::opaqueShape() const {
  return {roundedRect(contentsRect(), look_.radius).toFillPolygon().toPolygon()};
}

void Card::paintEvent(QPaintEvent*) {
  const double scale = devicePixelRatioF();
  if (shadow_.size() != (QSizeF(size()) * scale).toSize()) {
    shadow_ = shadowImage(size(), contentsRect(), look_.radius, look_.shadow, scale);
  }
  QPainter painter(this);
  painter.drawImage(0, 0, shadow_);
  fillRounded(painter, contentsRect(), look_.radius, surface_);
  strokeRounded(painter, contentsRect(), look_.radius, border_, 1);
}

}  // namespace brimlo::ui
