#include "base/published.h"

#include <gtest/gtest.h>

namespace brimlo {
namespace {

using Seen = std::vector<int>;

auto intoList(Seen& seen) {
  return [&seen](const int& value) { seen.push_back(value); };
}

TEST(Published, TheThreeWaysOfObservingDifferInWhatTheyTell) {
  Published<int> value(1);
  Seen all, changes, distinct;
  const auto a = value.observe(intoList(all));
  const auto b = value.observeChanges(intoList(changes));
  const auto c = value.observeDistinct(intoList(distinct));
  for (const int next : {1, 2, 2, 3, 2}) value.set(next);
  EXPECT_EQ(all, (Seen{1, 1, 2, 2, 3, 2}));
  EXPECT_EQ(changes, (Seen{1, 2, 2, 3, 2}));
  EXPECT_EQ(distinct, (Seen{1, 2, 3, 2}));
}

TEST(Published, AssigningAndSubscribingInsideANotificationKeepTheOrder) {
  Published<int> value(0);
  Seen first, last, late;
  Subscription inner;
  const auto a = value.observeChanges(intoList(first));
  const auto b = value.observeChanges([&](const int& seen) {
    if (seen != 1) return;
    value.set(2);
    EXPECT_EQ(value.value(), 2);
    inner = value.observe(intoList(late));
  });
  const auto c = value.observeChanges(intoList(last));
  value.set(1);
  EXPECT_EQ(first, (Seen{1, 2}));
  EXPECT_EQ(last, (Seen{1, 2}));
  EXPECT_EQ(late, Seen{2});
}

TEST(Published, UnsubscribingInsideANotificationHoldsAtOnceAndTheValueMayEndThere) {
  auto value = std::make_unique<Published<int>>(0);
  Seen own, other, last;
  Subscription first, second;
  first = value->observeChanges([&](const int& now) {
    own.push_back(now);
    first.reset();
    second.reset();
  });
  second = value->observeChanges(intoList(other));
  const auto ends = value->observeChanges([&](const int& now) {
    if (now == 2) value.reset();
  });
  const auto third = value->observeChanges(intoList(last));
  value->set(1);
  value->set(2);
  EXPECT_EQ(value, nullptr);
  EXPECT_EQ(own, Seen{1});
  EXPECT_EQ(other, Seen());
  EXPECT_EQ(last, (Seen{1, 2}));
}

TEST(Subscription, EndsOnceHoweverItIsMoved) {
  int ended = 0;
  {
    Subscription a([&] { ++ended; });
    Subscription b(std::move(a));
    a = Subscription([&] { ended += 10; });
    b = std::move(a);
    EXPECT_EQ(ended, 1);
  }
  EXPECT_EQ(ended, 11);
}

}  // namespace
}  // namespace brimlo
