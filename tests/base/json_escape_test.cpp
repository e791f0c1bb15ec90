#include "base/json_escape.h"

#include <gtest/gtest.h>

#include <string>

namespace brimlo {
namespace {

TEST(JsonEscape, EscapesWhatJsonForbidsWhereverItStands) {
  const std::pair<char, std::string> cases[] = {
      {'\0', "\\u0000"}, {'\x1f', "\\u001f"}, {'\n', "\\n"},    {'\r', "\\r"},
      {'\t', "\\t"},     {'"', "\\\""},       {'\\', "\\\\"},   {' ', " "},
      {'!', "!"},        {'\x7f', "\x7f"},    {'\x80', "\x80"}, {'\xff', "\xff"}};
  for (const auto& [character, escaped] : cases) {
    for (std::size_t at = 0; at < 20; ++at) {  // in words that are copied whole, and in the rest
      const std::string before(at, 'a'), after(19 - at, 'a');
      const std::string text = before + character + after + '"';
      std::string room(jsonEscapedRoom(text.size()), '#');
      room.resize(static_cast<std::size_t>(writeJsonEscaped(room.data(), text) - room.data()));
      EXPECT_EQ(room, before + escaped + after + "\\\"");
    }
  }
}

}  // namespace
}  // namespace brimlo
