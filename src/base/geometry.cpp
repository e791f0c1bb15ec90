#include "base/geometry.h"

#include <array>
#include <charconv>

namespace brimlo {
namespace {

std::string toString(double number) {
  std::array<char, 32> digits;
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
  return {digits.data(), end};
}

std::string pair(double a, double b) {
  return "{" + toString(a) + ", " + toString(b) + "}";
}

}  // namespace

std::string toString(Size size) {
  return pair(size.width, size.height);
}

std::string toString(const Rect& rect) {
  return "{" + pair(rect.origin.x, rect.origin.y) + ", " + toString(rect.size) + "}";
}

}  // namespace brimlo
