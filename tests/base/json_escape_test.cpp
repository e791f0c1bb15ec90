#include "base/json_escape.h"

#include <gtest/gtest.h>

#include <string>

namespace brimlo {
namespace {

TEST(JsonEscape, EscapesWhatJsonForbidsWhereverItStands) {
  const std::pair<char, std::string> cases[] = {
      {'\0', "\\u0000"}, {'\x1f', "\\u001f"}, {'\n', "\\n"},    {'\r', "\\r"},
      {'\t', "\\t"},     {'"', "\\\""},       {'\\', "\\\\"},   {' ', " "},
      {'\x7f', "\x7f"},  {'!', "!"},          {'\x80', "\x80"}, {'\xff', "\xff"},
  };
  for (const auto& [character, escaped] : cases) {
    // At every place of a word that is copied as a whole, beside another escape, and in the rest.
    for (std::size_t at = 0; at < 20; ++at) {
      std::string text(20, 'a'), expected(19, 'a');
      text[at] = character;
      expected.insert(at, escaped);
      std::string room(jsonEscapedRoom(text.size() + 1), '#');
      const char* const end = writeJsonEscaped(room.data(), text + '"');
      EXPECT_EQ(room.substr(0, static_cast<std::size_t>(end - room.data())), expected + "\\\"");
    }
  }
}

}  // namespace
}  // namespace brimlo
