#include "base/text_search.h"

#include <unicode/locid.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <algorithm>

#include "base/unicode_text.h"

namespace brimlo {
namespace {

/// The bit in which an upper-case letter differs from `lower`; 0 where `lower` is no letter.
unsigned char caseBit(char lower) {
  return lower >= 'a' && lower <= 'z' ? 0x20 : 0;
}

bool equalsAt(const char* text, std::string_view query) {
  return std::equal(query.begin(), query.end(), text,
                    [](char q, char t) { return static_cast<char>(t | caseBit(q)) == q; });
}

/// Whether the first and last characters of `query` match at one of the `count` positions from
/// `text` on. Branch-free, so that compilers vectorise it.
bool mayStart(const char* text, std::size_t count, std::string_view query) {
  const char first = query.front(), last = query.back();
  const unsigned char firstCase = caseBit(first), lastCase = caseBit(last);
  const char* const ends = text + query.size() - 1;
  unsigned char any = 0;
  for (std::size_t i = 0; i < count; ++i) {
    any |= static_cast<unsigned char>(static_cast<char>(text[i] | firstCase) == first) &
           static_cast<unsigned char>(static_cast<char>(ends[i] | lastCase) == last);
  }
  return any != 0;
}

/// The first position at or after `from` where `text` holds `query`, which is lower case; the case
/// of ASCII letters is ignored. Only the blocks that may hold it are compared in full.
std::size_t findAscii(std::string_view text, std::string_view query, std::size_t from) {
  constexpr std::size_t kBlock = 256;
  for (std::size_t at = from; at + query.size() <= text.size(); at += kBlock) {
    const std::size_t count = std::min(kBlock, text.size() - query.size() + 1 - at);
    if (!mayStart(text.data() + at, count, query)) continue;
    for (std::size_t i = at; i < at + count; ++i) {
      if (equalsAt(text.data() + i, query)) return i;
    }
  }
  return text.npos;
}

bool combines(UChar32 c) {
  return c >= 0x300 && u_getIntPropertyValue(c, UCHAR_GRAPHEME_CLUSTER_BREAK) == U_GCB_EXTEND;
}

/// Whether `c`, which is not ASCII, folds to an ASCII character that no mark combines with: ß, ŉ,
/// ſ, the Greek question mark, ẚ, ẞ, the Greek varia, the Kelvin sign and the Latin ligatures.
bool foldsToAscii(UChar32 c) {
  switch (c) {
    case 0x00DF:
    case 0x0149:
    case 0x017F:
    case 0x037E:
    case 0x1E9A:
    case 0x1E9E:
    case 0x1FEF:
    case 0x212A:
      return true;
    default:
      return c >= 0xFB00 && c <= 0xFB06;
  }
}

/// Whether `text` holds the first two bytes of any of those characters. Branch-free, as `mayStart`.
bool mayFoldToAscii(std::string_view text) {
  const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
  unsigned char any = 0;
  for (std::size_t i = 0; i + 1 < text.size(); ++i) {
    const unsigned char lead = bytes[i], next = bytes[i + 1];
    any |= static_cast<unsigned char>(lead == 0xC3) & static_cast<unsigned char>(next == 0x9F);
    any |= static_cast<unsigned char>(lead == 0xC5) &
           static_cast<unsigned char>((next == 0x89) | (next == 0xBF));
    any |= static_cast<unsigned char>(lead == 0xCD) & static_cast<unsigned char>(next == 0xBE);
    any |= static_cast<unsigned char>(lead == 0xE1) &
           static_cast<unsigned char>((next == 0xBA) | (next == 0xBF));
    any |= static_cast<unsigned char>(lead == 0xE2) & static_cast<unsigned char>(next == 0x84);
    any |= static_cast<unsigned char>(lead == 0xEF) & static_cast<unsigned char>(next == 0xAC);
  }
  return any != 0;
}

bool anyFoldsToAscii(std::string_view text) {
  if (!mayFoldToAscii(text)) return false;
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
  const auto size = static_cast<std::int64_t>(text.size());
  for (std::int64_t i = 0; i < size;) {
    UChar32 c;
    U8_NEXT_OR_FFFD(bytes, i, size, c);
    if (c >= 0x80 && foldsToAscii(c)) return true;
  }
  return false;
}

bool combinesAt(std::string_view text, std::size_t index) {
  if (index >= text.size()) return false;
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
  auto i = static_cast<std::int64_t>(index);
  UChar32 c;
  U8_NEXT_OR_FFFD(bytes, i, static_cast<std::int64_t>(text.size()), c);
  return combines(c);
}

/// The first position at or after `index` where `text` may be cut: not inside a character, nor
/// before one that combines with the previous one.
std::size_t cutAfter(std::string_view text, std::size_t index) {
  while (index < text.size() && (static_cast<unsigned char>(text[index]) & 0xC0) == 0x80) ++index;
  // A longer run of combining characters is cut all the same.
  constexpr std::size_t kLongestRun = 1024;
  const std::size_t latest = std::min(text.size(), index + kLongestRun);
  for (std::size_t at = index; at < latest;) {
    if (!combinesAt(text, at)) return at;
    ++at;
    while (at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80) ++at;
  }
  return index;
}

icu::UnicodeString fold(std::string_view text, std::uint32_t options) {
  icu::UnicodeString folded =
      icu::UnicodeString::fromUTF8({text.data(), static_cast<std::int32_t>(text.size())});
  folded.foldCase(options);
  UErrorCode status = U_ZERO_ERROR;
  const icu::Normalizer2* nfd = icu::Normalizer2::getNFDInstance(status);
  if (U_FAILURE(status)) return folded;
  const icu::UnicodeString decomposed = nfd->normalize(folded, status);
  return U_SUCCESS(status) ? decomposed : folded;
}

}  // namespace

CaseInsensitiveSearch::CaseInsensitiveSearch(std::string_view query,
                                             const std::string& localeName) {
  const std::string language = icu::Locale::createFromName(localeName.c_str()).getLanguage();
  const bool dotlessI = language == "tr" || language == "az";
  foldOptions_ = dotlessI ? U_FOLD_CASE_EXCLUDE_SPECIAL_I : U_FOLD_CASE_DEFAULT;
  folded_ = fold(query, foldOptions_);
  std::string folded;
  folded_.toUTF8String(folded);
  const bool bytewise = isAscii(folded) && !(dotlessI && folded.find('i') != std::string::npos);
  if (bytewise) asciiQuery_ = std::move(folded);
}

bool CaseInsensitiveSearch::foundIn(std::string_view text) const {
  for (std::size_t from = 0;;) {
    const Progress progress = findInPart(text, from);
    if (progress.found || progress.next == text.size()) return progress.found;
    from = progress.next;
  }
}

CaseInsensitiveSearch::Progress CaseInsensitiveSearch::findInPart(std::string_view text,
                                                                  std::size_t from) const {
  if (text.size() - from <= kPart) return {foundInWhole(text.substr(from)), text.size()};
  const std::size_t next = cutAfter(text, from + kPart);
  // A match has at most one code point for each folded unit, and the one after it is examined too.
  constexpr std::size_t kLongestCharacter = 4;
  const std::size_t reach = (static_cast<std::size_t>(folded_.length()) + 1) * kLongestCharacter;
  const std::size_t end = cutAfter(text, std::min(text.size(), next + reach));
  return {foundInWhole(text.substr(from, end - from)), next};
}

bool CaseInsensitiveSearch::foundInWhole(std::string_view text) const {
  if (folded_.isEmpty()) return true;
  if (asciiQuery_.empty()) {
    const bool canMatch = foldOptions_ == U_FOLD_CASE_EXCLUDE_SPECIAL_I || !isAscii(text);
    return canMatch && foundInFolded(text);
  }
  for (auto at = findAscii(text, asciiQuery_, 0); at != text.npos;
       at = findAscii(text, asciiQuery_, at + 1)) {
    if (!combinesAt(text, at + asciiQuery_.size())) return true;
  }
  return !isAscii(text) && anyFoldsToAscii(text) && foundInFolded(text);
}

bool CaseInsensitiveSearch::foundInFolded(std::string_view text) const {
  const icu::UnicodeString folded = fold(text, foldOptions_);
  for (std::int32_t at = folded.indexOf(folded_); at >= 0; at = folded.indexOf(folded_, at + 1)) {
    const std::int32_t end = at + folded_.length();
    if (end >= folded.length() || !combines(folded.char32At(end))) return true;
  }
  return false;
}

}  // namespace brimlo
