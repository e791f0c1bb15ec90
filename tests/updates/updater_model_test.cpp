#include "updates/updater_model.h"

#include <gtest/gtest.h>

#include "support/fake_panel.h"
#include "support/fakes.h"
#include "updates/version.h"

namespace brimlo {
namespace {

using namespace std::chrono_literals;

TEST(CompareVersions, PartByPartAndPreReleasesFirst) {
  // Each is newer than the one before it.
  const char* const ascending[] = {"",      "0.9",     "0.10",    "1.0a1",
                                   "1.0b2", "1.0-rc1", "1.0",     "1.0.0.1",
                                   "1.0.1", "1.0.2b",  "1.0.2",   "1.2",
                                   "1.10",  "2",       "2026.11", "99999999999999999999999"};
  for (std::size_t i = 0; i < std::size(ascending); ++i) {
    for (std::size_t j = 0; j < std::size(ascending); ++j) {
      EXPECT_EQ(compareVersions(ascending[i], ascending[j]), i <=> j)
          << ascending[i] << " and " << ascending[j];
    }
  }
  EXPECT_EQ(compareVersions("1.0", "1.0.0"), std::strong_ordering::equal);
  EXPECT_EQ(compareVersions("01.002", "1.2"), std::strong_ordering::equal);
}

class UpdaterModelTest : public testing::Test, public UpdateFeed, public UrlOpener {
 protected:
  void read(const std::string& address, std::function<void(FeedAnswer)> then) override {
    EXPECT_EQ(address, "https://updates.example/feed");
    ++readings;
    answer = std::move(then);
  }
  void open(const std::string& address) override { opened.push_back(address); }

  std::unique_ptr<UpdaterModel> make(const std::string& feed = "https://updates.example/feed") {
    return std::make_unique<UpdaterModel>(UpdaterModel::Services{
        .clock = loop,
        .defaults = defaults,
        .feed = *this,
        .log = log,
        .strings = strings,
        .timers = loop,
        .urls = *this,
        .makeWindow = [this](auto&) { return std::make_unique<test::FakeWindow>(window); },
        .settings = {.feed = feed, .checksAutomatically = true, .intervalSeconds = 86400},
        .version = "1.2"});
  }

  static FeedAnswer offering(std::vector<std::string> versions) {
    FeedAnswer feed;
    for (const std::string& each : versions) {
      feed.items.push_back({each, each + " shown", "notes of " + each, "https://page/" + each});
    }
    return feed;
  }

  struct Strings : test::FakeStrings {
    std::string text(const char* key) const override {
      return std::string(key) == "updates.available" ? "%1$@ is out, not %2$@" : key;
    }
  };

  test::FakeRunLoop loop;
  test::FakeDefaults defaults;
  test::FakeLog log;
  Strings strings;
  test::WindowRecord window;
  std::function<void(FeedAnswer)> answer;
  std::vector<std::string> opened;
  int readings = 0;
};

TEST_F(UpdaterModelTest, SaysWhatCameOfACheck) {
  const auto fault = [](FeedAnswer::Fault what) {
    return FeedAnswer{.fault = what, .detail = "why"};
  };
  const struct {
    FeedAnswer answer;
    const char* message;
    bool offers;
  } cases[] = {
      {offering({}), "updates.latest", false},
      {offering({"1.2.0"}), "updates.latest", false},
      {offering({"1.3", "1.10", "1.4b"}), "1.10 shown is out, not 1.2", true},
      {fault(FeedAnswer::Fault::kUnreachable), "updates.unreachable", false},
      {fault(FeedAnswer::Fault::kInsecure), "updates.insecure", false},
      {fault(FeedAnswer::Fault::kMalformed), "updates.malformed", false},
  };
  const auto model = make();
  const UpdatesContent& shown = model->state().content.value();
  for (const auto& each : cases) {
    SCOPED_TRACE(each.message);
    model->checkForUpdates();
    EXPECT_TRUE(window.visible && shown.busy);
    answer(each.answer);
    EXPECT_FALSE(shown.busy);
    EXPECT_EQ(shown.message, each.message);
    EXPECT_EQ(shown.notes, each.offers ? "notes of 1.10" : "");
    EXPECT_EQ(std::pair(shown.offersSkip, shown.offersPage), std::pair(each.offers, each.offers));
  }
  const std::string failed = "cannot read the update feed: why";
  EXPECT_EQ(log.lines,
            (std::vector<std::string>{"version 1.10 shown is out", failed, failed, failed}));
}

TEST_F(UpdaterModelTest, LooksOnceADayAndSpeaksUpOnlyForWhatIsNewAndWanted) {
  auto model = make();
  const struct {
    std::function<void()> act;
    std::chrono::hours later;  // in one step, as while the machine sleeps
    int readings;
    FeedAnswer answer;
    bool visible;
  } steps[] = {
      {[] {}, 1h, 1, {.fault = FeedAnswer::Fault::kUnreachable, .detail = "no network"}, false},
      {[&] { model = make(); }, 23h, 1, {}, false},  // a restart
      {[] {}, 1h, 2, offering({"1.3"}), true},
      {[&] { model->state().onSkip(); }, 24h, 3, offering({"1.3"}), false},
      {[] {}, 24h, 4, offering({"1.4"}), true},
      {[&] { model->state().onOpenPage(); }, 1h, 4, {}, false},
      // Skipped, but asked for.
      {[&] { model->checkForUpdates(); }, 0h, 5, offering({"1.3"}), true},
      {[&] { window.close(); }, 23h, 5, {}, false},
      {[&] { model->checkForUpdates(), window.close(); }, 0h, 6, offering({}), false},
  };
  for (const auto& each : steps) {
    SCOPED_TRACE(&each - steps);
    each.act();
    loop.now += static_cast<double>(std::chrono::milliseconds(each.later).count());
    loop.advance(1ms);
    ASSERT_EQ(readings, each.readings);
    if (const auto then = std::exchange(answer, nullptr)) then(each.answer);
    EXPECT_EQ(window.visible, each.visible);
    EXPECT_TRUE(!each.visible || model->state().content.value().offersSkip);
  }
  EXPECT_EQ(opened, std::vector<std::string>{"https://page/1.4"});
}

TEST_F(UpdaterModelTest, WithoutAFeedUpdatesComeWithThePackages) {
  const auto model = make("");
  EXPECT_EQ(loop.runningTimers(), 0U);
  model->checkForUpdates();
  EXPECT_EQ(model->state().content.value().message, "updates.packages");
  EXPECT_TRUE(window.visible && readings == 0);
}

}  // namespace
}  // namespace brimlo
