#pragma once

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/environment.h"
#include "platform/event_monitors.h"
#include "platform/hot_keys.h"
#include "platform/keyable_panel.h"
#include "platform/screens.h"
#include "platform/titled_window.h"
#include "support/fakes.h"

namespace brimlo::test {

/// Environment variables and screens that the test sets.
class FakeSurroundings : public Environment, public Screens {
 public:
  std::optional<std::string> value(const char* name) const override {
    const auto found = variables.find(name);
    return found == variables.end() ? std::nullopt : std::optional(found->second);
  }

  std::vector<Screen> screens() const override { return all; }
  std::optional<Screen> mainScreen() const override { return main; }
  std::optional<Point> pointerLocation() const override { return pointer; }
  Subscription observeChanges(std::function<void()> onChange) override {
    return changes.observeChanges([onChange = std::move(onChange)](int) { onChange(); });
  }

  std::map<std::string, std::string> variables;
  std::vector<Screen> all{{{{0, 0}, {1280, 800}}, {{0, 0}, {1280, 776}}}};
  std::optional<Screen> main = all[0];
  std::optional<Point> pointer = Point{640, 400};
  Published<int> changes{0};
};

/// Keys and clicks come from the test.
class FakeEventMonitors : public EventMonitors {
 public:
  std::unique_ptr<EventMonitor> addLocalKeyDownMonitor(
      std::function<bool(const KeyDownEvent&)> handler) override {
    return keys.add(std::move(handler));
  }
  std::unique_ptr<EventMonitor> addGlobalMouseDownMonitor(std::function<void()> handler) override {
    return globalClicks.add(std::move(handler));
  }
  std::unique_ptr<EventMonitor> addLocalMouseDownMonitor(
      std::function<void(WindowId)> handler) override {
    return localClicks.add(std::move(handler));
  }

  /// Presses a key; says whether it was consumed.
  bool press(const KeyDownEvent& event) {
    const auto monitors = keys.callbacks;
    return std::any_of(monitors.begin(), monitors.end(),
                       [&](const auto& monitor) { return monitor.second(event); });
  }
  void clickElsewhere() {
    for (const auto& [key, handler] : std::map(globalClicks.callbacks)) handler();
  }
  void click(WindowId window) {
    for (const auto& [key, handler] : std::map(localClicks.callbacks)) handler(window);
  }

  Registry<EventMonitor, std::function<bool(const KeyDownEvent&)>> keys;
  Registry<EventMonitor, std::function<void()>> globalClicks;
  Registry<EventMonitor, std::function<void(WindowId)>> localClicks;
};

class FakeHotKeys : public HotKeys, public Journaling {
 public:
  std::unique_ptr<EventHandler> installEventHandler(Handler handler) override {
    return handlers.add(std::move(handler));
  }
  std::unique_ptr<EventHotKey> registerEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                                   EventHotKeyID id,
                                                   std::function<void(Status)> answered) override {
    note("hotkey");
    auto request = registered.add({keyCode, modifiers, id, std::move(answered)},
                                  [this] { note("end hotkey"); });
    if (status) answer(*status);
    return request;
  }

  /// Answers every request that waits.
  void answer(Status given) {
    for (const auto& [key, request] : std::map(registered.callbacks)) {
      const auto waiting = registered.callbacks.find(key);
      if (waiting == registered.callbacks.end()) continue;
      if (const auto answered = std::exchange(waiting->second.answered, nullptr)) answered(given);
    }
  }

  void press(EventHotKeyID id) {
    for (const auto& [key, handler] : std::map(handlers.callbacks)) handler(id);
  }

  struct Key {
    std::uint32_t keyCode;
    std::uint32_t modifiers;
    EventHotKeyID id;
    std::function<void(Status)> answered;  // null once it was
  };
  Registry<EventHandler, Handler> handlers;
  Registry<EventHotKey, Key> registered;
  std::optional<Status> status = 0;  // what a request is answered with at once
};

/// A window on no screen, which the test asks and changes through what outlives it.
struct WindowRecord {
  Size fitting{500, 497};
  Rect frame{{0, 0}, {480, 560}};
  TitledWindow::Level level = TitledWindow::Level::kNormal;
  bool tellsFrame = true;
  bool visible = false;
  bool composing = false;
  int made = 0;
  int prepared = 0;
  std::function<void()> resign = {};
  std::function<void()> refit = {};
  std::function<void()> willClose = {};

  /// The person closes it.
  void close() {
    visible = false;
    willClose();
  }
};

/// A panel or a titled window.
class FakeWindow : public KeyablePanel, public TitledWindow {
 public:
  explicit FakeWindow(WindowRecord& record) : record_(record) { ++record_.made; }

  void prepare() override { ++record_.prepared; }
  Size fittingSize() const override { return record_.fitting; }
  void setOnFittingSizeChange(std::function<void()> onChange) override {
    record_.refit = std::move(onChange);
  }
  void setContentSize(Size size) override { record_.frame.size = size; }
  Size contentSize() const override { return record_.frame.size; }
  std::optional<Rect> frame() const override {
    return record_.tellsFrame ? std::optional(record_.frame) : std::nullopt;
  }
  void setFrameOrigin(Point origin) override { record_.frame.origin = origin; }
  void center() override { record_.frame.origin = {5, 6}; }
  void setLevel(Level level) override { record_.level = level; }
  void makeKeyAndOrderFront() override { record_.visible = true; }
  void orderOut() override { record_.visible = false; }
  bool isVisible() const override { return record_.visible; }
  bool isComposing() const override { return record_.composing; }
  WindowId windowId() const override { return kId; }
  void setOnResignKey(std::function<void()> onResignKey) override {
    record_.resign = std::move(onResignKey);
  }
  void setOnWillClose(std::function<void()> onWillClose) override {
    record_.willClose = std::move(onWillClose);
  }

  static constexpr WindowId kId{42};

 private:
  WindowRecord& record_;
};

}  // namespace brimlo::test
