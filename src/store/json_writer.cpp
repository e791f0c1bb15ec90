#include "store/json_writer.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace brimlo {
namespace {

constexpr std::size_t kBuffer = 256 * 1024;

bool needsEscape(unsigned char c) {
  return c < 0x20 || c == '"' || c == '\\';
}

/// Whether one of eight bytes needs an escape. Each term sets the high bit of a byte that is
/// below 0x20, or equal to the quote or the backslash; bytes of 0x80 and above set none.
bool anyNeedsEscape(const char* bytes) {
  constexpr std::uint64_t kOnes = 0x0101010101010101;
  constexpr std::uint64_t kHigh = 0x8080808080808080;
  std::uint64_t word;
  std::memcpy(&word, bytes, sizeof word);
  const auto zeroByte = [](std::uint64_t w) { return (w - kOnes) & ~w; };
  return (((word - kOnes * 0x20) & ~word) | zeroByte(word ^ kOnes * '"') |
          zeroByte(word ^ kOnes * '\\')) &
         kHigh;
}

/// The length of the longest prefix of `text` that may stand in a JSON string as it is.
std::size_t plainPrefix(std::string_view text) {
  std::size_t i = 0;
  while (i + 8 <= text.size() && !anyNeedsEscape(text.data() + i)) i += 8;
  while (i < text.size() && !needsEscape(static_cast<unsigned char>(text[i]))) ++i;
  return i;
}

}  // namespace

JsonWriter::JsonWriter(ByteSink& sink) : sink_(sink) {
  buffer_.reserve(kBuffer);
}

void JsonWriter::raw(std::string_view json) {
  if (buffer_.size() + json.size() > kBuffer) flush();
  if (json.size() > kBuffer) {
    sink_.append(json);
  } else {
    buffer_ += json;
  }
}

void JsonWriter::string(std::string_view text) {
  raw("\"");
  for (;;) {
    const std::size_t plain = plainPrefix(text);
    raw(text.substr(0, plain));
    if (plain == text.size()) break;
    const auto c = static_cast<unsigned char>(text[plain]);
    constexpr std::string_view kDigits = "0123456789abcdef";
    switch (c) {
      case '"':
        raw("\\\"");
        break;
      case '\\':
        raw("\\\\");
        break;
      case '\n':
        raw("\\n");
        break;
      case '\r':
        raw("\\r");
        break;
      case '\t':
        raw("\\t");
        break;
      default: {
        const char escape[] = {'\\', 'u', '0', '0', kDigits[c >> 4], kDigits[c & 0x0F]};
        raw({escape, sizeof escape});
      }
    }
    text.remove_prefix(plain + 1);
  }
  raw("\"");
}

void JsonWriter::number(double value) {
  std::array<char, 32> digits;
  const auto format =
      std::fabs(value) < 1e21 ? std::chars_format::fixed : std::chars_format::scientific;
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value, format);
  if (end.ec == std::errc()) {
    raw({digits.data(), static_cast<std::size_t>(end.ptr - digits.data())});
  } else {  // a tiny fraction, too long without an exponent
    const auto fitting = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    raw({digits.data(), static_cast<std::size_t>(fitting.ptr - digits.data())});
  }
}

void JsonWriter::flush() {
  if (!buffer_.empty()) sink_.append(buffer_);
  buffer_.clear();
}

}  // namespace brimlo
