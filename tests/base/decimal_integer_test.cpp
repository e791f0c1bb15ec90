#include "base/decimal_integer.h"

#include <gtest/gtest.h>

#include <limits>

namespace brimlo {
namespace {

TEST(DecimalInteger, IsOneSignAtMostAndDigitsOnly) {
  using Limits = std::numeric_limits<std::int64_t>;
  const std::pair<std::string_view, std::optional<std::int64_t>> cases[] = {
      {"0", 0},
      {"007", 7},
      {"+2", 2},
      {"-1", -1},
      {"9223372036854775807", Limits::max()},
      {"-9223372036854775808", Limits::min()},
      {"9223372036854775808", std::nullopt},
      {"-9223372036854775809", std::nullopt},
      {"", std::nullopt},
      {"+", std::nullopt},
      {"-", std::nullopt},
      {"+-2", std::nullopt},
      {"++2", std::nullopt},
      {" 2", std::nullopt},
      {"2 ", std::nullopt},
      {"2x", std::nullopt},
      {"1.0", std::nullopt},
      {"0x1", std::nullopt},
      {"２", std::nullopt},
  };
  for (const auto& [text, number] : cases) EXPECT_EQ(decimalInteger(text), number) << text;
}

}  // namespace
}  // namespace brimlo
