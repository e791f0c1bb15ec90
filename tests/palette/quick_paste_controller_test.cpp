#include "palette/quick_paste_controller.h"

#include <gtest/gtest.h>

#include "support/fake_panel.h"
#include "support/fakes.h"

namespace brimlo {
namespace {

using namespace key_code;
using Texts = std::vector<std::string>;

Texts numbered(int count) {
  Texts texts;
  for (int i = 0; i < count; ++i) texts.push_back("clip " + std::to_string(i));
  return texts;
}

class QuickPasteControllerTest : public testing::Test {
 protected:
  QuickPasteControllerTest() {
    controller.setClipsProvider([this] { return provided(); });
    controller.setTemplatesProvider([this] { return templates; });
    controller.setOnConfirm([this](const Clip& clip) { confirm(clip.text); });
    controller.setOnConfirmTemplate([this](const Template& each) { confirm(each.body); });
  }

  QuickPasteController::Services services(const Clock& clock) {
    return {.clock = clock,
            .environment = surroundings,
            .events = events,
            .log = log,
            .queue = loop,
            .screens = surroundings,
            .locale = "en_US",
            .makePanel = [this](auto&) { return std::make_unique<test::FakeWindow>(panel); }};
  }

  ClipList provided() {
    std::vector<ClipPtr> list;
    for (const std::string& text : clips) {
      const std::string id = std::to_string(list.size());
      list.push_back(std::make_shared<Clip>(Clip{id, text, 1e12, "abc source", Texts{"abc tag"}}));
    }
    return ClipList(std::move(list));
  }

  void confirm(const std::string& text) {
    EXPECT_FALSE(panel.visible);
    confirmed.push_back(text);
  }

  void present(const Texts& texts) {
    clips = texts;
    controller.present();
  }

  Texts shown() {
    Texts texts;
    for (std::size_t i = 0; i < state.items.value().size(); ++i) {
      const QuickPasteItem item = state.items.value()[i];
      texts.push_back(item.clip() ? item.clip()->text : item.shownTemplate()->title);
    }
    return texts;
  }

  bool press(std::uint16_t keyCode) { return events.press({keyCode, 0, ""}); }

  Texts clips;
  std::vector<Template> templates;
  Texts confirmed;
  test::FakeRunLoop loop;
  test::FakeLog log;
  test::FakeSurroundings surroundings;
  test::FakeEventMonitors events;
  test::WindowRecord panel;
  QuickPasteController controller{services(loop)};
  QuickPasteViewState& state = controller.state();
};

TEST_F(QuickPasteControllerTest, AFilterKeepsOrderCountsBothSectionsAndSearchesTextsOnly) {
  templates = {{"0", "Abc", "", 0}, {"1", "title", "x aBc", 0}, {"2", "title", "body", 0}};
  const Texts all{"xABCx", "nothing", "abc"};
  present(all);
  const struct {
    const char* query;
    Texts clips;
    std::int64_t templates;
  } cases[] = {
      {" \t\u00a0", all, 3},  {" abc\t", {"xABCx", "abc"}, 2},
      {"abcx", {"xABCx"}, 0}, {"abc", {"xABCx", "abc"}, 2},
      {"\nabc", {}, 0},       {"source", {}, 0},
      {"", all, 3},
  };
  for (const auto& [query, texts, count] : cases) {
    state.query.set(query);
    EXPECT_EQ(shown(), texts) << query;
    EXPECT_EQ(state.clipCount.value(), static_cast<std::int64_t>(texts.size())) << query;
    EXPECT_EQ(state.templateCount.value(), count) << query;
  }
  state.query.set("abc");
  for (const char* id : {"t-0", "c-0"}) {
    press(kTab);
    EXPECT_EQ(state.items.value()[0].id(), id);
    EXPECT_EQ(state.items.value().size(), 2U);
  }
}

TEST_F(QuickPasteControllerTest, AStricterFilterFindsWhatAFreshOneDoes) {
  present({"e", "e\u0301", "ex", "e\u0301x", "İx", "ix", "tést"});
  const Texts queries[] = {
      {"e", "e\u0301", "e\u0301x"}, {"i", "i\u0307"}, {"t", "te", "te\u0301", "te\u0301st"}};
  for (const Texts& typed : queries) {
    for (const std::string& query : typed) state.query.set(query);
    const Texts narrowed = shown();
    EXPECT_FALSE(narrowed.empty()) << typed.back();
    state.query.set("");
    state.query.set(typed.back());
    EXPECT_EQ(narrowed, shown()) << typed.back();
  }
}

TEST_F(QuickPasteControllerTest, TheSelectionMovesByRowsAndPagesAndStopsAtTheEnds) {
  present({});
  std::int64_t tick = state.keyboardNavTick.value();
  EXPECT_TRUE(press(kDownArrow));
  EXPECT_EQ(state.keyboardNavTick.value(), tick) << "without rows";
  present(numbered(20));
  tick = state.keyboardNavTick.value();
  const std::pair<std::uint16_t, std::int64_t> keys[] = {
      {kDownArrow, 1}, {kUpArrow, 0},    {kUpArrow, 0},    {kPageDown, 8}, {kRightArrow, 16},
      {kPageDown, 19}, {kDownArrow, 19}, {kLeftArrow, 11}, {kPageUp, 3},   {kLeftArrow, 0}};
  for (const auto& [key, row] : keys) {
    panel.composing = key == kPageUp || key == kPageDown;  // no input method uses these two
    EXPECT_TRUE(press(key));
    EXPECT_EQ(state.selectedIndex.value(), row);
    EXPECT_EQ(state.keyboardNavTick.value(), ++tick);
  }
  state.onHover(7);
  state.onSectionChange(QuickPasteSection::kClips);
  EXPECT_EQ(state.selectedIndex.value(), 7);
  EXPECT_EQ(state.keyboardNavTick.value(), tick);
  for (int i = 0; i < 2; ++i) state.query.set("clip 1");
  EXPECT_EQ(state.selectedIndex.value(), 0);
  EXPECT_EQ(state.keyboardNavTick.value(), tick + 1);
}

TEST_F(QuickPasteControllerTest, KeysActOnTheListOrTypeIntoTheFilter) {
  using namespace modifier_flag;
  const struct {
    const char* query;
    KeyDownEvent event;
    bool consumed;
    Texts confirmed;
  } cases[] = {
      {"", {kReturn, 0, "\r"}, true, {"clip 0"}},
      {"2", {kKeypadEnter, kShift, "\r"}, true, {"clip 2"}},
      {"none", {kReturn, 0, "\r"}, true, {}},
      {"", {kOther, kOption, "3"}, true, {"clip 2"}},
      {"", {kOther, 0, "4"}, false, {}},
      {"", {kOther, 0, "0"}, false, {}},
      {"", {kOther, kCommand, "1"}, false, {}},
      {"", {kOther, kControl, "1"}, false, {}},
      {"c", {kOther, 0, "1"}, false, {}},
      {" ", {kLeftArrow, 0, ""}, false, {}},
      {"", {kLeftArrow, 0, ""}, true, {}},
      {"c", {kUpArrow, 0, ""}, true, {}},
      {"c", {kTab, 0, "\t"}, true, {}},
      {"", {kEscape, 0, ""}, true, {}},
  };
  for (const auto& [query, event, consumed, expected] : cases) {
    SCOPED_TRACE(query + event.charactersIgnoringModifiers);
    confirmed.clear();
    present(numbered(3));
    state.query.set(query);
    panel.composing = true;
    EXPECT_FALSE(events.press(event)) << "an input method that composes keeps its keys";
    panel.composing = false;
    EXPECT_EQ(events.press(event), consumed);
    EXPECT_EQ(confirmed, expected);
    EXPECT_EQ(panel.visible, expected.empty() && event.keyCode != kEscape);
  }
}

TEST_F(QuickPasteControllerTest, ItIsMadeOnceOpensFreshlyFilledAndSaysSo) {
  for (int i = 0; i < 2; ++i) controller.prepare();
  EXPECT_TRUE(panel.made == 1 && panel.prepared == 1 && !panel.visible);
  templates = {{"0", "greeting", "Dear", 0}, {"1", "date", "{date}", 0}};
  present(numbered(3));
  EXPECT_EQ(log.lines.back(),
            "quick-paste palette presented (3 items) frame={{390, 8}, {500, 497}} visible=true");
  const std::int64_t focus = state.focusRequest.value();
  state.query.set("clip 2");
  press(kTab);
  surroundings.variables = {{"BRIMLO_QP_SECTION", "Templates"}, {"BRIMLO_QP_QUERY", ""}};
  panel.tellsFrame = false;
  present(numbered(4));
  EXPECT_EQ(log.lines.back(), "quick-paste palette presented (4 items) frame=? visible=true");
  EXPECT_EQ(state.query.value(), "");
  EXPECT_EQ(shown(), numbered(4));
  EXPECT_EQ(state.focusRequest.value(), focus + 1);
  surroundings.variables = {{"BRIMLO_QP_SECTION", "templates"}, {"BRIMLO_QP_QUERY", " dat"}};
  controller.present();
  EXPECT_EQ(shown(), Texts{"date"});
  EXPECT_EQ(state.query.value(), " dat");
  press(kReturn);
  EXPECT_EQ(confirmed, Texts{"{date}"});
  EXPECT_EQ(panel.made, 1);
  panel.fitting = {500, 99};
  QuickPasteController bare(services(loop));
  bare.present();
  EXPECT_EQ(panel.frame.size, (Size{500, 460})) << "a view that has no size yet";
}

TEST_F(QuickPasteControllerTest, ItHangsBelowThePointerWithinTheScreen) {
  const Screen left{{{0, 0}, {1280, 800}}, {{0, 40}, {1280, 736}}};
  const Screen right{{{1280, 100}, {800, 600}}, {{1280, 100}, {800, 600}}};
  const Screen tiny{{{0, 0}, {400, 300}}, {{0, 0}, {400, 300}}};
  const struct {
    std::vector<Screen> screens;
    std::optional<Point> pointer;
    bool centred;
    Point origin;
  } cases[] = {
      {{left, right}, Point{640, 700}, false, {390, 243}},
      {{right, left}, Point{0, 1}, false, {8, 48}},
      {{left, right}, Point{1279, 799}, false, {772, 271}},
      {{left, right}, Point{1300, 690}, false, {1288, 195}},
      {{right, left}, Point{5000, 5000}, false, {772, 271}},  // on no screen: the main one
      {{right, left}, std::nullopt, false, {390, 159.5}},     // unknown: in the middle of that
      {{tiny}, Point{200, 200}, false, {-108, -205}},
      {{right, left}, Point{1300, 690}, true, {390, 159.5}},
      {{right}, Point{1300, 690}, true, {390, 159.5}},
      {{}, Point{1300, 690}, true, {7, 7}},
  };
  for (const auto& each : cases) {
    surroundings.all = each.screens;
    surroundings.main = each.screens.empty() ? std::nullopt : std::optional(left);
    surroundings.pointer = each.pointer;
    panel.frame.origin = {7, 7};
    controller.setDebugCenterOnPrimary(each.centred);
    present({});
    EXPECT_EQ(panel.frame.origin, each.origin) << "case " << &each - cases;
  }
}

TEST_F(QuickPasteControllerTest, ItMovesOnlyWhenItsScreenGoesAway) {
  const Screen screen = surroundings.all[0];
  surroundings.all.push_back({{{1280, 0}, {800, 800}}, {{1280, 0}, {800, 800}}});
  surroundings.pointer = {1600, 600};
  present({});
  for (const double x : {300, 500}) {  // the second time it is in sight, wherever the pointer is
    surroundings.all = {screen};
    surroundings.pointer = {x, 700};
    surroundings.changes.set(1);
    EXPECT_EQ(panel.frame.origin, (Point{50, 243}));
  }
}

TEST_F(QuickPasteControllerTest, ItClosesWhenThePersonTurnsAway) {
  const std::pair<const char*, std::function<void()>> ways[] = {
      {"a click elsewhere", [&] { events.clickElsewhere(); }},
      {"a click in another window of its own", [&] { events.click(WindowId{7}); }},
      {"the keyboard goes elsewhere", [&] { panel.resign(); }},
      {"the application", [&] { controller.dismiss(); }},
  };
  for (const auto& [way, happens] : ways) {
    SCOPED_TRACE(way);
    for (int i = 0; i < 2; ++i) controller.present();
    EXPECT_EQ(events.keys.callbacks.size(), 1u);
    events.click(test::FakeWindow::kId);
    loop.drain();
    EXPECT_TRUE(panel.visible);
    happens();
    loop.drain();
    EXPECT_FALSE(panel.visible);
    EXPECT_TRUE(events.keys.callbacks.empty() && events.globalClicks.callbacks.empty() &&
                events.localClicks.callbacks.empty());
  }
}

/// Moves on at each reading, so that every slice of work is soon over.
class HastyClock : public Clock {
 public:
  double nowMs() const override { return now += 3; }
  mutable double now = 0;
};

TEST_F(QuickPasteControllerTest, AFilterUnderWayIsReplacedOrFinishedNeverQueued) {
  const HastyClock clock;
  QuickPasteController slow(services(clock));
  const std::string dashes(std::size_t{4} << 20, '-');
  clips = {dashes + "one", dashes + "two", dashes + "three"};
  slow.setClipsProvider([&] { return provided(); });
  slow.setOnConfirm([&](const Clip& clip) { confirm(clip.text.substr(dashes.size())); });
  slow.present();
  const auto rows = [&] { return slow.state().items.value().size(); };
  for (const char* typed : {"t", "tw", "two"}) {
    slow.state().query.set(typed);
    EXPECT_EQ(rows(), 3u) << "the rows before stay until it is done";
  }
  loop.drain();
  EXPECT_EQ(rows(), 1u);
  slow.state().query.set("th");
  press(kReturn);
  EXPECT_EQ(confirmed, Texts{"three"});
  slow.present();
  slow.state().query.set("e");
  press(kDownArrow);
  EXPECT_EQ(rows(), 2u);
  EXPECT_EQ(slow.state().selectedIndex.value(), 1);
  slow.state().query.set("two");
  press(kEscape);
  loop.drain();
  EXPECT_EQ(rows(), 2u) << "closed: nothing goes on";
}

}  // namespace
}  // namespace brimlo
