#pragma once

#include <algorithm>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/accessibility.h"
#include "platform/application.h"
#include "platform/clock.h"
#include "platform/key_events.h"
#include "platform/localized_strings.h"
#include "platform/main_queue.h"
#include "platform/pasteboard.h"
#include "platform/signal_sources.h"
#include "platform/system_log.h"
#include "platform/timers.h"
#include "platform/user_defaults.h"
#include "platform/user_notifications.h"
#include "platform/workspace.h"

namespace brimlo::test {

/// Keeps the lines, without the prefix.
class FakeLog : public SystemLog {
 public:
  void write(std::string_view message) override { lines.emplace_back(message); }

  bool has(std::string_view part) const {
    return std::any_of(lines.begin(), lines.end(), [part](const std::string& line) {
      return line.find(part) != std::string::npos;
    });
  }

  std::vector<std::string> lines;
};

/// Time, timers and the main queue. Time passes only in `advance`; queued blocks run only there and
/// in `drain`.
class FakeRunLoop : public Clock, public Timers, public MainQueue, public Application {
 public:
  double nowMs() const override { return now; }

  void async(std::function<void()> block) override { queue_.push_back(std::move(block)); }

  void asyncAfter(std::chrono::milliseconds delay, std::function<void()> block) override {
    delayed_.emplace_back(now + static_cast<double>(delay.count()), std::move(block));
  }

  std::unique_ptr<RepeatingTimer> scheduleRepeating(std::chrono::milliseconds interval,
                                                    std::function<void()> tick) override {
    auto entry = std::make_shared<Entry>(Entry{interval, std::move(tick), now});
    timers_.push_back(entry);
    return std::make_unique<Token>(std::move(entry));
  }

  void terminate() override { terminated = true; }

  /// Runs what is queued, and what is queued meanwhile.
  void drain() {
    while (!queue_.empty()) {
      const auto block = std::move(queue_.front());
      queue_.pop_front();
      block();
    }
  }

  /// Lets time pass, with every tick that falls due.
  void advance(std::chrono::milliseconds by) {
    for (const double end = now + static_cast<double>(by.count()); now < end; ++now) {
      std::erase_if(timers_, [](const auto& timer) { return timer.expired(); });
      for (const auto& timer : std::vector(timers_)) {
        const auto entry = timer.lock();
        const double due = entry ? entry->since + static_cast<double>(entry->interval.count()) : 0;
        if (!entry || now + 1 < due) continue;
        entry->since = due;
        entry->tick();
      }
      const auto late = std::stable_partition(delayed_.begin(), delayed_.end(),
                                              [&](const auto& b) { return b.first > now + 1; });
      std::vector due(std::make_move_iterator(late), std::make_move_iterator(delayed_.end()));
      delayed_.erase(late, delayed_.end());
      for (auto& [time, block] : due) queue_.push_back(std::move(block));
      drain();
    }
  }

  std::size_t runningTimers() const {
    return static_cast<std::size_t>(std::count_if(
        timers_.begin(), timers_.end(), [](const auto& timer) { return !timer.expired(); }));
  }

  double now = 1'700'000'000'000.25;
  bool terminated = false;

 private:
  struct Entry {
    std::chrono::milliseconds interval;
    std::function<void()> tick;
    double since;
  };
  class Token : public RepeatingTimer {
   public:
    explicit Token(std::shared_ptr<Entry> entry) : entry_(std::move(entry)) {}

   private:
    std::shared_ptr<Entry> entry_;
  };
  std::vector<std::weak_ptr<Entry>> timers_;
  std::deque<std::function<void()>> queue_;
  std::vector<std::pair<double, std::function<void()>>> delayed_;
};

/// A pasteboard on which the test acts for the other clients.
class FakePasteboard : public Pasteboard {
 public:
  explicit FakePasteboard(MainQueue& queue) : queue_(queue) {}

  std::int64_t changeCount() const override { return count_; }
  std::optional<std::string> string() const override {
    ++stringReads;
    return text_;
  }
  void clearContents() override { change(std::nullopt, true); }
  void setString(std::string text) override {
    if (!cleared_) clearContents();
    text_ = std::move(text);
    cleared_ = false;
  }
  void whenTaken(std::function<void()> then) override {
    onTaken_ = std::move(then);
    queue_.asyncAfter(std::chrono::milliseconds(500), [this, waiting = ++waits_] {
      if (waiting == waits_) take();
    });
  }

  /// Another client takes the text.
  void take() {
    if (const auto then = std::exchange(onTaken_, nullptr)) then();
  }

  /// Another client copies a text; or, where that is none, an image or a secret, or clears it.
  void change(std::optional<std::string> text, bool cleared = false) {
    ++count_;
    text_ = std::move(text);
    cleared_ = cleared;
  }

  mutable int stringReads = 0;

 private:
  MainQueue& queue_;
  std::int64_t count_ = 7;
  std::optional<std::string> text_;
  bool cleared_ = false;
  std::function<void()> onTaken_;
  int waits_ = 0;
};

class FakeDefaults : public UserDefaults {
 public:
  std::optional<bool> boolForKey(std::string_view key) const override {
    const auto found = values.find(std::string(key));
    return found == values.end() ? std::nullopt : std::optional(found->second);
  }
  std::optional<std::string> stringForKey(std::string_view key) const override {
    const auto found = texts.find(std::string(key));
    return found == texts.end() ? std::nullopt : std::optional(found->second);
  }
  void setString(std::string_view key, const std::string& value) override {
    texts[std::string(key)] = value;
  }
  void setBool(std::string_view key, bool value) override {
    values[std::string(key)] = value;
    writes.push_back(std::string(key) + (value ? "=true" : "=false"));
  }

  std::map<std::string, bool> values;
  std::map<std::string, std::string> texts;
  std::vector<std::string> writes;
};

/// Tables without entries: every key shows as itself.
class FakeStrings : public LocalizedStrings {
 public:
  std::string text(const char* key) const override { return key; }
  std::string textWithCount(const char* key, std::size_t count) const override {
    return std::string(key) + " " + std::to_string(count);
  }
};

/// A desktop with applications, keys and notifications, which records what is asked of it.
class FakeDesktop : public Accessibility,
                    public KeyEventPoster,
                    public SignalSources,
                    public UserNotifications,
                    public Workspace {
 public:
  bool isProcessTrusted() const override { return trusted; }
  void promptForTrust() override { asked.push_back("prompt"); }

  std::optional<RunningApplication> frontmostApplication() override { return front; }
  Activation activate(const RunningApplication& application) override {
    asked.push_back("activate " + application.bundleIdentifier);
    return gone ? Activation::kGone : Activation::kAsked;
  }

  void post(const KeyEvent& down, const KeyEvent& up, std::function<void(Result)> then) override {
    events.push_back(down);
    events.push_back(up);
    asked.push_back("post");
    then(postResult);
  }

  void deliver(const std::string& title, const std::string& body) override {
    asked.push_back("notify " + title + ", " + body);
  }

  std::unique_ptr<SignalSource> make(int signal, std::function<void()> block) override {
    struct Source : SignalSource {
      Source(FakeDesktop& of, int number) : desktop(of), signal(number) {}
      ~Source() override { desktop.signals.erase(signal); }
      FakeDesktop& desktop;
      int signal;
    };
    signals[signal] = std::move(block);
    return std::make_unique<Source>(*this, signal);
  }

  bool trusted = true;
  bool gone = false;
  Result postResult = Result::kPosted;
  std::optional<RunningApplication> front;
  std::vector<std::string> asked;
  std::vector<KeyEvent> events;
  std::map<int, std::function<void()>> signals;
};

}  // namespace brimlo::test
