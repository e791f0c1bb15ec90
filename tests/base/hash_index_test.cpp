#include "base/hash_index.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

namespace brimlo {
namespace {

// Ten values share a key. Hashes collide, follow each other, and begin at the end of the table.
std::size_t hashOfKey(std::uint32_t value) {
  const std::size_t key = value / 10;
  return key % 3 == 0 ? 15 : key % 3 == 1 ? key % 8 : ~key;
}

TEST(HashIndex, HoldsExactlyWhatWasInsertedAndNotErased) {
  HashIndex<std::uint32_t, 0> index;
  std::set<std::uint32_t> model;
  std::mt19937 random(1);
  for (int i = 0; i < 6000; ++i) {
    // First it grows, then it shrinks.
    const std::uint32_t value = 10 + random() % 400;
    if (random() % 8 < (i < 3000 ? 6 : 2)) {
      if (model.insert(value).second) index.insert(hashOfKey(value), value);
    } else {
      index.erase(hashOfKey(value), value);
      model.erase(value);
    }
    std::set<std::uint32_t> found;
    index.find(hashOfKey(value), [&](std::uint32_t other) {
      if (other / 10 == value / 10) {
        EXPECT_TRUE(found.insert(other).second);
      }
      return false;
    });
    const std::set<std::uint32_t> expected(model.lower_bound(value / 10 * 10),
                                           model.lower_bound(value / 10 * 10 + 10));
    ASSERT_EQ(found, expected) << i;
  }
}

TEST(HashIndex, FindsOrInsertsByKey) {
  HashIndex<std::uint32_t, 0> index(2);
  const auto hasKey = [](std::uint32_t key) {
    return [key](std::uint32_t value) { return value / 10 == key; };
  };
  EXPECT_EQ(index.findOrInsert(7, 11, hasKey(1)), nullptr);
  EXPECT_EQ(index.findOrInsert(7, 21, hasKey(2)), nullptr);
  std::uint32_t* const first = index.findOrInsert(7, 12, hasKey(1));
  ASSERT_TRUE(first && *first == 11);
  *first = 13;
  EXPECT_EQ(*index.find(7, hasKey(1)), 13u);
  EXPECT_EQ(*index.find(7, hasKey(2)), 21u);
  EXPECT_EQ(index.find(7, hasKey(3)), nullptr);
  EXPECT_EQ(index.find(8, hasKey(2)), nullptr) << "another hash is another key";
}

}  // namespace
}  // namespace brimlo
