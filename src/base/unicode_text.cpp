#include "base/unicode_text.h"

#include <unicode/brkiter.h>
#include <unicode/uchar.h>
#include <unicode/utext.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>

namespace brimlo {
namespace {

bool belongsTo(UChar32 c, WhiteSpace set) {
  if (c == '\t') return true;
  if (set == WhiteSpace::kInline) return u_charType(c) == U_SPACE_SEPARATOR;
  return (c >= 0x0A && c <= 0x0D) || c == 0x85 || (U_GET_GC_MASK(c) & U_GC_Z_MASK) != 0;
}

/// Whether `c` can share a grapheme cluster with a neighbour. Between two code points that cannot
/// there is always a boundary, except between CR and LF, which the caller handles.
bool joins(UChar32 c) {
  return c >= 0x80 && u_getIntPropertyValue(c, UCHAR_GRAPHEME_CLUSTER_BREAK) != U_GCB_OTHER;
}

std::size_t countClusters(icu::BreakIterator& clusters, std::string_view text) {
  UErrorCode status = U_ZERO_ERROR;
  UText* utext =
      utext_openUTF8(nullptr, text.data(), static_cast<std::int64_t>(text.size()), &status);
  clusters.setText(utext, status);
  std::size_t count = 0;
  while (U_SUCCESS(status) && clusters.next() != icu::BreakIterator::DONE) ++count;
  utext_close(utext);
  return count;
}

}  // namespace

bool isAscii(std::string_view text) {
  constexpr std::size_t kBlock = 128;
  while (text.size() >= kBlock) {
    unsigned char seen = 0;
    for (std::size_t i = 0; i < kBlock; ++i) seen |= static_cast<unsigned char>(text[i]);
    if (seen >= 0x80) return false;
    text.remove_prefix(kBlock);
  }
  unsigned char seen = 0;
  for (const char c : text) seen |= static_cast<unsigned char>(c);
  return seen < 0x80;
}

std::string_view trimmed(std::string_view text, WhiteSpace set) {
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
  const auto size = static_cast<std::int64_t>(text.size());
  std::int64_t begin = 0;
  while (begin < size) {
    std::int64_t next = begin;
    UChar32 c;
    U8_NEXT_OR_FFFD(bytes, next, size, c);
    if (!belongsTo(c, set)) break;
    begin = next;
  }
  std::int64_t end = size;
  while (end > begin) {
    std::int64_t previous = end - 1;
    while (previous > begin && U8_IS_TRAIL(bytes[previous])) --previous;
    std::int64_t next = previous;
    UChar32 c;
    U8_NEXT_OR_FFFD(bytes, next, end, c);
    if (next != end || !belongsTo(c, set)) break;
    end = previous;
  }
  return text.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(end - begin));
}

std::size_t characterCount(std::string_view text) {
  // Segmenting all of a large text would take seconds. Only stretches with code points that can
  // join need it: from the one before the first of them to the one after the last.
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
  const auto size = static_cast<std::int64_t>(text.size());
  std::unique_ptr<icu::BreakIterator> clusters;
  std::size_t count = 0;
  std::int64_t stretch = 0;   // the start of what is not counted yet
  bool stretchJoins = false;  // whether one of them joins
  bool previousJoins = false;
  const auto countStretch = [&](std::int64_t end) {
    if (stretchJoins) {
      UErrorCode status = U_ZERO_ERROR;
      if (!clusters) {
        clusters.reset(icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
      }
      const auto length = static_cast<std::size_t>(end - stretch);
      count += clusters ? countClusters(*clusters, text.substr(stretch, length)) : 1;
    } else if (end > stretch) {
      ++count;
    }
    stretch = end;
    stretchJoins = false;
  };
  for (std::int64_t i = 0; i < size;) {
    const std::int64_t at = i;
    UChar32 c;
    U8_NEXT_OR_FFFD(bytes, i, size, c);
    if (c == '\r' && i < size && bytes[i] == '\n') ++i;
    const bool currentJoins = joins(c);
    if (!currentJoins && !previousJoins) countStretch(at);
    stretchJoins |= currentJoins;
    previousJoins = currentJoins;
  }
  countStretch(size);
  return count;
}

std::optional<std::int64_t> wholeNumber(std::string_view text) {
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
  const auto size = static_cast<std::int64_t>(text.size());
  std::int64_t i = 0;
  if (size == 0) return std::nullopt;
  UChar32 c;
  U8_NEXT_OR_FFFD(bytes, i, size, c);
  const double value = u_getNumericValue(c);
  // A character without a value gives a large negative one.
  constexpr double kLargest = 1e15;
  if (i != size || !(value >= 0 && value <= kLargest) || value != std::floor(value)) {
    return std::nullopt;
  }
  return static_cast<std::int64_t>(value);
}

std::string toValidUtf8(std::string bytes) {
  if (isAscii(bytes)) return bytes;
  const auto* data = reinterpret_cast<const std::uint8_t*>(bytes.data());
  const auto size = static_cast<std::int64_t>(bytes.size());
  std::string repaired;
  std::int64_t copied = 0;  // how much of `bytes` is in `repaired`; 0 before the first fault
  for (std::int64_t i = 0; i < size;) {
    const std::int64_t at = i;
    UChar32 c;
    U8_NEXT(data, i, size, c);
    if (c >= 0) continue;
    repaired.append(bytes, static_cast<std::size_t>(copied), static_cast<std::size_t>(at - copied));
    repaired += "\xEF\xBF\xBD";
    copied = i;
  }
  if (copied == 0) return bytes;
  repaired.append(bytes, static_cast<std::size_t>(copied), std::string::npos);
  return repaired;
}

}  // namespace brimlo
