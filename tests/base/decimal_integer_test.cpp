#include "base/decimal_integer.h"

#include <gtest/gtest.h>

namespace brimlo {
namespace {

TEST(DecimalInteger, HasOneSignAtMostAndOnlyDigits) {
  const std::pair<std::string_view, std::int64_t> numbers[] = {
      {"0", 0}, {"007", 7}, {"+2", 2}, {"-1", -1}, {"9223372036854775807", INT64_MAX}};
  for (const auto& [text, number] : numbers) EXPECT_EQ(decimalInteger(text), number) << text;
  for (const char* text : {"", "+", "-", "+-2", "++2", " 2", "2 ", "2x", "1.0", "0x1", "２",
                           "9223372036854775808", "-9223372036854775809"}) {
    EXPECT_EQ(decimalInteger(text), std::nullopt) << text;
  }
}

}  // namespace
}  // namespace brimlo
