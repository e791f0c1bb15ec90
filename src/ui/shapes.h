#pragma once

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QRectF>

namespace brimlo::ui {

/// A radius that makes a capsule of any rectangle.
inline constexpr double kCapsule = 1e6;

/// A rectangle with continuous corners: its edge bends gradually, where an arc of a circle would
/// begin at once. `radius`: of the circle that passes through the middle of the corner; no more
/// than half of a side is used.
QPainterPath roundedRect(const QRectF& rect, double radius);

/// `rect` with its edges moved to the nearest edges of the painter's device pixels, where lines are
/// crisp at every scale.
QRectF snapped(const QPainter& painter, const QRectF& rect);

/// Fills a rounded rectangle, its straight edges crisp.
void fillRounded(QPainter& painter, const QRectF& rect, double radius, const QColor& color);

/// Strokes a rounded rectangle inside its edge, its straight edges crisp.
void strokeRounded(QPainter& painter, const QRectF& rect, double radius, const QColor& color,
                   double width);

/// A black shadow.
struct Shadow {
  double opacity;
  double blurRadius;  ///< how far the edge spreads: two standard deviations
  QPointF offset;
};
/// The shadow that a rounded rectangle `rect` casts into an image of `size`. Both are in
/// device-independent pixels, `scale` of them make a pixel of the image. The image has nothing but
/// alpha, a quarter of the memory.
QImage shadowImage(QSize size, const QRectF& rect, double radius, const Shadow& shadow,
                   double scale);

}  // namespace brimlo::ui
