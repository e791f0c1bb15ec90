#include "palette/quick_paste_controller.h"

#include <gtest/gtest.h>

#include "support/fake_panel.h"
#include "support/fakes.h"

namespace brimlo {
namespace {

using Texts = std::vector<std::string>;

ClipList clipsOf(const Texts& texts) {
  std::vector<ClipPtr> clips;
  for (const std::string& text : texts) {
    clips.push_back(std::make_shared<Clip>(
        Clip{std::to_string(clips.size()), text, 1e12, "abc source", Texts{"abc tag"}}));
  }
  return ClipList(std::move(clips));
}

Texts numbered(int count) {
  Texts texts;
  for (int i = 0; i < count; ++i) texts.push_back("clip " + std::to_string(i));
  return texts;
}

class QuickPasteControllerTest : public testing::Test {
 protected:
  QuickPasteControllerTest() {
    controller.setClipsProvider([this] { return clipsOf(clips); });
    controller.setTemplatesProvider([this] { return templates; });
    controller.setOnConfirm([this](const Clip& clip) {
      EXPECT_FALSE(panel.visible);
      confirmed.push_back(clip.text);
    });
    controller.setOnConfirmTemplate([this](const Template& each) {
      EXPECT_FALSE(panel.visible);
      confirmed.push_back("template " + each.body);
    });
  }

  QuickPasteController::Services services(const Clock& clock) {
    return {.clock = clock,
            .environment = surroundings,
            .events = events,
            .log = log,
            .queue = loop,
            .screens = surroundings,
            .locale = "en_US",
            .makePanel = [this](QuickPasteViewState&) {
              return std::make_unique<test::FakePanel>(panel);
            }};
  }

  void present(const Texts& texts) {
    clips = texts;
    controller.present();
  }

  Texts shown() {
    Texts texts;
    const QuickPasteItems items = state.items.value();
    for (std::size_t i = 0; i < items.size(); ++i) {
      texts.push_back(items[i].clip() ? items[i].clip()->text : items[i].shownTemplate()->title);
    }
    return texts;
  }

  bool press(std::uint16_t keyCode) { return events.press({keyCode, 0, ""}); }
  bool type(const std::string& characters, std::uint64_t flags = 0) {
    return events.press({KeyDownEvent::kOtherKey, flags, characters});
  }

  static constexpr std::uint16_t kReturn = 36, kTab = 48, kEscape = 53, kEnter = 76, kPageUp = 116,
                                 kPageDown = 121, kLeft = 123, kRight = 124, kDown = 125, kUp = 126;

  Texts clips;
  std::vector<Template> templates;
  Texts confirmed;
  test::FakeRunLoop loop;
  test::FakeLog log;
  test::FakeSurroundings surroundings;
  test::FakeEventMonitors events;
  test::PanelRecord panel;
  QuickPasteController controller{services(loop)};
  QuickPasteViewState& state = controller.state();
};

TEST_F(QuickPasteControllerTest, AFilterKeepsOrderCountsBothSectionsAndSearchesTextsOnly) {
  templates = {{"0", "Abc", "", 0}, {"1", "title", "x aBc", 0}, {"2", "title", "body", 0}};
  present({"xABCx", "nothing", "abc"});
  struct Case {
    std::string query;
    Texts clips;
    std::int64_t templates;
  };
  const Case cases[] = {
      {" \t\u00a0", {"xABCx", "nothing", "abc"}, 3},
      {" abc\t", {"xABCx", "abc"}, 2},
      {"abcx", {"xABCx"}, 0},
      {"abc", {"xABCx", "abc"}, 2},
      {"\nabc", {}, 0},
      {"source", {}, 0},
      {"", {"xABCx", "nothing", "abc"}, 3},
  };
  for (const auto& [query, texts, count] : cases) {
    state.query.set(query);
    EXPECT_EQ(shown(), texts) << query;
    EXPECT_EQ(state.clipCount.value(), static_cast<std::int64_t>(texts.size())) << query;
    EXPECT_EQ(state.templateCount.value(), count) << query;
    EXPECT_EQ(state.query.value(), query);
  }
  state.query.set("abc");
  press(kTab);
  EXPECT_EQ(shown(), (Texts{"Abc", "title"}));
  EXPECT_EQ(state.clipCount.value(), 2);
  EXPECT_EQ(state.items.value()[0].id(), "t-0");
  press(kTab);
  EXPECT_EQ(state.items.value()[0].id(), "c-0");
}

TEST_F(QuickPasteControllerTest, AStricterFilterFindsWhatAFreshOneDoes) {
  present({"e", "e\u0301", "ex", "e\u0301x", "İx", "ix", "ssx", "ßx", "tést"});
  for (const Texts& typed : std::vector<Texts>{{"e", "e\u0301", "e\u0301x"},
                                               {"i", "i\u0307"},
                                               {"s", "ss", "ssx"},
                                               {"t", "te", "te\u0301", "te\u0301st"},
                                               {"x", "x "}}) {
    for (const std::string& query : typed) state.query.set(query);
    const Texts narrowed = shown();
    state.query.set("");
    state.query.set(typed.back());
    EXPECT_EQ(narrowed, shown()) << typed.back();
    EXPECT_FALSE(narrowed.empty()) << typed.back();
  }
}

TEST_F(QuickPasteControllerTest, TheSelectionMovesByRowsAndPagesAndStopsAtTheEnds) {
  present({});
  std::int64_t tick = state.keyboardNavTick.value();
  EXPECT_TRUE(press(kDown));
  EXPECT_EQ(state.keyboardNavTick.value(), tick);
  present(numbered(20));
  const std::pair<std::uint16_t, std::int64_t> keys[] = {
      {kDown, 1},      {kUp, 0},    {kUp, 0},    {kPageDown, 8}, {kRight, 16},
      {kPageDown, 19}, {kDown, 19}, {kLeft, 11}, {kPageUp, 3},   {kLeft, 0}};
  tick = state.keyboardNavTick.value();
  for (const auto& [key, row] : keys) {
    EXPECT_TRUE(press(key));
    EXPECT_EQ(state.selectedIndex.value(), row);
    EXPECT_EQ(state.keyboardNavTick.value(), ++tick);
  }
  state.onHover(7);
  EXPECT_EQ(state.selectedIndex.value(), 7);
  EXPECT_EQ(state.keyboardNavTick.value(), tick);
  state.onSectionChange(QuickPasteSection::kClips);
  EXPECT_EQ(state.selectedIndex.value(), 7);
  state.query.set("clip 1");
  EXPECT_EQ(state.selectedIndex.value(), 0);
  EXPECT_EQ(state.keyboardNavTick.value(), tick + 1);
  state.query.set("clip 1");
  EXPECT_EQ(state.keyboardNavTick.value(), tick + 1);
}

TEST_F(QuickPasteControllerTest, KeysActOnTheListOrTypeIntoTheFilter) {
  struct Case {
    const char* query;
    KeyDownEvent event;
    bool consumed;
    Texts confirmed;
  };
  constexpr auto kOther = KeyDownEvent::kOtherKey;
  const Case cases[] = {
      {"", {kReturn, 0, "\r"}, true, {"clip 0"}},
      {"2", {kEnter, KeyDownEvent::kShiftFlag, "\r"}, true, {"clip 2"}},
      {"none", {kReturn, 0, "\r"}, true, {}},
      {"", {kOther, 0, "2"}, true, {"clip 1"}},
      {"", {kOther, KeyDownEvent::kOptionFlag, "3"}, true, {"clip 2"}},
      {"", {kOther, 0, "三"}, true, {"clip 2"}},
      {"", {kOther, 0, "5"}, false, {}},
      {"", {kOther, 0, "0"}, false, {}},
      {"", {kOther, 0, "½"}, false, {}},
      {"", {kOther, 0, "a"}, false, {}},
      {"", {kOther, 0, ""}, false, {}},
      {"", {kOther, KeyDownEvent::kCommandFlag, "1"}, false, {}},
      {"", {kOther, KeyDownEvent::kControlFlag, "1"}, false, {}},
      {"c", {kOther, 0, "1"}, false, {}},
      {" ", {kLeft, 0, ""}, false, {}},
  };
  for (const auto& [query, event, consumed, expected] : cases) {
    confirmed.clear();
    present(numbered(3));
    state.query.set(query);
    EXPECT_EQ(events.press(event), consumed) << query << event.charactersIgnoringModifiers;
    EXPECT_EQ(confirmed, expected) << query << event.charactersIgnoringModifiers;
    EXPECT_EQ(panel.visible, expected.empty());
  }
}

TEST_F(QuickPasteControllerTest, AnInputMethodThatComposesKeepsItsKeysButNotThePageKeys) {
  present(numbered(20));
  panel.composing = true;
  for (const auto key : {kReturn, kEnter, kTab, kEscape, kLeft, kRight, kDown, kUp}) {
    EXPECT_FALSE(press(key)) << key;
  }
  EXPECT_FALSE(type("1"));
  EXPECT_EQ(state.selectedIndex.value(), 0);
  EXPECT_TRUE(press(kPageDown));
  EXPECT_EQ(state.selectedIndex.value(), 8);
  EXPECT_TRUE(panel.visible);
}

TEST_F(QuickPasteControllerTest, ItOpensFreshlyFilledAndSaysSo) {
  templates = {{"0", "greeting", "Dear", 0}, {"1", "date", "{date}", 0}};
  present(numbered(3));
  EXPECT_EQ(log.lines.back(),
            "quick-paste palette presented (3 items) frame={{390, 8}, {500, 497}} visible=true");
  const std::int64_t focus = state.focusRequest.value();
  state.query.set("clip 2");
  press(kTab);
  surroundings.variables = {{"BRIMLO_QP_SECTION", "Templates"}, {"BRIMLO_QP_QUERY", ""}};
  present(numbered(4));
  EXPECT_EQ(state.section.value(), QuickPasteSection::kClips);
  EXPECT_EQ(state.query.value(), "");
  EXPECT_EQ(shown(), numbered(4));
  EXPECT_EQ(state.selectedIndex.value(), 0);
  EXPECT_EQ(state.focusRequest.value(), focus + 1);
  EXPECT_EQ(panel.made, 1);
  surroundings.variables = {{"BRIMLO_QP_SECTION", "templates"}, {"BRIMLO_QP_QUERY", " dat"}};
  controller.present();
  EXPECT_EQ(shown(), Texts{"date"});
  EXPECT_EQ(state.query.value(), " dat");
  press(kReturn);
  EXPECT_EQ(confirmed, Texts{"template {date}"});
  panel.fitting = {500, 99};
  QuickPasteController bare(services(loop));
  bare.present();
  EXPECT_EQ(panel.frame.size, (Size{500, 460}));
  EXPECT_TRUE(press(kReturn));
  EXPECT_TRUE(panel.visible);
}

TEST_F(QuickPasteControllerTest, ItHangsBelowThePointerWithinTheScreen) {
  const Screen left{{{0, 0}, {1280, 800}}, {{0, 40}, {1280, 736}}};
  const Screen right{{{1280, 100}, {800, 600}}, {{1280, 100}, {800, 600}}};
  const Screen tiny{{{0, 0}, {400, 300}}, {{0, 0}, {400, 300}}};
  struct Case {
    std::vector<Screen> screens;
    Point pointer;
    bool centred;
    Point origin;
  };
  const Case cases[] = {
      {{left, right}, {640, 700}, false, {390, 243}},
      {{left, right}, {640, 800}, false, {390, 271}},
      {{right, left}, {0, 1}, false, {8, 48}},
      {{left, right}, {1279, 799}, false, {772, 271}},
      {{left, right}, {1300, 690}, false, {1288, 195}},
      {{right, left}, {5000, 5000}, false, {772, 271}},  // on no screen: the main one
      {{tiny}, {200, 200}, false, {-108, -205}},
      {{right, left}, {1300, 690}, true, {390, 159.5}},
      {{right}, {1300, 690}, true, {390, 159.5}},
      {{}, {1300, 690}, false, {7, 7}},
      {{}, {1300, 690}, true, {7, 7}},
  };
  for (const auto& [screens, pointer, centred, origin] : cases) {
    surroundings.all = screens;
    surroundings.main = screens.empty() ? std::nullopt : std::optional(left);
    surroundings.pointer = pointer;
    panel.frame.origin = {7, 7};
    controller.setDebugCenterOnPrimary(centred);
    present({});
    EXPECT_EQ(panel.frame.origin, origin) << pointer.x << " " << centred;
  }
  surroundings.all = {left, right};
  surroundings.pointer = {1400, 600};
  controller.setDebugCenterOnPrimary(false);
  present({});
  surroundings.all = {left};
  surroundings.pointer = {300, 700};
  surroundings.changes.set(1);
  EXPECT_EQ(panel.frame.origin, (Point{50, 243})) << "its screen went away";
  surroundings.pointer = {500, 700};
  surroundings.changes.set(1);
  EXPECT_EQ(panel.frame.origin, (Point{50, 243})) << "still in sight";
}

TEST_F(QuickPasteControllerTest, ItClosesWhenThePersonTurnsAway) {
  const std::pair<const char*, std::function<void()>> ways[] = {
      {"Escape", [&] { press(kEscape); }},
      {"a click elsewhere", [&] { events.clickElsewhere(); }},
      {"a click in another window of its own", [&] { events.click(WindowId{7}); }},
      {"the keyboard goes elsewhere", [&] { panel.resign(); }},
      {"the application", [&] { controller.dismiss(); }},
  };
  for (const auto& [way, happens] : ways) {
    present(numbered(3));
    controller.present();
    EXPECT_EQ(events.keys.callbacks.size(), 1u);
    EXPECT_EQ(events.globalClicks.callbacks.size() + events.localClicks.callbacks.size(), 2u);
    events.click(test::FakePanel::kWindow);
    loop.drain();
    EXPECT_TRUE(panel.visible) << way;
    happens();
    loop.drain();
    EXPECT_FALSE(panel.visible) << way;
    EXPECT_TRUE(events.keys.callbacks.empty());
    EXPECT_TRUE(events.globalClicks.callbacks.empty() && events.localClicks.callbacks.empty());
  }
  controller.setAutoDismissOnResign(false);
  controller.present();
  panel.resign();
  EXPECT_TRUE(panel.visible);
  press(kEscape);
  EXPECT_FALSE(panel.visible);
}

/// A clock that is read often enough to let every slice of work end.
class HastyClock : public Clock {
 public:
  double nowMs() const override { return now += 3; }
  mutable double now = 0;
};

TEST_F(QuickPasteControllerTest, AFilterUnderWayIsReplacedOrFinishedNeverQueued) {
  const HastyClock clock;
  QuickPasteController slow(services(clock));
  Texts texts;
  for (const char* end : {"one", "two", "three"}) {
    texts.push_back(std::string(std::size_t{4} << 20, '-') + end);
  }
  slow.setClipsProvider([&] { return clipsOf(texts); });
  slow.setOnConfirm([this](const Clip& clip) { confirmed.push_back(clip.text.substr(4u << 20)); });
  slow.present();
  QuickPasteViewState& shownState = slow.state();
  for (const char* typed : {"t", "tw", "two"}) {
    shownState.query.set(typed);
    EXPECT_EQ(shownState.items.value().size(), 3u) << "the rows before stay until it is done";
  }
  loop.drain();
  EXPECT_EQ(shownState.items.value().size(), 1u);
  shownState.query.set("th");
  press(kReturn);
  EXPECT_EQ(confirmed, Texts{"three"});
  slow.present();
  shownState.query.set("e");
  press(kDown);
  EXPECT_EQ(shownState.items.value().size(), 2u);
  EXPECT_EQ(shownState.selectedIndex.value(), 1);
  shownState.query.set("two");
  press(kEscape);
  loop.drain();
  EXPECT_EQ(shownState.items.value().size(), 2u) << "closed: nothing goes on";
}

}  // namespace
}  // namespace brimlo
