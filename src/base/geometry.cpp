#include "base/geometry.h"

#include <array>
#include <charconv>

namespace brimlo {
namespace {

void append(std::string& text, double number) {
  std::array<char, 32> digits;
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
  text.append(digits.data(), end);
}

void appendPair(std::string& text, double a, double b) {
  text += '{';
  append(text, a);
  text += ", ";
  append(text, b);
  text += '}';
}

}  // namespace

std::string toString(Size size) {
  std::string text;
  appendPair(text, size.width, size.height);
  return text;
}

std::string toString(const Rect& rect) {
  std::string text = "{";
  appendPair(text, rect.origin.x, rect.origin.y);
  text += ", ";
  appendPair(text, rect.size.width, rect.size.height);
  text += '}';
  return text;
}

}  // namespace brimlo
