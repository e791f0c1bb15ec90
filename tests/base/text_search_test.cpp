#include "base/text_search.h"

#include <gtest/gtest.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

namespace brimlo {
namespace {

TEST(CaseInsensitiveSearch, FollowsCaseCanonicalEquivalenceAndLocale) {
  const auto found = [](const std::string& query, const std::string& text, const char* locale) {
    return CaseInsensitiveSearch(query, locale).foundIn(text);
  };
  const std::pair<const char*, const char*> pairs[] = {
      {"", ""},
      {"abc", "xABCx"},
      {"e", "cafe\u0301 bebe"},
      {"CAF\u00c9", "une cafe\u0301"},
      {"cafe\u0301", "CAFÉ"},
      {"привет", "ПРИВЕТ мир"},
      {"STRASSE", "Straße"},
      {"ß", "MASSE"},
      {"title", "TITLE"},
      {"日本", "私は日本語"},
  };
  for (const auto& [query, text] : pairs) EXPECT_TRUE(found(query, text, "en")) << query;
  EXPECT_FALSE(found("aBc", "ab", "en"));
  for (const char* text : {"caf\u00e9", "cafe\u0301"}) EXPECT_FALSE(found("e", text, "en")) << text;
  EXPECT_FALSE(found("title", "TITLE", "tr_TR"));
  EXPECT_TRUE(found("tıtle", "TITLE", "tr_TR") && found("istanbul", "İSTANBUL", "az"));
}

TEST(CaseInsensitiveSearch, FindsAcrossTheSeamsOfBlocksAndParts) {
  constexpr std::size_t kPart = CaseInsensitiveSearch::kPart;
  const std::string run(300, 'q');
  const CaseInsensitiveSearch bare("e", "en");
  for (const std::size_t seam : {std::size_t{4096}, kPart}) {
    for (std::size_t at = seam - 8; at <= seam + 8; ++at) {
      const std::string before(at, '-'), after(seam + 100, '-');
      for (const std::string match : {"needle", "NÉEDLÉ", "ſtraße", "e\u0301", run.data()}) {
        const std::string text = before + match + after;
        EXPECT_TRUE(CaseInsensitiveSearch(match, "en").foundIn(text)) << match << at;
        EXPECT_FALSE(CaseInsensitiveSearch(match + "!", "en").foundIn(text)) << match << at;
      }
      EXPECT_FALSE(bare.foundIn(before + "e\u0301" + after)) << at;
    }
  }
}

// The bytewise search skips texts in which nothing folds to ASCII; it must know all that does.
TEST(CaseInsensitiveSearch, MissesNoCharacterThatFoldsToAscii) {
  UErrorCode status = U_ZERO_ERROR;
  const auto* nfd = icu::Normalizer2::getNFDInstance(status);
  for (UChar32 c = 0x80; c <= UCHAR_MAX_VALUE; ++c) {
    icu::UnicodeString folded(c);
    folded.foldCase();
    const icu::UnicodeString decomposed = nfd->normalize(folded, status);
    const bool combines =
        decomposed.length() > 1 && u_getCombiningClass(decomposed.char32At(1)) != 0;
    if (U_IS_SURROGATE(c) || decomposed[0] >= 0x80 || combines) continue;
    std::string text;
    icu::UnicodeString(c).toUTF8String(text);
    const std::string query(1, static_cast<char>(decomposed[0]));
    EXPECT_TRUE(CaseInsensitiveSearch(query, "en").foundIn(text)) << std::hex << c;
  }
}

}  // namespace
}  // namespace brimlo
