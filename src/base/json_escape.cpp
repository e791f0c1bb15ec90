#include "base/json_escape.h"

#include <bit>
#include <cstring>

namespace brimlo {
namespace {

constexpr std::size_t kWord = sizeof(std::uint64_t);

/// Sets the high bit of every byte of `word` that JSON forbids raw: those below 0x20, the quote and
/// the backslash. Only the first mark is reliable: a borrow may mark bytes behind it wrongly.
std::uint64_t markEscapes(std::uint64_t word) {
  constexpr std::uint64_t kOnes = 0x0101010101010101;
  constexpr std::uint64_t kHigh = 0x8080808080808080;
  const auto below = [&](std::uint64_t bytes, std::uint64_t limit) {
    return (bytes - kOnes * limit) & ~bytes;
  };
  return (below(word, 0x20) | below(word ^ (kOnes * '"'), 1) | below(word ^ (kOnes * '\\'), 1)) &
         kHigh;
}

char* writeEscape(char* out, unsigned char c) {
  constexpr char kDigits[] = "0123456789abcdef";
  *out++ = '\\';
  switch (c) {
    case '\n':
      *out++ = 'n';
      break;
    case '\r':
      *out++ = 'r';
      break;
    case '\t':
      *out++ = 't';
      break;
    case '"':
    case '\\':
      *out++ = static_cast<char>(c);
      break;
    default:
      for (const char digit : {'u', '0', '0', kDigits[c >> 4], kDigits[c & 0x0F]}) *out++ = digit;
  }
  return out;
}

}  // namespace

char* writeJsonEscaped(char* out, std::string_view text) {
  static_assert(std::endian::native == std::endian::little, "the first byte is the lowest");
  const char* in = text.data();
  const char* const end = in + text.size();
  while (static_cast<std::size_t>(end - in) >= kWord) {
    std::uint64_t word;
    std::memcpy(&word, in, kWord);
    std::memcpy(out, &word, kWord);
    const std::uint64_t marks = markEscapes(word);
    const auto plain = marks == 0 ? kWord : static_cast<std::size_t>(std::countr_zero(marks)) / 8;
    in += plain;
    out += plain;
    if (marks != 0) out = writeEscape(out, static_cast<unsigned char>(*in++));
  }
  for (; in < end; ++in) {
    const auto c = static_cast<unsigned char>(*in);
    if (c < 0x20 || c == '"' || c == '\\') {
      out = writeEscape(out, c);
    } else {
      *out++ = *in;
    }
  }
  return out;
}

}  // namespace brimlo
