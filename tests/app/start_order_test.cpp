#include <gtest/gtest.h>

#include "app/app_model.h"
#include "support/fake_cloud.h"
#include "support/fake_file_system.h"
#include "support/fake_panel.h"
#include "support/fakes.h"

namespace brimlo {
namespace {

using Journal = std::vector<std::string>;

/// Each writes down what it is asked, in one journal for all of them, and does what a fake does.
struct JournalingFiles : test::FakeFileSystem {
  explicit JournalingFiles(Journal& to) : journal(to) {}
  ReadResult read(const std::string& path) const override {
    journal.push_back("read " + path.substr(path.rfind('/') + 1));
    return FakeFileSystem::read(path);
  }
  Journal& journal;
};
struct JournalingLoop : test::FakeRunLoop {
  explicit JournalingLoop(Journal& to) : journal(to) {}
  void async(std::function<void()> block) override {
    journal.push_back("main queue");
    FakeRunLoop::async(std::move(block));
  }
  std::unique_ptr<RepeatingTimer> scheduleRepeating(std::chrono::milliseconds interval,
                                                    std::function<void()> tick) override {
    struct Timer : RepeatingTimer {
      Timer(Journal& to, std::string what, std::unique_ptr<RepeatingTimer> real)
          : journal(to), name(std::move(what)), timer(std::move(real)) {}
      ~Timer() override { journal.push_back("end " + name); }
      Journal& journal;
      std::string name;
      std::unique_ptr<RepeatingTimer> timer;
    };
    const std::string name = "timer " + std::to_string(interval.count());
    journal.push_back(name);
    return std::make_unique<Timer>(journal, name,
                                   FakeRunLoop::scheduleRepeating(interval, std::move(tick)));
  }
  void terminate() override {
    journal.push_back("terminate");
    FakeRunLoop::terminate();
  }
  Journal& journal;
};
struct JournalingPasteboard : test::FakePasteboard {
  explicit JournalingPasteboard(Journal& to) : journal(to) {}
  std::int64_t changeCount() const override {
    journal.push_back("change count");
    return FakePasteboard::changeCount();
  }
  Journal& journal;
};
struct JournalingDefaults : test::FakeDefaults {
  explicit JournalingDefaults(Journal& to) : journal(to) {}
  std::optional<bool> boolForKey(std::string_view key) const override {
    journal.push_back("default " + std::string(key));
    return FakeDefaults::boolForKey(key);
  }
  Journal& journal;
};
struct JournalingStrings : test::FakeStrings {
  explicit JournalingStrings(Journal& to) : journal(to) {}
  std::string text(const char* key) const override {
    journal.push_back(std::string("text ") + key);
    return key;
  }
  Journal& journal;
};
struct JournalingHotKeys : test::FakeHotKeys {
  explicit JournalingHotKeys(Journal& to) : journal(to) {}
  Registration registerEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                   EventHotKeyID id) override {
    struct Held : EventHotKey {
      explicit Held(Journal& to) : journal(to) {}
      ~Held() override { journal.push_back("end hotkey"); }
      Journal& journal;
    };
    journal.push_back("hotkey");
    FakeHotKeys::registerEventHotKey(keyCode, modifiers, id);
    return {0, std::make_unique<Held>(journal)};
  }
  Journal& journal;
};
struct JournalingDesktop : test::FakeDesktop {
  explicit JournalingDesktop(Journal& to) : journal(to) {}
  std::unique_ptr<SignalSource> make(int signal, std::function<void()> block) override {
    journal.push_back("signal");
    return FakeDesktop::make(signal, std::move(block));
  }
  Journal& journal;
};
struct JournalingBackground : test::FakeBackground {
  explicit JournalingBackground(Journal& to) : journal(to) {}
  void async(std::function<void()> block) override {
    journal.push_back("background");
    FakeBackground::async(std::move(block));
  }
  Journal& journal;
};

TEST(StartOrder, TheModelAsksThePlatformInItsExactOrderFromStartToQuit) {
  Journal journal;
  JournalingBackground background(journal);
  JournalingDefaults defaults(journal);
  JournalingDesktop desktop(journal);
  JournalingFiles files(journal);
  JournalingHotKeys hotKeys(journal);
  JournalingLoop loop(journal);
  JournalingPasteboard pasteboard(journal);
  JournalingStrings strings(journal);
  test::FakeCloud cloud;
  test::FakeEntitlements entitlements;
  test::FakeEventMonitors events;
  test::FakeLog log;
  test::FakeSurroundings surroundings;
  test::PanelRecord panel;
  test::WindowRecord window;
  const auto model = std::make_unique<AppModel>(
      Services{.accessibility = desktop,
               .application = loop,
               .background = background,
               .clock = loop,
               .cloud = cloud,
               .entitlements = entitlements,
               .environment = surroundings,
               .events = events,
               .files = files,
               .dataFolder = "/data",
               .hotKeys = hotKeys,
               .keys = desktop,
               .locale = "en_US",
               .makeOnboardingWindow =
                   [&](OnboardingViewState&) {
                     journal.push_back("onboarding window");
                     return std::make_unique<test::FakeWindow>(window);
                   },
               .makePalettePanel =
                   [&](QuickPasteViewState&) { return std::make_unique<test::FakePanel>(panel); },
               .strings = strings,
               .queue = loop,
               .pasteboard = pasteboard,
               .screens = surroundings,
               .signals = desktop,
               .log = log,
               .timers = loop,
               .defaults = defaults,
               .notifications = desktop,
               .workspace = desktop});
  EXPECT_EQ(journal,
            (Journal{"read clips.json", "read deletedClipIds.json", "read templates.json",
                     "change count", "text sync.status.idle", "default autoApplyFromiPhone",
                     "default quickPasteEnabled", "default excludePasswords", "timer 500", "hotkey",
                     "signal", "signal", "main queue", "timer 30000", "background"}));
  journal.clear();
  loop.drain();
  EXPECT_EQ(journal, (Journal{"default macOnboardingDone", "onboarding window", "timer 700"}));
  window.close();
  journal.clear();
  model->quit();
  EXPECT_EQ(journal, (Journal{"end timer 500", "end timer 30000", "end hotkey", "terminate"}));
  EXPECT_EQ(log.lines.back(), "hotkey ⇧⌘V unregistered");
}

}  // namespace
}  // namespace brimlo
