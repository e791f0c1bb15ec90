#pragma once

#include <string>

/// Points, sizes and rectangles of the screen: device-independent pixels, the origin at the bottom
/// left of the primary screen, y upwards.
namespace brimlo {

struct Point {
  double x = 0;
  double y = 0;

  bool operator==(const Point&) const = default;
};

struct Size {
  double width = 0;
  double height = 0;

  bool operator==(const Size&) const = default;
};

struct Rect {
  Point origin;  ///< the bottom left corner
  Size size;

  double minX() const { return origin.x; }
  double minY() const { return origin.y; }
  double midX() const { return origin.x + size.width / 2; }
  double midY() const { return origin.y + size.height / 2; }
  double maxX() const { return origin.x + size.width; }
  double maxY() const { return origin.y + size.height; }

  /// Whether a pointer at `point`, the top left corner of its pixel, is within: the left and the
  /// top edge belong to the rectangle, the right and the bottom edge do not.
  bool contains(Point point) const {
    return point.x >= minX() && point.x < maxX() && point.y > minY() && point.y <= maxY();
  }

  bool operator==(const Rect&) const = default;
};

/// The origin that centres something of `size` in `rect`.
inline Point originCentered(Size size, const Rect& rect) {
  return {rect.midX() - size.width / 2, rect.midY() - size.height / 2};
}

/// "{width, height}"; each number is the shortest that reads back as itself.
std::string toString(Size size);
/// "{{x, y}, {width, height}}", with such numbers.
std::string toString(const Rect& rect);

}  // namespace brimlo
