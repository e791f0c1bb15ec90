#include "app/app_model.h"

#include <gtest/gtest.h>

#include <csignal>

#include "support/fake_file_system.h"
#include "support/fakes.h"

namespace brimlo {
namespace {

using namespace std::chrono_literals;

class AppModelTest : public testing::Test {
 protected:
  std::unique_ptr<AppModel> make() {
    return std::make_unique<AppModel>(Services{.accessibility = desktop,
                                               .application = loop,
                                               .clock = loop,
                                               .files = files,
                                               .dataFolder = "/data",
                                               .keys = desktop,
                                               .strings = strings,
                                               .queue = loop,
                                               .pasteboard = pasteboard,
                                               .signals = desktop,
                                               .log = log,
                                               .timers = loop,
                                               .defaults = defaults,
                                               .notifications = desktop,
                                               .workspace = desktop});
  }

  void copy(const std::string& text) {
    pasteboard.change(text);
    loop.advance(500ms);
  }

  test::FakeRunLoop loop;
  test::FakeFileSystem files;
  test::FakePasteboard pasteboard;
  test::FakeLog log;
  test::FakeDefaults defaults;
  test::FakeDesktop desktop;
  test::FakeStrings strings;
};

TEST_F(AppModelTest, AFirstLaunchHasTheDefaultsAndWritesNothing) {
  const auto model = make();
  EXPECT_TRUE(model->autoApply().value());
  EXPECT_TRUE(model->quickPasteEnabled().value());
  EXPECT_FALSE(model->excludePasswords().value());
  EXPECT_EQ(model->syncStatus().value(), "sync.status.idle");
  EXPECT_FALSE(model->isSyncing().value());
  EXPECT_EQ(model->launchMs(), loop.now);
  EXPECT_TRUE(defaults.writes.empty());
  EXPECT_TRUE(log.lines.empty());
  EXPECT_EQ(files.writes, 0);
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
