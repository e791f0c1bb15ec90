#include "menu/menu_bar_controller.h"

#include "menu/menu_test.h"

namespace brimlo {
namespace {

using namespace std::chrono_literals;

TEST(OriginBeside, IsBesideTheIconAndWithinTheWorkArea) {
  const Size size{300, 500};
  const struct {
    const char* what;
    Rect item;
    Rect work;  // of a screen of 1000 by 800
    Point expected;
  } cases[] = {
      {"below a panel on top", {{700, 770}, {24, 24}}, {{0, 0}, {1000, 764}}, {562, 264}},
      {"pushed in at the right", {{970, 770}, {24, 24}}, {{0, 0}, {1000, 764}}, {700, 264}},
      {"above a panel below", {{20, 2}, {24, 24}}, {{0, 30}, {1000, 770}}, {0, 30}},
      {"right of a panel on the left", {{4, 300}, {24, 24}}, {{40, 0}, {960, 800}}, {40, 62}},
      {"left of a panel on the right", {{970, 20}, {24, 24}}, {{0, 0}, {960, 800}}, {660, 0}},
      {"a panel that hides, below", {{800, 0}, {24, 24}}, {{0, 0}, {1000, 800}}, {662, 24}},
      {"a point inside the work area", {{500, 60}, {0, 0}}, {{0, 0}, {1000, 800}}, {350, 60}},
      {"in the corner of two panels", {{988, 4}, {8, 8}}, {{0, 30}, {996, 770}}, {696, 30}},
      {"a low screen: the top is seen", {{500, 4}, {24, 24}}, {{0, 30}, {1000, 400}}, {362, -70}},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(originBeside(each.item, size, {{{0, 0}, {1000, 800}}, each.work}), each.expected)
        << each.what;
  }
}

class MenuBarControllerTest : public test::MenuTest {
 protected:
  test::FakeRunLoop loop;
  test::FakeEventMonitors events;
  test::WindowRecord panel{.fitting = {344, 600}};
  MenuContentModel* content = nullptr;
  MenuBarController menuBar{
      {.events = events,
       .queue = loop,
       .screens = surroundings,
       .makeContent = [this] { return std::make_unique<MenuContentModel>(services()); },
       .makePanel =
           [this](MenuContentModel& model) {
             content = &model;
             return std::make_unique<test::FakeWindow>(panel);
           }}};
  const Rect icon{{1200, 778}, {20, 20}};
};

TEST_F(MenuBarControllerTest, EveryWayOutClosesIt) {
  const std::pair<const char*, std::function<void()>> ways[] = {
      {"the icon", [&] { menuBar.toggle(icon); }},
      {"another window", [&] { events.clickElsewhere(); }},
      {"another window of this program", [&] { events.click(WindowId{7}); }},
      {"the keyboard gone", [&] { panel.resign(); }},
      {"Escape", [&] { content->escape(); }},
  };
  for (const auto& [what, close] : ways) {
    SCOPED_TRACE(what);
    menuBar.toggle(icon);
    events.click(test::FakeWindow::kId);
    loop.drain();
    EXPECT_TRUE(panel.visible) << "a click in it leaves it open";
    close();
    loop.drain();
    EXPECT_FALSE(panel.visible || menuBar.isOpen());
    EXPECT_TRUE(events.globalClicks.callbacks.empty());
    loop.advance(500ms);
  }
}

TEST_F(MenuBarControllerTest, TheClickOnTheIconThatClosedItDoesNotOpenItAgain) {
  for (const auto& [later, opens] : {std::pair(399ms, false), {400ms, true}}) {
    menuBar.open(icon);
    events.clickElsewhere();
    loop.advance(later);
    menuBar.toggle(icon);
    EXPECT_EQ(panel.visible, opens) << later.count();
  }
  menuBar.close();
  menuBar.toggle(icon);
  EXPECT_TRUE(panel.visible);
}

TEST_F(MenuBarControllerTest, StaysBesideItsIconAndOnItsScreen) {
  menuBar.toggle(icon);
  EXPECT_EQ(panel.frame, (Rect{{936, 176}, {344, 600}}));
  panel.fitting = {344, 900};
  panel.refit();
  EXPECT_EQ(panel.frame, (Rect{{936, 0}, {344, 776}})) << "no higher than the work area";
  panel.fitting = {344, 300};
  panel.refit();
  EXPECT_EQ(panel.frame, (Rect{{936, 476}, {344, 300}}));
  // The screen with the icon is gone.
  surroundings.all = {{{{0, 0}, {800, 600}}, {{0, 30}, {800, 570}}}};
  surroundings.main = surroundings.all[0];
  surroundings.changes.set(1);
  EXPECT_EQ(panel.frame, (Rect{{456, 30}, {344, 300}}));
}

TEST_F(MenuBarControllerTest, WithoutAnIconItIsInTheUsualCornerOfTheScreenWithThePointer) {
  surroundings.all.push_back({{{1280, 0}, {800, 800}}, {{1280, 0}, {800, 800}}});
  const std::pair<std::optional<Point>, Point> cases[] = {
      {Point{1600, 600}, {1736, 200}}, {std::nullopt, {936, 176}},  // unknown: on the main screen
  };
  for (const auto& [pointer, origin] : cases) {
    surroundings.pointer = pointer;
    menuBar.open(std::nullopt);
    EXPECT_EQ(panel.frame.origin, origin);
  }
  menuBar.close();
  surroundings.all.clear();
  surroundings.main.reset();
  menuBar.open(std::nullopt);
  EXPECT_TRUE(panel.visible);
}

}  // namespace
}  // namespace brimlo
