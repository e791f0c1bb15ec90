#include "store/json_writer.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace brimlo {
namespace {

constexpr std::size_t kBuffer = 256 * 1024;

// A string is taken in slices that fit into the buffer even when every byte is escaped, with room
// for the copy of a last word that reaches beyond the slice.
constexpr std::size_t kSlice = 16 * 1024;
constexpr std::size_t kLongestEscape = 6;
constexpr std::size_t kWord = sizeof(std::uint64_t);

/// Marks, in the high bit of each, the bytes of `word` that JSON forbids raw: those below 0x20, the
/// quote and the backslash. Bytes behind the first such byte may be marked wrongly.
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

/// Writes `text` with its escapes; copies word by word, so that up to a word behind the end of what
/// it returns is overwritten.
char* writeEscaped(char* out, std::string_view text) {
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

}  // namespace

JsonWriter::JsonWriter(ByteSink& sink)
    : sink_(sink), buffer_(new char[kBuffer]), end_(buffer_.get()) {}

void JsonWriter::raw(std::string_view json) {
  makeRoom(json.size());
  end_ = std::copy(json.begin(), json.end(), end_);
}

void JsonWriter::string(std::string_view text) {
  raw("\"");
  do {
    const std::string_view slice = text.substr(0, kSlice);
    makeRoom(slice.size() * kLongestEscape + kWord);
    end_ = writeEscaped(end_, slice);
    text.remove_prefix(slice.size());
  } while (!text.empty());
  raw("\"");
}

void JsonWriter::number(double value) {
  constexpr std::size_t kLongest = 32;
  makeRoom(kLongest);
  const auto format =
      std::fabs(value) < 1e21 ? std::chars_format::fixed : std::chars_format::scientific;
  auto written = std::to_chars(end_, end_ + kLongest, value, format);
  // A tiny fraction is too long without an exponent.
  if (written.ec != std::errc()) written = std::to_chars(end_, end_ + kLongest, value);
  end_ = written.ptr;
}

void JsonWriter::flush() {
  sink_.append({buffer_.get(), static_cast<std::size_t>(end_ - buffer_.get())});
  end_ = buffer_.get();
}

void JsonWriter::makeRoom(std::size_t bytes) {
  if (static_cast<std::size_t>(buffer_.get() + kBuffer - end_) < bytes) flush();
}

}  // namespace brimlo
