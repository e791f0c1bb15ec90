#include <gtest/gtest.h>

#include "platform/freedesktop/text_types.h"
#include "platform/freedesktop/xsettings.h"

namespace brimlo {
namespace {

TEST(TextTypes, AreDecodedAndEncodedByTheirNames) {
  const std::string compound = "caf\xe9 \x1b\x2d\x4c\xbf\xe0 \x1b%G\xe2\x98\x83\x1b%@";
  const struct {
    const char* type;
    std::string bytes;
    const char* text;
  } kCases[] = {
      {"STRING", "caf\xe9", "café"},
      {"COMPOUND_TEXT", compound, "café Пр ☃"},
      {"COMPOUND_TEXT", "a\x1b%/2\x80\x8akoi8-r\x02\xf0\xd2\xc1 b", "aПра b"},
      {"text/plain", "\xe9", "é"},
      {"text/plain", "é", "é"},
      {"UTF8_STRING", "a\xff\xc3", "a\ufffd\ufffd"},
      {"", "é\xff", "é\ufffd"},
  };
  for (const auto& [type, bytes, text] : kCases) EXPECT_EQ(decodeText(type, bytes), text) << type;
}

TEST(XsettingsText, ReadsBothByteOrdersAndNothingBroken) {
  using namespace std::string_literals;
  const std::string little =
      "\0\0\0\0\7\0\0\0\3\0\0\0"s +                  // little-endian, the serial, three settings
      "\0\0\3\0Dpi\0\0\0\0\0\x60\0\0\0"s +           // a number
      "\2\0\1\0C\0\0\0\0\0\0\0\1\2\3\4\5\6\7\10"s +  // a colour
      "\1\0\4\0Name\0\0\0\0\5\0\0\0Night\0\0\0"s;
  const std::string big = "\1\0\0\0\0\0\0\7\0\0\0\1"s + "\1\0\0\4Name\0\0\0\0\0\0\0\5Night\0\0\0"s;
  EXPECT_EQ(xsettingsText(little, "Name"), "Night");
  EXPECT_EQ(xsettingsText(big, "Name"), "Night");
  EXPECT_EQ(xsettingsText(little, "Dpi"), "");
  EXPECT_EQ(xsettingsText(little, "Nam"), "");
  for (std::size_t size = 0; size + 3 < little.size(); ++size) {
    EXPECT_EQ(xsettingsText(little.substr(0, size), "Name"), "") << size;
  }
  std::string endless = little;
  endless.replace(8, 4, "\xff\xff\xff\xff");
  EXPECT_EQ(xsettingsText(endless, "Other"), "");
}

}  // namespace
}  // namespace brimlo
