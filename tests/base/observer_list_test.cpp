#include "base/observer_list.h"

#include <gtest/gtest.h>

#include <string>

namespace brimlo {
namespace {

TEST(ObserverList, HandlersMayComeAndGoInsideANotification) {
  ObserverList<const std::string&> list;
  std::string told;
  const auto teller = [&](const char* name) {
    return [&told, name](const std::string& what) { told += name + what; };
  };
  Subscription own, later, added;
  own = list.add([&](const std::string& what) {
    told += "own" + what;
    own.reset();
    later.reset();
    added = list.add(teller("added"));
  });
  later = list.add(teller("later"));
  const auto last = list.add(teller("last"));
  list.notify("1");
  EXPECT_EQ(told, "own1last1");
  list.notify("2");
  EXPECT_EQ(told, "own1last1last2added2");
}

TEST(ObserverList, MayEndInsideANotificationAndBeforeItsSubscriptions) {
  int uses = 0, calls = 0;
  auto list = std::make_unique<ObserverList<>>([&] { ++uses; });
  {
    const auto first = list->add([&] { list.reset(); });
    const auto second = list->add([&] { ++calls; });
    list->notify();
    EXPECT_EQ(list, nullptr);
  }
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(uses, 1) << "nothing is called back after the end";
}

TEST(ObserverList, SaysWhenItIsInUse) {
  std::vector<bool> uses;
  ObserverList<>* itself = nullptr;
  ObserverList<> list([&] { uses.push_back(!itself->empty()); });
  itself = &list;
  {
    const auto first = list.add([] {});
    const auto second = list.add([] {});
    EXPECT_EQ(uses, std::vector{true});
  }
  EXPECT_EQ(uses, (std::vector{true, false}));
}

}  // namespace
}  // namespace brimlo
