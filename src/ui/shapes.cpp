#include "ui/shapes.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace brimlo::ui {
namespace {

/// A plane of bytes, row by row.
struct Plane {
  int width;
  int height;
  std::vector<std::uint8_t> bytes;

  std::uint8_t* row(int y) { return bytes.data() + std::ptrdiff_t{y} * width; }
};

/// Replaces each byte by the mean of its row from `radius` bytes before it to `radius` bytes after
/// it, and transposes the plane. Done twice, this blurs in both directions.
Plane blurredAndTurned(Plane& plane, int radius) {
  Plane turned{plane.height, plane.width, std::vector<std::uint8_t>(plane.bytes.size())};
  const int window = 2 * radius + 1;
  for (int y = 0; y < plane.height; ++y) {
    const std::uint8_t* row = plane.row(y);
    int sum = 0;
    for (int x = 0; x < std::min(radius, plane.width); ++x) sum += row[x];
    for (int x = 0; x < plane.width; ++x) {
      if (x + radius < plane.width) sum += row[x + radius];
      turned.row(x)[y] = static_cast<std::uint8_t>(sum / window);
      if (x >= radius) sum -= row[x - radius];
    }
  }
  return turned;
}

}  // namespace

QPainterPath roundedRect(const QRectF& rect, double radius) {
  const double half = std::min(rect.width(), rect.height()) / 2;
  const double r = std::min(radius, half);
  // Each corner is one cubic curve: it leaves the edge at `reach` from the corner, earlier than an
  // arc would, and passes through the middle of the arc. Where the sides are too short to begin
  // earlier, that makes it the arc.
  const double reach = std::min(1.5 * r, half);
  const double middle = r * (1 - std::sqrt(0.5));
  const double control = (8 * middle - reach) / 3;
  const auto [left, top, right, bottom] =
      std::array{rect.left(), rect.top(), rect.right(), rect.bottom()};
  QPainterPath path(QPointF(left + reach, top));
  path.lineTo(right - reach, top);
  path.cubicTo(right - control, top, right, top + control, right, top + reach);
  path.lineTo(right, bottom - reach);
  path.cubicTo(right, bottom - control, right - control, bottom, right - reach, bottom);
  path.lineTo(left + reach, bottom);
  path.cubicTo(left + control, bottom, left, bottom - control, left, bottom - reach);
  path.lineTo(left, top + reach);
  path.cubicTo(left, top + control, left + control, top, left + reach, top);
  path.closeSubpath();
  return path;
}

QRectF snapped(const QPainter& painter, const QRectF& rect) {
  const QTransform toDevice = painter.deviceTransform();
  const QRectF device = toDevice.mapRect(rect);
  const QRectF whole(QPointF(std::round(device.left()), std::round(device.top())),
                     QPointF(std::round(device.right()), std::round(device.bottom())));
  return toDevice.inverted().mapRect(whole);
}

void fillRounded(QPainter& painter, const QRectF& rect, double radius, const QColor& color) {
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillPath(roundedRect(snapped(painter, rect), radius), color);
}

void strokeRounded(QPainter& painter, const QRectF& rect, double radius, const QColor& color,
                   double width) {
  const double scale = painter.deviceTransform().m11();
  const double crisp = std::max(1.0, std::round(width * scale)) / scale;
  const QRectF outer = snapped(painter, rect);
  QPainterPath ring = roundedRect(outer, radius);
  ring.addPath(roundedRect(outer.adjusted(crisp, crisp, -crisp, -crisp), radius - crisp));
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillPath(ring, color);
}

QImage shadowImage(QSize size, const QRectF& rect, double radius, const Shadow& shadow,
                   double scale) {
  const QSize pixels((QSizeF(size) * scale).toSize());
  QImage shape(pixels, QImage::Format_Alpha8);
  shape.fill(0);
  {
    QPainter painter(&shape);
    painter.scale(scale, scale);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(roundedRect(rect.translated(shadow.offset), radius), Qt::black);
  }
  const int width = pixels.width(), height = pixels.height();
  Plane plane{width, height, std::vector<std::uint8_t>(static_cast<std::size_t>(width * height))};
  for (int y = 0; y < height; ++y) std::copy_n(shape.constScanLine(y), width, plane.row(y));
  // Three box blurs come close to a Gaussian of this deviation.
  const double deviation = shadow.blurRadius / 2 * scale;
  const int box = static_cast<int>(std::lround((std::sqrt(4 * deviation * deviation + 1) - 1) / 2));
  for (int pass = 0; pass < 6; ++pass) plane = blurredAndTurned(plane, box);
  for (int y = 0; y < height; ++y) {
    std::transform(plane.row(y), plane.row(y) + width, shape.scanLine(y),
                   [&](std::uint8_t covered) {
                     return static_cast<uchar>(std::lround(covered * shadow.opacity));
                   });
  }
  shape.setDevicePixelRatio(scale);
  return shape;
}

}  // namespace brimlo::ui
