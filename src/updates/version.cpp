#include "updates/version.h"

#include <algorithm>

namespace brimlo {
namespace {

bool isDigit(char character) {
  return character >= '0' && character <= '9';
}

bool isSeparator(char character) {
  return character == '.' || character == '-' || character == '_' || character == ' ' ||
         character == '+';
}

/// Cuts the first part off `rest`: a number without leading zeros, or a word; empty at the end.
std::string_view takePart(std::string_view& rest) {
  while (!rest.empty() && isSeparator(rest.front())) rest.remove_prefix(1);
  if (rest.empty()) return {};
  const bool number = isDigit(rest.front());
  const auto end = std::find_if(rest.begin(), rest.end(), [&](char each) {
    return isSeparator(each) || isDigit(each) != number;
  });
  std::string_view part = rest.substr(0, static_cast<std::size_t>(end - rest.begin()));
  rest.remove_prefix(part.size());
  while (number && part.size() > 1 && part.front() == '0') part.remove_prefix(1);
  return part;
}

/// The order of kinds of parts: a word, then nothing or zero, then any other number.
int rank(std::string_view part) {
  if (part.empty() || part == "0") return 1;
  return isDigit(part.front()) ? 2 : 0;
}

}  // namespace

std::strong_ordering compareVersions(std::string_view a, std::string_view b) {
  while (!a.empty() || !b.empty()) {
    const std::string_view left = takePart(a), right = takePart(b);
    if (rank(left) != rank(right)) return rank(left) <=> rank(right);
    if (rank(left) == 1) continue;
    if (rank(left) == 2 && left.size() != right.size()) return left.size() <=> right.size();
    if (left != right) return left <=> right;
  }
  return std::strong_ordering::equal;
}

}  // namespace brimlo
