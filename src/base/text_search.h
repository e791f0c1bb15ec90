#pragma once

#include <unicode/unistr.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace brimlo {

/// A case-insensitive search for one query, prepared once and put to many texts.
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

 private:
  bool foundInFolded(std::string_view text) const;

  std::uint32_t foldOptions_;
  icu::UnicodeString folded_;
  std::string
      asciiQuery_;  // `folded_` where that is ASCII and ASCII texts may be searched bytewise
};

}  // namespace brimlo
