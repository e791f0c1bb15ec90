#include "base/hash_index.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

namespace brimlo {
namespace {

// Ten values share a key. Hashes collide, follow each other, and begin at the end of the table.
std::size_t hashOfKey(std::uint32_t key) {
  return key % 3 == 0 ? 15 : key % 3 == 1 ? key % 8 : ~std::size_t{key};
}

TEST(HashIndex, HoldsExactlyWhatWasInsertedAndNotErased) {
  HashIndex<std::uint32_t, 0> index;
  std::set<std::uint32_t> model;
  std::mt19937 random(1);
  for (int i = 0; i < 6000; ++i) {
    const std::uint32_t value = 10 + random() % 400, key = value / 10;
    const auto hasKey = [key](std::uint32_t other) { return other / 10 == key; };
    const auto begin = model.lower_bound(key * 10), end = model.lower_bound(key * 10 + 10);
    if (random() % 8 >= (i < 3000 ? 6 : 2)) {  // it grows, then it shrinks
      index.erase(hashOfKey(key), value);
      model.erase(value);
    } else if (begin == end) {
      EXPECT_EQ(index.findOrInsert(hashOfKey(key), value, hasKey), nullptr);
      model.insert(value);
    } else if (model.insert(value).second) {
      EXPECT_TRUE(hasKey(*index.findOrInsert(hashOfKey(key), value, hasKey)));
      index.insert(hashOfKey(key), value);
    }
    std::multiset<std::uint32_t> found;
    index.find(hashOfKey(key), [&](std::uint32_t other) {
      if (hasKey(other)) found.insert(other);
      return false;
    });
    ASSERT_EQ(found, (std::multiset<std::uint32_t>(model.lower_bound(key * 10),
                                                   model.lower_bound(key * 10 + 10))));
  }
}

}  // namespace
}  // namespace brimlo
