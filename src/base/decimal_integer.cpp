#include "base/decimal_integer.h"

#include <charconv>

namespace brimlo {

std::optional<std::int64_t> decimalInteger(std::string_view text) {
  // from_chars takes a "-" itself, but no "+".
  if (text.starts_with('+')) {
    text.remove_prefix(1);
    if (text.starts_with('-')) return std::nullopt;
  }
  std::int64_t number = 0;
  const char* const end = text.data() + text.size();
  const auto [stopped, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stopped != end) return std::nullopt;
  return number;
}

}  // namespace brimlo
