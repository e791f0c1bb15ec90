#include <gtest/gtest.h>

#include <string>

#include "base/observer_list.h"
#include "base/published.h"

namespace brimlo {
namespace {

using Seen = std::vector<int>;

auto intoList(Seen& seen) {
  return [&seen](int value) { seen.push_back(value); };
}

/// What an event and the changes of a value have in common.
struct Event {
  auto add(std::function<void(int)> handler) { return list.add(std::move(handler)); }
  void tell(int value) { list.notify(value); }
  ObserverList<int> list;
};
struct Value {
  auto add(std::function<void(int)> handler) { return value.observeChanges(std::move(handler)); }
  void tell(int next) { value.set(next); }
  Published<int> value{0};
};
template <typename T>
class ObserversTest : public testing::Test {};
using Kinds = testing::Types<Event, Value>;
TYPED_TEST_SUITE(ObserversTest, Kinds);

TYPED_TEST(ObserversTest, MayComeGoAndEndWhatTheyObserveInsideANotification) {
  auto observed = std::make_unique<TypeParam>();
  Seen own, later, added, last;
  Subscription first, second, third;
  first = observed->add([&](int value) {
    own.push_back(value);
    first.reset();
    second.reset();
    third = observed->add(intoList(added));
  });
  second = observed->add(intoList(later));
  const auto ends = observed->add([&](int value) {
    if (value == 2) observed.reset();
  });
  const auto fourth = observed->add(intoList(last));
  for (const int value : {1, 2}) observed->tell(value);
  EXPECT_EQ(observed, nullptr);
  EXPECT_EQ(own, Seen{1});
  EXPECT_EQ(later, Seen());
  EXPECT_EQ(added, Seen{2});
  EXPECT_EQ(last, (Seen{1, 2}));
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

TEST(Published, AssigningInsideANotificationKeepsTheOrder) {
  Published<int> value(0);
  Seen last, late;
  Subscription inner;
  const auto a = value.observeChanges([&](int seen) {
    if (seen != 1) return;
    value.set(2);
    EXPECT_EQ(value.value(), 2);
    inner = value.observe(intoList(late));
  });
  const auto b = value.observeChanges(intoList(last));
  value.set(1);
  EXPECT_EQ(last, (Seen{1, 2}));
  EXPECT_EQ(late, Seen{2});
}

TEST(ObserverList, TellsWhetherItIsInUseUntilItEnds) {
  std::vector<bool> uses;
  std::unique_ptr<ObserverList<>> list;
  list = std::make_unique<ObserverList<>>([&] { uses.push_back(!list->empty()); });
  {
    const auto first = list->add([] {}), second = list->add([] {});
    EXPECT_EQ(uses, std::vector{true});
  }
  EXPECT_EQ(uses, (std::vector{true, false}));
  const auto outlives = list->add([] {});
  list.reset();
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
