#pragma once

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QRectF>

namespace brimlo::ui {

/// A radius that makes a capsule of any rectangle.
inline constexpr double kCapsule = 1e6;

/// A rectangle with continuous corners: its edge bends gradually instead of turning into an arc at
/// once. `radius` is that of the circle through the middle of the corner; more than half of the
/// shorter side counts as half of it.
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
/// The shadow that a rounded rectangle `rect` casts, as an image of `size`. Both are in
/// device-independent pixels, each of them `scale` pixels of the image wide. The image holds only
/// alpha, which takes a quarter of the memory.
QImage shadowImage(QSize size, const QRectF& rect, double radius, const Shadow& shadow,
                   double scale);

}  // namespace brimlo::ui
