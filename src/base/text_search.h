#pragma once

#include <unicode/unistr.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace brimlo {

/// A case-insensitive search for one query, prepared once and used on many texts.
///
/// Cases are folded by Unicode's full case folding, under the dotted and dotless i of Turkish and
/// Azerbaijani where the locale says so. Canonically equivalent spellings match; diacritics are
/// significant, so "e" is not found in "é", however that is spelled. Immutable; any thread.
class CaseInsensitiveSearch {
 public:
  /// `query`: valid UTF-8; the empty query is found in every text. `localeName`: an ICU or POSIX
  /// locale name such as "tr_TR".
  CaseInsensitiveSearch(std::string_view query, const std::string& localeName);

  [[nodiscard]] bool foundIn(std::string_view text) const;

  struct Progress {
    bool found;
    std::size_t next;  ///< where to continue; the text's size when all of it has been searched
  };
  /// Searches a long text by parts: from byte `from` on, a part's length or a little more. A match
  /// that begins in this part and ends in the next is found. `from`: 0, or the last call's `next`.
  [[nodiscard]] Progress findInPart(std::string_view text, std::size_t from) const;

  /// Texts up to this many bytes are one part.
  static constexpr std::size_t kPart = 128 * 1024;

 private:
  bool foundInWhole(std::string_view text) const;
  bool foundInFolded(std::string_view text) const;

  std::uint32_t foldOptions_;
  icu::UnicodeString folded_;
  std::string asciiQuery_;  // `folded_`, where texts may be searched for it byte by byte
};

}  // namespace brimlo
