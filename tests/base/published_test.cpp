#include "base/published.h"

#include <gtest/gtest.h>

#include <string>

namespace brimlo {
namespace {

struct Recorder {
  std::vector<int> seen;
  auto observer() {
    return [this](const int& value) { seen.push_back(value); };
  }
};

TEST(Published, TheThreeWaysOfObservingDifferInWhatTheyTell) {
  Published<int> value(1);
  Recorder all, changes, distinct;
  const auto a = value.observe(all.observer());
  const auto b = value.observeChanges(changes.observer());
  const auto c = value.observeDistinct(distinct.observer());
  for (const int next : {1, 2, 2, 3, 2}) value.set(next);
  EXPECT_EQ(all.seen, (std::vector{1, 1, 2, 2, 3, 2}));
  EXPECT_EQ(changes.seen, (std::vector{1, 2, 2, 3, 2}));
  EXPECT_EQ(distinct.seen, (std::vector{1, 2, 3, 2}));
}

TEST(Published, AnAssignmentInsideANotificationReachesEveryObserverInOrder) {
  Published<int> value(0);
  Recorder first, last;
  const auto a = value.observeChanges(first.observer());
  const auto b = value.observeChanges([&](const int& seen) {
    if (seen == 1) {
      value.set(2);
      EXPECT_EQ(value.value(), 2);
    }
  });
  const auto c = value.observeChanges(last.observer());
  value.set(1);
  EXPECT_EQ(first.seen, (std::vector{1, 2}));
  EXPECT_EQ(last.seen, (std::vector{1, 2}));
}

TEST(Published, SubscribingInsideANotificationTellsOnlyWhatCameAfter) {
  Published<int> value(0);
  Recorder late;
  Subscription inner;
  const auto outer = value.observeChanges([&](const int& seen) {
    if (seen == 1) inner = value.observe(late.observer());
  });
  value.set(1);
  value.set(2);
  EXPECT_EQ(late.seen, (std::vector{1, 2}));
}

TEST(Published, UnsubscribingInsideANotificationHoldsAtOnce) {
  Published<int> value(0);
  Recorder other;
  Subscription own, others;
  int calls = 0;
  own = value.observeChanges([&](const int&) {
    ++calls;
    own.reset();
    others.reset();
  });
  others = value.observeChanges(other.observer());
  value.set(1);
  value.set(2);
  EXPECT_EQ(calls, 1);
  EXPECT_TRUE(other.seen.empty());
}

TEST(Published, TheValueMayEndInsideANotificationAndBeforeItsSubscriptions) {
  auto value = std::make_unique<Published<int>>(0);
  Recorder after;
  const auto a = value->observeChanges([&](const int&) { value.reset(); });
  const auto b = value->observeChanges(after.observer());
  value->set(1);
  EXPECT_EQ(value, nullptr);
  EXPECT_EQ(after.seen, (std::vector{1}));
}

TEST(Subscription, MovesAndEndsOnce) {
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
