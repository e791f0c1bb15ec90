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
    for (std::size_t i = 0; i < state.items.value().size(); ++i) {
      const QuickPasteItem item = state.items.value()[i];
      texts.push_back(item.clip() ? item.clip()->text : item.shownTemplate()->title);
    }
    return texts;
  }

  bool press(std::uint16_t keyCode) { return events.press({keyCode, 0, ""}); }

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
  const struct {
    const char* query;
    Texts clips;
    std::int64_t templates;
  } cases[] = {
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
  }
  state.query.set("abc");
  for (const char* id : {"t-0", "c-0"}) {
    press(kTab);
    EXPECT_EQ(state.items.value()[0].id(), id);
    EXPECT_EQ(state.items.value().size(), 2U);
  }
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
  EXPECT_EQ(state.keyboardNavTick.value(), tick) << "without rows";
  present(numbered(20));
  tick = state.keyboardNavTick.value();
  const std::pair<std::uint16_t, std::int64_t> keys[] = {
      {kDown, 1},      {kUp, 0},    {kUp, 0},    {kPageDown, 8}, {kRight, 16},
      {kPageDown, 19}, {kDown, 19}, {kLeft, 11}, {kPageUp, 3},   {kLeft, 0}};
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
  constexpr auto kOther = key_code::kOther;
  const struct {
    const char* query;
    KeyDownEvent event;
    bool consumed;
    Texts confirmed;
  } cases[] = {
      {"", {kReturn, 0, "\r"}, true, {"clip 0"}},
      {"2", {kEnter, modifier_flag::kShift, "\r"}, true, {"clip 2"}},
      {"none", {kReturn, 0, "\r"}, true, {}},
      {"", {kOther, modifier_flag::kOption, "3"}, true, {"clip 2"}},
      {"", {kOther, 0, "三"}, true, {"clip 2"}},
      {"", {kOther, 0, "5"}, false, {}},
      {"", {kOther, 0, "0"}, false, {}},
      {"", {kOther, 0, "a"}, false, {}},
      {"", {kOther, modifier_flag::kCommand, "1"}, false, {}},
      {"", {kOther, modifier_flag::kControl, "1"}, false, {}},
      {"c", {kOther, 0, "1"}, false, {}},
      {" ", {kLeft, 0, ""}, false, {}},
      {"", {kLeft, 0, ""}, true, {}},
      {"c", {kUp, 0, ""}, true, {}},
      {"c", {kDown, 0, ""}, true, {}},
      {"c", {kTab, 0, "\t"}, true, {}},
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
    EXPECT_EQ(panel.visible, expected.empty());
  }
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
  EXPECT_EQ(state.query.value(), "");
  EXPECT_EQ(shown(), numbered(4));
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
  EXPECT_EQ(panel.frame.size, (Size{500, 460})) << "a view that has no size yet";
}

TEST_F(QuickPasteControllerTest, ItHangsBelowThePointerWithinTheScreen) {
  const Screen left{{{0, 0}, {1280, 800}}, {{0, 40}, {1280, 736}}};
  const Screen right{{{1280, 100}, {800, 600}}, {{1280, 100}, {800, 600}}};
  const Screen tiny{{{0, 0}, {400, 300}}, {{0, 0}, {400, 300}}};
  const struct {
    std::vector<Screen> screens;
    Point pointer;
    bool centred;
    Point origin;
  } cases[] = {
      {{left, right}, {640, 700}, false, {390, 243}},
      {{right, left}, {0, 1}, false, {8, 48}},
      {{left, right}, {1279, 799}, false, {772, 271}},
      {{left, right}, {1300, 690}, false, {1288, 195}},
      {{right, left}, {5000, 5000}, false, {772, 271}},  // on no screen: the main one
      {{tiny}, {200, 200}, false, {-108, -205}},
      {{right, left}, {1300, 690}, true, {390, 159.5}},
      {{right}, {1300, 690}, true, {390, 159.5}},
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
      {"Escape", [&] { press(kEscape); }},
      {"a click elsewhere", [&] { events.clickElsewhere(); }},
      {"a click in another window of its own", [&] { events.click(WindowId{7}); }},
      {"the keyboard goes elsewhere", [&] { panel.resign(); }},
      {"the application", [&] { controller.dismiss(); }},
  };
  for (const auto& [way, happens] : ways) {
    SCOPED_TRACE(way);
    for (int i = 0; i < 2; ++i) controller.present();
    EXPECT_EQ(events.keys.callbacks.size(), 1u);
    events.click(test::FakePanel::kWindow);
    loop.drain();
    panel.composing = true;
    EXPECT_FALSE(press(kEscape)) << "it ends the composing";
    panel.composing = false;
    EXPECT_TRUE(panel.visible);
    happens();
    loop.drain();
    EXPECT_FALSE(panel.visible);
    EXPECT_TRUE(events.keys.callbacks.empty() && events.globalClicks.callbacks.empty() &&
                events.localClicks.callbacks.empty());
  }
  controller.setAutoDismissOnResign(false);
  controller.present();
  panel.resign();
  EXPECT_TRUE(panel.visible);
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
  Texts texts;
  for (const char* end : {"one", "two", "three"}) {
    texts.push_back(std::string(std::size_t{4} << 20, '-') + end);
  }
  slow.setClipsProvider([&] { return clipsOf(texts); });
  slow.setOnConfirm([this](const Clip& clip) { confirmed.push_back(clip.text.substr(4u << 20)); });
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
  press(kDown);
  EXPECT_EQ(rows(), 2u);
  EXPECT_EQ(slow.state().selectedIndex.value(), 1);
  slow.state().query.set("two");
  press(kEscape);
  loop.drain();
  EXPECT_EQ(rows(), 2u) << "closed: nothing goes on";
}

}  // namespace
}  // namespace brimlo
