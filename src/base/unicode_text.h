#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Text rules of the whole program. A text is valid UTF-8 in a `std::string`, NUL characters
/// included. Every function has a fast path for ASCII. None of them fails; any thread.
namespace brimlo {

enum class WhiteSpace {
  kWithNewlines,  ///< general category Z, tab, U+000A to U+000D, U+0085
  kInline,        ///< general category Zs and tab; line breaks stay
};

bool isAscii(std::string_view text);

/// `text` without the characters of `set` at both ends; a view into `text`.
std::string_view trimmed(std::string_view text, WhiteSpace set);

/// The number of user-perceived characters: extended grapheme clusters (UAX #29).
std::size_t characterCount(std::string_view text);

/// The numeric value of `text`, where it is a single code point whose value is a whole number: 7
/// for "7", "７", "٧" and "七".
std::optional<std::int64_t> wholeNumber(std::string_view text);

/// `bytes` with every maximal ill-formed sequence replaced by U+FFFD; valid UTF-8 stays as it is.
std::string toValidUtf8(std::string bytes);

}  // namespace brimlo
