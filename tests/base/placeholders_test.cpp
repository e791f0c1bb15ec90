#include "base/placeholders.h"

#include <gtest/gtest.h>

namespace brimlo {
namespace {

TEST(Placeholders, TakeTheNextValueOrTheOneTheyNumber) {
  const std::pair<const char*, const char*> cases[] = {
      {"", ""},
      {"%lld", "a"},
      {"%@ – %lld of %@", "a – b of %@"},
      {"%2$lld: %@%1$@", "b: aa"},
      {"100 % of %@, 5%", "100 % of a, 5%"},
      {"%3$@ %0$@ %2$ %2$d %ll %%@ %1@", "%3$@ %0$@ %2$ %2$d %ll %a %1@"},
  };
  for (const auto& [format, expected] : cases) {
    EXPECT_EQ(filledIn(format, {"a", "b"}), expected) << format;
  }
  EXPECT_EQ(filledIn("%@ %@", {"%2$@", "b"}), "%2$@ b") << "a value is not filled in itself";
}

}  // namespace
}  // namespace brimlo
