#pragma once

#include <algorithm>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/published.h"
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
#include "support/journal.h"

namespace brimlo::test {

/// Keeps the lines, without the prefix.
class FakeLog : public SystemLog, public Journaling {
 public:
  void write(std::string_view message) override {
    note(std::string(message));
    lines.emplace_back(message);
  }

  bool has(std::string_view part) const {
    return std::any_of(lines.begin(), lines.end(), [part](const std::string& line) {
      return line.find(part) != std::string::npos;
    });
  }

  std::vector<std::string> lines;
};

/// A token that says when it ends.
template <typename Token>
struct Ending : Token {
  explicit Ending(std::function<void()> onEnd) : registration(std::move(onEnd)) {}
  Subscription registration;
};

/// Callbacks under tokens: each is there until its token ends.
template <typename Token, typename Callback>
class Registry {
 public:
  std::unique_ptr<Token> add(Callback callback, std::function<void()> onEnd = nullptr) {
    callbacks[++last_] = std::move(callback);
    return std::make_unique<Ending<Token>>([this, key = last_, onEnd = std::move(onEnd)] {
      callbacks.erase(key);
      if (onEnd) onEnd();
    });
  }

  std::map<int, Callback> callbacks;

 private:
  int last_ = 0;
};

/// Time, timers and the main queue. Time passes only in `advance`; queued blocks run only there and
/// in `drain`.
class FakeRunLoop : public Clock,
                    public Timers,
                    public MainQueue,
                    public Application,
                    public Journaling {
 public:
  double nowMs() const override { return now; }

  void async(std::function<void()> block) override {
    note("main queue");
    queue_.push_back(std::move(block));
  }

  void asyncAfter(std::chrono::milliseconds delay, std::function<void()> block) override {
    delayed_.emplace(now + static_cast<double>(delay.count()), std::move(block));
  }

  std::unique_ptr<RepeatingTimer> scheduleRepeating(std::chrono::milliseconds interval,
                                                    std::function<void()> tick) override {
    const std::string name = "timer " + std::to_string(interval.count());
    note(name);
    const auto every = static_cast<double>(interval.count());
    return timers_.add({now + every, every, std::move(tick)},
                       [this, name] { note("end " + name); });
  }

  void terminate() override { note("terminate"); }

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
    for (const double end = now + static_cast<double>(by.count()); now < end;) {
      ++now;
      for (const auto& [key, timer] : std::map(timers_.callbacks)) {
        if (now < timer.due || !timers_.callbacks.contains(key)) continue;
        timers_.callbacks[key].due += timer.interval;
        timer.tick();
      }
      while (!delayed_.empty() && delayed_.begin()->first <= now) {
        queue_.push_back(delayed_.extract(delayed_.begin()).mapped());
      }
      drain();
    }
  }

  std::size_t runningTimers() const { return timers_.callbacks.size(); }

  double now = 1'700'000'000'000.25;

 private:
  struct Timer {
    double due = 0;
    double interval = 0;
    std::function<void()> tick;
  };
  Registry<RepeatingTimer, Timer> timers_;
  std::deque<std::function<void()>> queue_;
  std::multimap<double, std::function<void()>> delayed_;
};

/// A pasteboard on which the test acts for the other clients.
class FakePasteboard : public Pasteboard, public Journaling {
 public:
  explicit FakePasteboard(MainQueue& queue) : queue_(queue) {}

  std::int64_t changeCount() const override {
    note("change count");
    return count_;
  }
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

class FakeDefaults : public UserDefaults, public Journaling {
 public:
  std::optional<bool> boolForKey(std::string_view key) const override {
    note("default " + std::string(key));
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
                    public Journaling,
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
    note("signal");
    signals[signal] = std::move(block);
    return std::make_unique<Ending<SignalSource>>([this, signal] { signals.erase(signal); });
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
