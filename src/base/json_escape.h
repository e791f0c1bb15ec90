#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace brimlo {

/// The room that `writeJsonEscaped` needs for a text of `size` bytes: an escape has six bytes, and
/// the text is copied by whole words.
constexpr std::size_t jsonEscapedRoom(std::size_t size) {
  return size * 6 + sizeof(std::uint64_t);
}

/// Writes `text`, valid UTF-8, as it stands between the quotes of a JSON string: only what JSON
/// forbids there is escaped. Returns the end of what was written; bytes behind it, up to
/// `jsonEscapedRoom`, may be overwritten.
char* writeJsonEscaped(char* out, std::string_view text);

}  // namespace brimlo
