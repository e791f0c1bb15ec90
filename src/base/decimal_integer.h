#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace brimlo {

/// The whole number that `text` writes in decimal: an optional "+" or "-", then one or more ASCII
/// digits and nothing else. None for any other text, and for a number beyond 64 bits.
std::optional<std::int64_t> decimalInteger(std::string_view text);

}  // namespace brimlo
