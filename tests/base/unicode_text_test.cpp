#include "base/unicode_text.h"

#include <gtest/gtest.h>

#include "base/canonical_text.h"

namespace brimlo {
namespace {

using namespace std::string_literals;

TEST(UnicodeText, CountsUserPerceivedCharacters) {
  const std::pair<std::string, std::size_t> cases[] = {
      {"", 0},
      {"a\0b"s, 3},
      {"a\r\nb\r\n\n\r", 6},
      {"\u0301", 1},
      {"\r\n\u0301", 2},
      {"x\u0301\u0302y", 2},
      {"각 日本語", 5},                           // a syllable of jamo, then whole ones
      {"👨‍👩‍👧‍👦a👍🏽", 3},  // joined by zero-width joiners; with a skin tone
      {"🇩🇪🇫🇷🇯", 3},                               // flags are pairs
      {"क्षि नमस्ते", 5},                            // conjuncts stay together
      {std::string(100'000, 'a') + "e\u0301", 100'001},
  };
  for (const auto& [text, count] : cases) EXPECT_EQ(characterCount(text), count) << text;
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
      {"\x1fé\0"s, "\x1fé\0"s, "\x1fé\0"s},
      {" \n\v\f\u2003 ", "", "\n\v\f"},
  };
  for (const auto& [text, withNewlines, inlineOnly] : cases) {
    EXPECT_EQ(trimmed(text, WhiteSpace::kWithNewlines), withNewlines) << text;
    EXPECT_EQ(trimmed(text, WhiteSpace::kInline), inlineOnly) << text;
  }
}

TEST(UnicodeText, RepairsWhatIsNotUtf8) {
  const std::pair<std::string, std::string> cases[] = {
      {"plain é 日本 😀\0"s, "plain é 日本 😀\0"s},
      {"a\xc3", "a\ufffd"},
      {"a\xe2\x82z", "a\ufffdz"},                // a cut-off sequence is one fault
      {"\xc0\xaf", "\ufffd\ufffd"},              // overlong
      {"\xed\xa0\x80x", "\ufffd\ufffd\ufffdx"},  // a surrogate
      {"\xf4\x90\x80\x80", "\ufffd\ufffd\ufffd\ufffd"},
  };
  for (const auto& [bytes, text] : cases) EXPECT_EQ(toValidUtf8(bytes), text);
}

TEST(UnicodeText, KnowsTheNumberOfACharacter) {
  const std::pair<const char*, int> numbers[] = {{"7", 7}, {"0", 0},  {"７", 7},
                                                 {"٧", 7}, {"七", 7}, {"萬", 10'000}};
  for (const auto& [text, number] : numbers) EXPECT_EQ(wholeNumber(text), number) << text;
  for (const char* text : {"½", "a", "77", ""}) EXPECT_EQ(wholeNumber(text), std::nullopt) << text;
}

TEST(CanonicalText, CanonicallyEquivalentTextsAreEqualAndShareAHash) {
  struct Case {
    std::string a, b;
    bool equal;
  };
  const Case cases[] = {
      {"caf\u00e9", "cafe\u0301", true},
      {"\u212b", "\u00c5", true},                // ångström sign
      {"\u212a", "K", true},                     // kelvin sign, which becomes ASCII
      {"q\u0307\u0323", "q\u0323\u0307", true},  // marks in another order
      {"\uac01", "\u1100\u1161\u11a8", true},
      {"a", "A", false},
      {"a", "a\0"s, false},
      {"e", "e\u0301", false},
      {"\ufb01", "fi", false},  // compatible, not equivalent
  };
  for (const Case& each : cases) {
    for (const auto& [a, b] : {std::pair(each.a, each.b), std::pair(each.b, each.a)}) {
      EXPECT_EQ(canonicallyEqual(a, b), each.equal) << a << b;
      EXPECT_EQ(CanonicalText(a).equals(b), each.equal) << a << b;
      EXPECT_EQ(CanonicalText(a).hash(), canonicalHash(a));
      EXPECT_EQ(canonicalHash(a) == canonicalHash(b), each.equal) << a << b;
    }
  }
}

}  // namespace
}  // namespace brimlo
