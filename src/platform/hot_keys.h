#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "platform/key_codes.h"

namespace brimlo {

/// Tells hotkeys apart.
struct EventHotKeyID {
  std::uint32_t signature = 0;  ///< whose it is: four ASCII characters, the first one highest
  std::uint32_t id = 0;         ///< which of the owner's hotkeys

  bool operator==(const EventHotKeyID&) const = default;
};

/// A hotkey that was asked for or is registered; destroying it ends that.
class EventHotKey {
 public:
  virtual ~EventHotKey() = default;
};

/// An installed handler; destroying it removes it.
class EventHandler {
 public:
  virtual ~EventHandler() = default;
};

/// Keys that work whatever application is in front. Main thread.
class HotKeys {
 public:
  virtual ~HotKeys() = default;

  using Handler = std::function<void(const EventHotKeyID&)>;
  /// Has `handler` called for every press of every registered hotkey, until the token ends. A key
  /// held down is one press. Nobody else receives the press.
  [[nodiscard]] virtual std::unique_ptr<EventHandler> installEventHandler(Handler handler) = 0;

  /// What came of a registration: 0, or the session's own number for what is wrong.
  using Status = std::int32_t;
  /// Asks for a key for this program, whichever lock keys are on, to be kept when the keyboard's
  /// layout changes. Calls `answered` once: from within the call, or later from the run loop where
  /// the session asks the person or another process first. It fails where another program has the
  /// key. `keyCode`: of `key_code`. `modifiers`: of
  /// `hot_key_modifier`.
  ///
  /// The token is the request and, when that was granted, the registration. It is never null. When
  /// it ends before the answer, `answered` is not called. `answered` may end it.
  [[nodiscard]] virtual std::unique_ptr<EventHotKey> registerEventHotKey(
      std::uint32_t keyCode, std::uint32_t modifiers, EventHotKeyID id,
      std::function<void(Status)> answered) = 0;
};

}  // namespace brimlo
