#include "app/app_model.h"

#include <gtest/gtest.h>

#include <csignal>

#include "support/fake_session.h"
#include "support/journaling_fakes.h"

namespace brimlo {
namespace {

using namespace std::chrono_literals;

class AppModelTest : public testing::Test {
 protected:
  AppModelTest() { defaults.values["macOnboardingDone"] = true; }

  /// Starts a model; `started` has the lines of its start.
  std::unique_ptr<AppModel> make() {
    log.lines.clear();
    auto model = std::make_unique<AppModel>(Services{
        .session = session,
        .application = loop,
        .background = background,
        .clock = loop,
        .cloud = cloud,
        .entitlements = entitlements,
        .environment = surroundings,
        .files = files,
        .dataFolder = "/data",
        .locale = "en_US",
        .makeMenuPreview =
            [this](MenuContentModel&) { return std::make_unique<test::FakeWindow>(preview); },
        .makeOnboardingWindow =
            [this](OnboardingViewState&) {
              journal.push_back("onboarding window");
              return std::make_unique<test::FakeWindow>(window);
            },
        .makePalettePanel =
            [this](QuickPasteViewState&) { return std::make_unique<test::FakePanel>(panel); },
        .strings = strings,
        .queue = loop,
        .signals = desktop,
        .log = log,
        .timers = loop,
        .defaults = defaults,
        .notifications = desktop});
    started = std::exchange(log.lines, {});
    return model;
  }

  void copy(const std::string& text) {
    pasteboard.change(text);
    loop.advance(500ms);
  }

  test::Journal journal;  // what the platform was asked
  test::JournalingLoop loop{journal};
  test::JournalingBackground background{journal};
  test::FakeCloud cloud;
  test::FakeEntitlements entitlements;
  test::JournalingFiles files{journal};
  test::JournalingPasteboard pasteboard{journal, loop};
  test::FakeLog log;
  std::vector<std::string> started;
  test::JournalingDefaults defaults{journal};
  test::JournalingDesktop desktop{journal};
  test::FakeStrings strings;
  test::FakeSurroundings surroundings;
  test::FakeEventMonitors events;
  test::JournalingHotKeys hotKeys{journal};
  test::FakeSession session{{desktop, events, hotKeys, pasteboard, surroundings}};
  test::PanelRecord panel;
  test::WindowRecord window;
  test::WindowRecord preview{.frame = {{0, 0}, {320, 540}}};
};

TEST_F(AppModelTest, AFirstLaunchHasTheDefaultsAndWritesNothing) {
  const auto model = make();
  EXPECT_TRUE(model->autoApply().value());
  EXPECT_TRUE(model->quickPasteEnabled().value());
  EXPECT_FALSE(model->excludePasswords().value());
  EXPECT_EQ(model->syncStatus().value(), "sync.status.idle");
  EXPECT_TRUE(model->isSyncing().value());
  EXPECT_EQ(model->launchMs(), loop.now);
  EXPECT_TRUE(defaults.writes.empty());
  EXPECT_TRUE(log.lines.empty());
  EXPECT_EQ(files.writes, 0);
}

TEST_F(AppModelTest, ThePlatformIsAskedInItsExactOrderFromStartToQuit) {
  defaults.values.clear();
  const auto model = make();
  EXPECT_EQ(journal, (test::Journal{
                         "read clips.json", "read deletedClipIds.json", "read templates.json",
                         "change count", "default autoApplyFromiPhone", "default quickPasteEnabled",
                         "default excludePasswords", "timer 500", "hotkey", "signal", "signal",
                         "signal", "main queue", "timer 30000", "background"}));
  journal.clear();
  loop.drain();
  EXPECT_EQ(journal,
            (test::Journal{"default macOnboardingDone", "onboarding window", "timer 700"}));
  window.close();
  journal.clear();
  model->quit();
  EXPECT_EQ(journal,
            (test::Journal{"end timer 500", "end timer 30000", "end hotkey", "terminate"}));
  EXPECT_EQ(log.lines.back(), "hotkey ⇧⌘V unregistered");
}

TEST_F(AppModelTest, SettingsArePublishedBeforeTheyAreWrittenAndSurviveARestart) {
  {
    const auto model = make();
    bool writtenFirst = true;
    const auto watch = model->quickPasteEnabled().observeChanges(
        [&](const bool&) { writtenFirst = !defaults.writes.empty(); });
    model->setQuickPasteEnabled(false);
    EXPECT_FALSE(writtenFirst);
    model->setAutoApply(false);
    model->setExcludePasswords(true);
    model->setExcludePasswords(true);
  }
  EXPECT_EQ(defaults.writes,
            (std::vector<std::string>{"quickPasteEnabled=false", "autoApplyFromiPhone=false",
                                      "excludePasswords=true", "excludePasswords=true"}));
  const auto model = make();
  EXPECT_FALSE(model->autoApply().value());
  EXPECT_FALSE(model->quickPasteEnabled().value());
  EXPECT_TRUE(model->excludePasswords().value());
}

TEST_F(AppModelTest, ACopyIsCapturedLoggedAndKeptOverARestart) {
  copy("there before the start");
  auto model = make();
  copy("Passw0rd!");
  copy("👨‍👩‍👧 e\u0301");
  copy("👨‍👩‍👧 \u00e9");
  EXPECT_EQ(log.lines, (std::vector<std::string>{"captured local clip (9 chars)",
                                                 "captured local clip (3 chars)",
                                                 "captured local clip (3 chars)"}));
  ASSERT_EQ(model->store().clips().value().size(), 2u);
  const Clip newest = *model->store().clips().value()[0];
  EXPECT_EQ(newest.source, "manual");
  EXPECT_EQ(newest.savedAt, loop.now - 501);  // the poll before the last one
  model = make();
  EXPECT_EQ(*model->store().clips().value()[0], newest);
}

TEST_F(AppModelTest, PasswordLikeTextIsKeptOutAndLoggedByItsLengthAlone) {
  defaults.values["excludePasswords"] = true;
  const auto model = make();
  copy(" Passw0rd!\n");
  copy("a sentence");
  EXPECT_EQ(log.lines, (std::vector<std::string>{"skipped password-like text (11 chars)",
                                                 "captured local clip (10 chars)"}));
  EXPECT_EQ(model->store().clips().value().size(), 1u);
}

TEST_F(AppModelTest, Sigusr2PastesTheNewestClipUnderItsOwnSource) {
  const auto model = make();
  desktop.signals.at(SIGUSR2)();
  EXPECT_TRUE(log.lines.empty());
  model->store().add("from the phone", "action", loop.now);
  desktop.signals.at(SIGUSR2)();
  loop.advance(600ms);
  EXPECT_EQ(log.lines,
            (std::vector<std::string>{"SIGUSR2 -> exercise paste path, AXIsProcessTrusted=true",
                                      "paste (14 chars, src=action)",
                                      "AX trusted -> auto-paste to ?", "posted Cmd-V"}));
  EXPECT_EQ(pasteboard.string(), "from the phone");
}

TEST_F(AppModelTest, TheHotkeyOpensThePaletteForTheApplicationInFront) {
  const auto model = make();
  EXPECT_EQ(started, std::vector<std::string>{"hotkey ⇧⌘V register status=0 registered=true"});
  ASSERT_EQ(hotKeys.registered.callbacks.size(), 1u);
  const auto& key = hotKeys.registered.callbacks.begin()->second;
  EXPECT_EQ(std::tuple(key.keyCode, key.modifiers), std::tuple(9u, 0x300u));
  EXPECT_EQ(key.id, (EventHotKeyID{0x42524C4F, 1}));
  model->store().add("from the phone", "action", 1e12);
  model->templateStore().setTemplates({{"t", "title", "[{clipboard}]", 0}});
  copy("on the clipboard");
  desktop.front = RunningApplication{"Editor", WindowId{5}};
  const std::int64_t row = 1;
  struct Case {
    const char* section;
    std::vector<std::string> lines;
  };
  const Case cases[] = {{"clips", {"paste (14 chars, src=action)"}},
                        {"templates", {"paste (16 chars, src=manual)"}}};
  for (const auto& [section, lines] : cases) {
    surroundings.variables["BRIMLO_QP_SECTION"] = section;
    log.lines.clear();
    desktop.asked.clear();
    hotKeys.press({0x42524C4F, 2});
    hotKeys.press({0, 1});
    EXPECT_FALSE(panel.visible) << "not within the event";
    loop.drain();
    EXPECT_EQ(log.lines.front(), "hotkey pressed, target=Editor");
    EXPECT_TRUE(panel.visible);
    model->quickPaste().confirmItem(section == std::string("clips") ? row : 0);
    loop.advance(600ms);
    EXPECT_TRUE(log.has(lines[0])) << testing::PrintToString(log.lines);
    EXPECT_EQ(desktop.asked, (std::vector<std::string>{"activate Editor", "post"}));
    pasteboard.take();
  }
  EXPECT_EQ(pasteboard.string(), "[from the phone]");
  desktop.front.reset();
  hotKeys.press({0, 1});
  loop.drain();
  EXPECT_TRUE(log.has("hotkey pressed, target=?"));
}

TEST_F(AppModelTest, TheHotkeyFollowsItsSetting) {
  hotKeys.status = 10;
  const auto model = make();
  EXPECT_EQ(started, std::vector<std::string>{"hotkey ⇧⌘V register status=10 registered=false"});
  hotKeys.status = 0;
  model->setQuickPasteEnabled(true);
  model->setQuickPasteEnabled(true);
  desktop.signals.at(SIGUSR1)();
  EXPECT_TRUE(panel.visible);
  model->setQuickPasteEnabled(false);
  EXPECT_FALSE(panel.visible);
  EXPECT_TRUE(hotKeys.registered.callbacks.empty());
  EXPECT_EQ(hotKeys.handlers.callbacks.size(), 1u);
  EXPECT_EQ(log.lines,
            (std::vector<std::string>{
                "hotkey ⇧⌘V register status=0 registered=true", "quickPasteEnabled=true",
                "quickPasteEnabled=true", "SIGUSR1 -> show palette (debug)",
                "quick-paste palette presented (0 items) frame={{390, 139.5}, {500, 497}} "
                "visible=true",
                "hotkey ⇧⌘V unregistered", "quickPasteEnabled=false"}));
  make();
  EXPECT_TRUE(started.empty());
}

TEST_F(AppModelTest, ThePaletteOfTheSignalStaysUpUntilTheNextHotkey) {
  const auto model = make();
  desktop.signals.at(SIGUSR1)();
  panel.resign();
  EXPECT_TRUE(panel.visible);
  hotKeys.press({0, 1});
  loop.drain();
  panel.resign();
  EXPECT_FALSE(panel.visible);
}

TEST_F(AppModelTest, TheOnboardingIsShownOnceTheModelIsThereUnlessItWasSeen) {
  defaults.values.clear();
  auto model = make();
  EXPECT_FALSE(window.visible);
  loop.drain();
  EXPECT_TRUE(window.visible);
  copy("onboarding.practice.sample");
  EXPECT_TRUE(model->onboarding().state().practiceCopied.value());
  window.close();
  model = make();
  loop.drain();
  EXPECT_FALSE(window.visible);
  model->onboarding().present();
  EXPECT_TRUE(window.visible);
}

TEST_F(AppModelTest, ATemplateIsCopiedWithItsPlaceholdersFilledInAndNotPasted) {
  const auto model = make();
  copy("on the clipboard");
  log.lines.clear();
  model->copyTemplate({"t", "title", "[{clipboard}]", 0});
  loop.advance(1s);
  EXPECT_EQ(pasteboard.string(), "[on the clipboard]");
  const Clip& newest = *model->store().clips().value()[0];
  EXPECT_EQ(newest.text, "[on the clipboard]");
  EXPECT_EQ(newest.source, "manual");
  EXPECT_TRUE(desktop.events.empty());
  EXPECT_EQ(log.lines.front(), "copied template to pasteboard");
  EXPECT_FALSE(log.has("captured"));
}

TEST_F(AppModelTest, ASyncRunStartsAtOnceAndEveryHalfMinute) {
  const auto model = make();
  const auto runs = [&] {
    background.run();
    loop.drain();
    return std::count(cloud.asked.begin(), cloud.asked.end(), "account");
  };
  EXPECT_EQ(runs(), 1);
  loop.advance(29s);
  EXPECT_EQ(runs(), 1);
  loop.advance(1s);
  EXPECT_EQ(runs(), 2);
}

TEST_F(AppModelTest, AClipFromAPhoneIsPutOnThePasteboardUnlessTheSettingSaysNo) {
  const auto model = make();
  const auto send = [&](const std::string& id) {
    cloud.put(
        {{"Clip", id},
         {{"text", "text " + id}, {"source", "action"}, {"savedAt", Date{(loop.now + 1) / 1000}}}});
    loop.advance(30s);
    background.run();
    loop.drain();
  };
  send("1");
  EXPECT_EQ(pasteboard.string(), "text 1");
  EXPECT_EQ(model->syncStatus().value(), "sync.status.applied_iphone");
  model->setAutoApply(false);
  send("2");
  EXPECT_EQ(pasteboard.string(), "text 1");
  EXPECT_EQ(model->store().clips().value().size(), 2u);
  EXPECT_FALSE(log.has("captured")) << "its own write";
}

TEST_F(AppModelTest, QuittingStopsTheWatchSavesWhatIsLeftAndEndsTheProcess) {
  const auto model = make();
  files.diskFull = true;
  copy("a");
  files.diskFull = false;
  model->quit();
  EXPECT_TRUE(loop.terminated);
  EXPECT_EQ(loop.runningTimers(), 0u);
  copy("b");
  EXPECT_EQ(make()->store().clips().value().size(), 1u);
}

}  // namespace
}  // namespace brimlo
