#include "base/unicode_text.h"

#include <gtest/gtest.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include "base/canonical_text.h"
#include "base/text_search.h"

namespace brimlo {
namespace {

using namespace std::string_literals;

TEST(UnicodeText, CountsUserPerceivedCharacters) {
  const std::pair<std::string, std::size_t> cases[] = {
      {"", 0},
      {"abc", 3},
      {"a\0b"s, 3},
      {"\r\n", 1},
      {"a\r\nb\r\n\n\r", 6},
      {"e\u0301", 1},
      {"\u0301", 1},
      {"\r\n\u0301", 2},
      {"x\u0301\u0302y", 2},
      {"日本語", 3},
      {"각 한국어", 5},                           // a syllable of jamo, then whole ones
      {"👨‍👩‍👧‍👦a👍🏽", 3},  // joined by zero-width joiners; with a skin tone
      {"🇩🇪🇫🇷🇯", 3},                               // flags are pairs
      {"क्षि नमस्ते", 5},                            // conjuncts stay together
      {std::string(100'000, 'a') + "e\u0301", 100'001},
  };
  for (const auto& [text, count] : cases) EXPECT_EQ(characterCount(text), count) << text;
}

TEST(UnicodeText, CanonicallyEquivalentTextsAreEqualAndShareAHash) {
  const std::pair<std::string, std::string> equal[] = {
      {"", ""},
      {"caf\u00e9", "cafe\u0301"},
      {"\u212b", "\u00c5"},                // ångström sign
      {"q\u0307\u0323", "q\u0323\u0307"},  // marks in another order
      {"\uac01", "\u1100\u1161\u11a8"},
  };
  for (const auto& [a, b] : equal) {
    EXPECT_TRUE(canonicallyEqual(a, b)) << a;
    EXPECT_EQ(canonicalHash(a), canonicalHash(b)) << a;
  }
  const std::pair<std::string, std::string> different[] = {
      {"a", "A"}, {"a", "a\0"s}, {"e", "e\u0301"}, {"\ufb01", "fi"}, {"x\u00b2", "x2"}};
  for (const auto& [a, b] : different) EXPECT_FALSE(canonicallyEqual(a, b)) << a;
}

TEST(UnicodeText, TrimsExactlyTheCharactersOfTheSet) {
  struct Case {
    std::string text, withNewlines, inlineOnly;
  };
  const Case cases[] = {
      {" \t a b \t", "a b", "a b"},
      {"\n a \r\n", "a", "\n a \r\n"},
      {"\u00a0\u2003\u3000x\u2009", "x", "x"},
      {"\u2028\u2029\u0085x", "x", "\u2028\u2029\u0085x"},
      {"\u200bx\ufeff", "\u200bx\ufeff", "\u200bx\ufeff"},  // format characters are no white space
      {"\x1fx\0"s, "\x1fx\0"s, "\x1fx\0"s},
      {" \n\v\f\u2003 ", "", "\n\v\f"},
      {"é", "é", "é"},
  };
  for (const auto& [text, withNewlines, inlineOnly] : cases) {
    EXPECT_EQ(trimmed(text, WhiteSpace::kWithNewlines), withNewlines) << text;
    EXPECT_EQ(trimmed(text, WhiteSpace::kInline), inlineOnly) << text;
  }
}

TEST(UnicodeText, RepairsWhatIsNotUtf8) {
  const std::pair<std::string, std::string> cases[] = {
      {"plain é 日本 😀\0"s, "plain é 日本 😀\0"s},
      {"\xff", "\ufffd"},
      {"a\xc3", "a\ufffd"},
      {"a\xe2\x82z", "a\ufffdz"},                // a cut-off sequence is one fault
      {"\xc0\xaf", "\ufffd\ufffd"},              // overlong
      {"\xed\xa0\x80x", "\ufffd\ufffd\ufffdx"},  // a surrogate
      {"\xf4\x90\x80\x80", "\ufffd\ufffd\ufffd\ufffd"},
  };
  for (const auto& [bytes, text] : cases) EXPECT_EQ(toValidUtf8(bytes), text);
}

TEST(CaseInsensitiveSearch, FollowsCaseCanonicalEquivalenceAndLocale) {
  struct Case {
    const char *query, *text, *locale;
    bool found;
  };
  const Case cases[] = {
      {"", "", "en", true},
      {"abc", "xABCx", "en", true},
      {"aBc", "ab", "en", false},
      {"e", "caf\u00e9", "en", false},
      {"e", "cafe\u0301", "en", false},
      {"e", "cafe\u0301 bebe", "en", true},
      {"CAF\u00c9", "une cafe\u0301", "en", true},
      {"cafe\u0301", "CAFÉ", "en", true},
      {"привет", "ПРИВЕТ мир", "en", true},
      {"STRASSE", "Straße", "de", true},
      {"ß", "MASSE", "de", true},
      {"k", "\u212a", "en", true},
      {"fi", "ﬁn", "en", true},
      {"title", "TITLE", "en", true},
      {"title", "TITLE", "tr_TR", false},
      {"tıtle", "TITLE", "tr_TR", true},
      {"istanbul", "İSTANBUL", "tr_TR", true},
      {"日本", "私は日本語", "ja", true},
  };
  for (const auto& [query, text, locale, found] : cases) {
    EXPECT_EQ(CaseInsensitiveSearch(query, locale).foundIn(text), found) << query << " in " << text;
  }
}

TEST(CaseInsensitiveSearch, FindsAcrossTheSeamsOfLongTexts) {
  for (const std::size_t length : {1u, 3u, 300u, 5000u}) {
    const std::string query(length - 1, 'q');
    for (std::size_t at = 4096 - std::min<std::size_t>(length, 40); at < 4100; ++at) {
      const std::string text = std::string(at, 'Q') + "X" + std::string(length - 1, 'Q') + "yyy";
      EXPECT_TRUE(CaseInsensitiveSearch("x" + query, "en").foundIn(text)) << at;
      EXPECT_FALSE(CaseInsensitiveSearch("x" + query + "q", "en").foundIn(text)) << at;
    }
  }
}

TEST(CaseInsensitiveSearch, FindsAcrossThePartsOfAHugeText) {
  constexpr std::size_t kPart = CaseInsensitiveSearch::kPart;
  for (const std::string match : {"needle", "NÉEDLÉ", "ſtraße", "e\u0301e\u0301"}) {
    const CaseInsensitiveSearch search(match, "en"), longer(match + "!", "en");
    for (std::size_t at = kPart - 12; at <= kPart + 2; ++at) {
      const std::string text = std::string(at, '-') + match + std::string(2 * kPart, '-');
      EXPECT_TRUE(search.foundIn(text)) << match << at;
      EXPECT_FALSE(longer.foundIn(text)) << match << at;
    }
  }
  EXPECT_FALSE(CaseInsensitiveSearch("e", "en").foundIn(std::string(kPart - 1, '-') + "e\u0301" +
                                                        std::string(kPart, '-')));
}

TEST(UnicodeText, KnowsTheNumberOfACharacter) {
  const std::pair<const char*, std::optional<std::int64_t>> cases[] = {{"7", 7},
                                                                       {"0", 0},
                                                                       {"７", 7},
                                                                       {"٧", 7},
                                                                       {"七", 7},
                                                                       {"萬", 10'000},
                                                                       {"½", std::nullopt},
                                                                       {"a", std::nullopt},
                                                                       {"77", std::nullopt},
                                                                       {"", std::nullopt}};
  for (const auto& [text, number] : cases) EXPECT_EQ(wholeNumber(text), number) << text;
}

// The bytewise search skips texts in which nothing folds to ASCII; it must know all that does.
TEST(CaseInsensitiveSearch, MissesNoCharacterThatFoldsToAscii) {
  UErrorCode status = U_ZERO_ERROR;
  const auto* nfd = icu::Normalizer2::getNFDInstance(status);
  for (UChar32 c = 0x80; c <= UCHAR_MAX_VALUE; ++c) {
    if (U_IS_SURROGATE(c)) continue;
    icu::UnicodeString folded(c);
    folded.foldCase();
    const icu::UnicodeString decomposed = nfd->normalize(folded, status);
    if (decomposed[0] >= 0x80 ||
        (decomposed.length() > 1 && u_getCombiningClass(decomposed.char32At(1)) != 0)) {
      continue;
    }
    std::string text;
    icu::UnicodeString(c).toUTF8String(text);
    const std::string query(1, static_cast<char>(decomposed[0]));
    EXPECT_TRUE(CaseInsensitiveSearch(query, "en").foundIn(text)) << std::hex << c;
  }
}

}  // namespace
}  // namespace brimlo
