#pragma once

#include <functional>
#include <memory>

#include "base/weak_anchor.h"
#include "platform/hot_keys.h"
#include "platform/main_queue.h"
#include "platform/system_log.h"

namespace brimlo {

/// The program's one hotkey, ⇧⌘V. Main thread.
class HotKeyManager {
 public:
  /// The hotkey is not registered yet. The services outlive the manager, whose end gives the hotkey
  /// back.
  HotKeyManager(HotKeys& hotKeys, MainQueue& queue, SystemLog& log);

  /// Called from the main queue for each press; replaces the callback set before.
  void setOnPressed(std::function<void()> onPressed) { onPressed_ = std::move(onPressed); }

  /// Asks for the key. Does nothing when it is registered, or asked for and not answered yet. The
  /// log says what came of it; after a failure the next call tries again.
  void registerHotKey();

  /// Gives the key back, or takes the request back.
  void unregisterHotKey();

  bool isRegistered() const { return state_ == State::kRegistered; }

 private:
  enum class State { kUnregistered, kAsked, kRegistered };

  void registrationAnswered(HotKeys::Status status);
  void handleHotKeyEvent(const EventHotKeyID& pressed);

  HotKeys& hotKeys_;
  MainQueue& queue_;
  SystemLog& log_;
  std::function<void()> onPressed_;
  std::unique_ptr<EventHandler> eventHandler_;  // installed once, by the first registration
  std::unique_ptr<EventHotKey> hotKeyRef_;      // while asked for or registered
  State state_ = State::kUnregistered;
  WeakAnchor anchor_;
};

}  // namespace brimlo
