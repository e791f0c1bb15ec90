#include "ui/shape_box.h"

#include <QPainter>

#include "ui/shapes.h"

namespace brimlo::ui {

ShapeBox::ShapeBox(double radius, const QColor& fill) : radius_(radius), fill_(fill) {}

void ShapeBox::setFill(const QColor& fill) {
  fill_ = fill;
  update();
}

void ShapeBox::setBorder(const QColor& border) {
  border_ = border;
  update();
}

void ShapeBox::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  fillRounded(painter, rect(), radius_, fill_);
  if (border_.alpha() > 0) strokeRounded(painter, rect(), radius_, border_, 1);
}

ShapeBox* divider(const QColor& color) {
  auto* line = new ShapeBox(0, color);
  line->setFixedHeight(1);
  return line;
}

}  // namespace brimlo::ui
