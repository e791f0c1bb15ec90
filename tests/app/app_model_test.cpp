#include "app/app_model.h"

#include <gtest/gtest.h>

#include <csignal>

#include "support/fake_cloud.h"
#include "support/fake_file_system.h"
#include "support/fake_panel.h"
#include "support/fakes.h"

namespace brimlo {
namespace {

using namespace std::chrono_literals;
using Lines = std::vector<std::string>;

/// Its own session.
class AppModelTest : public testing::Test, public Session {
 protected:
  AppModelTest() { defaults.values["macOnboardingDone"] = true; }

  std::unique_ptr<AppModel> make() {
    return std::make_unique<AppModel>(Services{
        .session = *this,
        .application = loop,
        .background = background,
        .clock = loop,
        .cloud = cloud,
        .entitlements = entitlements,
        .environment = surroundings,
        .files = files,
        .dataFolder = "/data",
        .locale = "en_US",
        .makeMenuPreview = nullptr,
        .makeOnboardingWindow =
            [this](auto&) {
              journal.push_back("onboarding window");
              return std::make_unique<test::FakeWindow>(window);
            },
        .makePalettePanel = [this](auto&) { return std::make_unique<test::FakeWindow>(panel); },
        .strings = strings,
        .queue = loop,
        .signals = desktop,
        .log = log,
        .timers = loop,
        .defaults = defaults,
        .notifications = desktop});
  }

  /// Has `fakes` write into the journal.
  void record(const std::vector<test::Journaling*>& fakes) {
    for (test::Journaling* fake : fakes) fake->journal = &journal;
  }

  /// What the journal has got since it was asked last.
  Lines recorded() { return std::exchange(journal, {}); }

  void copy(const std::string& text) {
    board.change(text);
    loop.advance(500ms);
  }

  Accessibility& accessibility() override { return desktop; }
  KeyEventPoster& keyEvents() override { return desktop; }
  EventMonitors& eventMonitors() override { return events; }
  HotKeys& hotKeys() override { return keys; }
  Pasteboard& pasteboard() override { return board; }
  Screens& screens() override { return surroundings; }
  Workspace& workspace() override { return desktop; }
  const Published<Appearance>& appearance() const override { return look; }
  void useActivationToken(const std::string&) override {}
  void setOnEnd(std::function<void(End)>) override {}
  void handOver(std::chrono::milliseconds) override {}

  Lines journal;
  test::FakeRunLoop loop;
  test::FakeBackground background;
  test::FakeCloud cloud;
  test::FakeEntitlements entitlements;
  test::FakeFileSystem files;
  test::FakePasteboard board{loop};
  test::FakeLog log;
  test::FakeDefaults defaults;
  test::FakeDesktop desktop;
  test::FakeStrings strings;
  test::FakeSurroundings surroundings;
  test::FakeEventMonitors events;
  test::FakeHotKeys keys;
  Published<Appearance> look{Appearance::kLight};
  test::WindowRecord panel;
  test::WindowRecord window;
};

TEST_F(AppModelTest, FromAFirstStartToTheNextOneThePlatformIsAskedInItsExactOrder) {
  defaults.values.clear();
  record({&background, &defaults, &desktop, &files, &keys, &loop, &board});
  const auto model = make();
  EXPECT_EQ(recorded(),
            (Lines{"read clips.json", "read deletedClipIds.json", "read templates.json",
                   "change count", "default autoApplyFromiPhone", "default quickPasteEnabled",
                   "default excludePasswords", "timer 500", "hotkey", "signal", "signal", "signal",
                   "main queue", "timer 30000", "background"}));
  EXPECT_EQ(model->launchMs(), loop.now);
  EXPECT_FALSE(window.visible);
  loop.drain();
  EXPECT_EQ(recorded(), (Lines{"default macOnboardingDone", "onboarding window", "timer 700"}));
  EXPECT_TRUE(window.visible);
  EXPECT_TRUE(defaults.writes.empty());
  EXPECT_EQ(files.writes, 0);

  copy("onboarding.practice.sample");
  EXPECT_TRUE(model->onboarding().state().practiceCopied.value());
  window.close();
  files.diskFull = true;
  copy("saved by the last attempt");
  files.diskFull = false;
  journal.clear();
  model->quit();
  EXPECT_EQ(recorded(), (Lines{"end timer 500", "end timer 30000", "end hotkey", "terminate"}));
  copy("too late");

  const auto next = make();
  EXPECT_EQ(next->store().clips().value().size(), 2u);
  loop.drain();
  EXPECT_FALSE(window.visible) << "seen before";
}

TEST_F(AppModelTest, SettingsArePublishedBeforeTheyAreWrittenAndSurviveARestart) {
  const auto settings = [](const AppModel& model) {
    return std::tuple(model.autoApply().value(), model.quickPasteEnabled().value(),
                      model.excludePasswords().value());
  };
  auto model = make();
  EXPECT_EQ(settings(*model), std::tuple(true, true, false));
  bool writtenFirst = true;
  const auto watch = model->quickPasteEnabled().observeChanges(
      [&](const bool&) { writtenFirst = !defaults.writes.empty(); });
  model->setQuickPasteEnabled(false);
  EXPECT_FALSE(writtenFirst);
  model->setAutoApply(false);
  for (int i = 0; i < 2; ++i) model->setExcludePasswords(true);
  EXPECT_EQ(defaults.writes, (Lines{"quickPasteEnabled=false", "autoApplyFromiPhone=false",
                                    "excludePasswords=true", "excludePasswords=true"}));
  model = make();
  EXPECT_EQ(settings(*model), std::tuple(false, false, true));
  EXPECT_TRUE(keys.registered.callbacks.empty());
}

TEST_F(AppModelTest, ACopyIsCapturedUnlessItIsAPasswordAndLoggedByItsLengthAlone) {
  copy("there before the start");
  const auto model = make();
  log.lines.clear();
  model->setExcludePasswords(true);
  copy(" Passw0rd!\n");
  model->setExcludePasswords(false);
  copy("Passw0rd!");
  copy("👨‍👩‍👧 e\u0301");
  EXPECT_EQ(log.lines, (Lines{"skipped password-like text (11 chars)",
                              "captured local clip (9 chars)", "captured local clip (3 chars)"}));
  ASSERT_EQ(model->store().clips().value().size(), 2u);
  const Clip& newest = *model->store().clips().value()[0];
  EXPECT_EQ(std::tuple(newest.source, newest.savedAt), std::tuple("manual", loop.now));
}

TEST_F(AppModelTest, TheHotkeyOpensThePaletteForTheApplicationInFront) {
  const auto model = make();
  ASSERT_EQ(keys.registered.callbacks.size(), 1u);
  const auto& key = keys.registered.callbacks.begin()->second;
  EXPECT_EQ(std::tuple(key.keyCode, key.modifiers), std::tuple(9u, 0x300u));
  EXPECT_EQ(key.id, (EventHotKeyID{0x42524C4F, 1}));
  model->store().add("from the phone", "action", 1e12);
  model->templateStore().setTemplates({{"t", "title", "[{clipboard}]", 0}});
  desktop.front = RunningApplication{"Editor", WindowId{5}};
  for (const char* section : {"clips", "templates"}) {
    surroundings.variables["BRIMLO_QP_SECTION"] = section;
    keys.press({0x42524C4F, 2});
    loop.drain();
    EXPECT_FALSE(panel.visible) << "another hotkey";
    keys.press({0, 1});
    EXPECT_FALSE(panel.visible) << "not within the event";
    loop.drain();
    EXPECT_TRUE(panel.visible);
    model->quickPaste().confirmItem(0);
    loop.advance(600ms);
  }
  EXPECT_EQ(board.string(), "[from the phone]");
  EXPECT_TRUE(log.has("paste (14 chars, src=action)") && log.has("paste (16 chars, src=manual)"));
  EXPECT_TRUE(log.has("hotkey pressed, target=Editor"));
  EXPECT_EQ(desktop.asked, (Lines{"activate Editor", "post", "activate Editor", "post"}));
  desktop.front.reset();
  keys.press({0, 1});
  loop.drain();
  EXPECT_TRUE(log.has("hotkey pressed, target=?"));
}

TEST_F(AppModelTest, TheHotkeyFollowsItsSettingHoweverLateTheAnswer) {
  const std::string granted = "hotkey ⇧⌘V register status=0 registered=true";
  const std::string refused = "hotkey ⇧⌘V register status=10 registered=false";
  const std::string unregistered = "hotkey ⇧⌘V unregistered";
  const std::string on = "quickPasteEnabled=true", off = "quickPasteEnabled=false";
  std::unique_ptr<AppModel> model;
  const auto turn = [&](bool enabled) {
    return [&model, enabled] { model->setQuickPasteEnabled(enabled); };
  };
  const struct {
    std::optional<HotKeys::Status> atOnce;
    std::function<void()> act;
    Lines expected;
  } steps[] = {
      {10, [&] { model = make(); }, {"hotkey", refused, "end hotkey"}},
      {0, turn(true), {"hotkey", granted, on}},
      {0, turn(true), {on}},
      {0, turn(false), {"end hotkey", unregistered, off}},
      {{}, turn(true), {"hotkey", on}},
      {{}, turn(true), {on}},
      {{}, [&] { keys.answer(10); }, {"end hotkey", refused}},
      {{}, turn(true), {"hotkey", on}},
      {{}, turn(false), {"end hotkey", unregistered, off}},
      {{}, turn(true), {"hotkey", on}},
      {{}, [&] { keys.answer(0); }, {granted}},
      {{}, turn(true), {on}},
  };
  record({&keys, &log});
  for (const auto& each : steps) {
    keys.status = each.atOnce;
    each.act();
    EXPECT_EQ(recorded(), each.expected) << "step " << &each - steps;
  }
}

TEST_F(AppModelTest, ThePaletteOfTheSignalIsCentredAndStaysUpUntilTheNextHotkey) {
  const auto model = make();
  log.lines.clear();
  desktop.signals.at(SIGUSR1)();
  EXPECT_EQ(log.lines, (Lines{"SIGUSR1 -> show palette (debug)",
                              "quick-paste palette presented (0 items) "
                              "frame={{390, 139.5}, {500, 497}} visible=true"}));
  panel.resign();
  EXPECT_TRUE(panel.visible);
  model->setQuickPasteEnabled(false);
  EXPECT_FALSE(panel.visible);
  model->setQuickPasteEnabled(true);
  keys.press({0, 1});
  loop.drain();
  panel.resign();
  EXPECT_FALSE(panel.visible);
}

TEST_F(AppModelTest, ATemplateIsCopiedWithItsPlaceholdersFilledInAndNotPasted) {
  const auto model = make();
  copy("on the clipboard");
  log.lines.clear();
  model->copyTemplate({"t", "title", "[{clipboard}]", 0});
  loop.advance(1s);
  EXPECT_EQ(board.string(), "[on the clipboard]");
  const Clip& newest = *model->store().clips().value()[0];
  EXPECT_EQ(std::tuple(newest.text, newest.source), std::tuple("[on the clipboard]", "manual"));
  EXPECT_TRUE(desktop.events.empty());
  EXPECT_EQ(log.lines, Lines{"copied template to pasteboard"}) << "not captured as a copy";
}

TEST_F(AppModelTest, AClipFromAPhoneIsPutOnThePasteboardUnlessTheSettingSaysNo) {
  const auto model = make();
  for (const std::string id : {"1", "2"}) {
    model->setAutoApply(id == "1");
    cloud.put(
        {{"Clip", id},
         {{"text", "text " + id}, {"source", "action"}, {"savedAt", Date{(loop.now + 1) / 1000}}}});
    background.run();
    loop.drain();
    EXPECT_EQ(board.string(), "text 1");
    loop.advance(30s);
  }
  EXPECT_EQ(model->store().clips().value().size(), 2u);
  EXPECT_FALSE(log.has("captured")) << "its own write";
}

TEST_F(AppModelTest, Sigusr2PastesTheNewestClipUnderItsOwnSource) {
  const auto model = make();
  desktop.signals.at(SIGUSR2)();
  EXPECT_FALSE(log.has("SIGUSR2")) << "without a clip";
  model->store().add("from the phone", "action", loop.now);
  desktop.signals.at(SIGUSR2)();
  EXPECT_TRUE(log.has("SIGUSR2 -> exercise paste path, AXIsProcessTrusted=true"));
  EXPECT_TRUE(log.has("paste (14 chars, src=action)"));
}

}  // namespace
}  // namespace brimlo
