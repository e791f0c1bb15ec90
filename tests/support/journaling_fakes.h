#pragma once

#include <string>
#include <utility>
#include <vector>

#include "support/fake_cloud.h"
#include "support/fake_file_system.h"
#include "support/fake_panel.h"
#include "support/fakes.h"

namespace brimlo::test {

using Journal = std::vector<std::string>;

/// Each writes down what it is asked, in one journal for all of them, and does what a fake does.
struct JournalingFiles : FakeFileSystem {
  explicit JournalingFiles(Journal& to) : journal(to) {}
  ReadResult read(const std::string& path) const override {
    journal.push_back("read " + path.substr(path.rfind('/') + 1));
    return FakeFileSystem::read(path);
  }
  Journal& journal;
};
struct JournalingLoop : FakeRunLoop {
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
struct JournalingPasteboard : FakePasteboard {
  JournalingPasteboard(Journal& to, MainQueue& queue) : FakePasteboard(queue), journal(to) {}
  std::int64_t changeCount() const override {
    journal.push_back("change count");
    return FakePasteboard::changeCount();
  }
  Journal& journal;
};
struct JournalingDefaults : FakeDefaults {
  explicit JournalingDefaults(Journal& to) : journal(to) {}
  std::optional<bool> boolForKey(std::string_view key) const override {
    journal.push_back("default " + std::string(key));
    return FakeDefaults::boolForKey(key);
  }
  Journal& journal;
};
struct JournalingHotKeys : FakeHotKeys {
  explicit JournalingHotKeys(Journal& to) : journal(to) {}
  std::unique_ptr<EventHotKey> registerEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                                   EventHotKeyID id,
                                                   std::function<void(Status)> answered) override {
    struct Held : EventHotKey {
      Held(Journal& to, std::unique_ptr<EventHotKey> key) : log(to), real(std::move(key)) {}
      ~Held() override { log.push_back("end hotkey"); }
      Journal& log;
      std::unique_ptr<EventHotKey> real;
    };
    journal.push_back("hotkey");
    return std::make_unique<Held>(
        journal, FakeHotKeys::registerEventHotKey(keyCode, modifiers, id, std::move(answered)));
  }
  Journal& journal;
};
struct JournalingDesktop : FakeDesktop {
  explicit JournalingDesktop(Journal& to) : journal(to) {}
  std::unique_ptr<SignalSource> make(int signal, std::function<void()> block) override {
    journal.push_back("signal");
    return FakeDesktop::make(signal, std::move(block));
  }
  Journal& journal;
};
struct JournalingBackground : FakeBackground {
  explicit JournalingBackground(Journal& to) : journal(to) {}
  void async(std::function<void()> block) override {
    journal.push_back("background");
    FakeBackground::async(std::move(block));
  }
  Journal& journal;
};

}  // namespace brimlo::test
