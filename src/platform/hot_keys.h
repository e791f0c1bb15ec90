#pragma once

#include <cstdint>
#include <functional>
#include <memory>

namespace brimlo {

/// Tells hotkeys apart.
struct EventHotKeyID {
  std::uint32_t signature = 0;  ///< whose it is: four ASCII characters, the first one highest
  std::uint32_t id = 0;         ///< which of theirs

  bool operator==(const EventHotKeyID&) const = default;
};

/// A registered hotkey; destroying it unregisters it.
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
  /// Modifiers of a hotkey, as `registerEventHotKey` takes them.
  static constexpr std::uint32_t kCommandKey = 0x100;
  static constexpr std::uint32_t kShiftKey = 0x200;

  virtual ~HotKeys() = default;

  using Handler = std::function<void(const EventHotKeyID&)>;
  /// Has `handler` called for every press of every registered hotkey, until the token ends. A key
  /// held down is one press. The press reaches nobody else.
  [[nodiscard]] virtual std::unique_ptr<EventHandler> installEventHandler(Handler handler) = 0;

  struct Registration {
    std::int32_t status;                  ///< 0, or the desktop's own number for what is wrong
    std::unique_ptr<EventHotKey> hotKey;  ///< null unless the status is 0
  };
  /// Takes a key for this program, whichever lock keys are on, and keeps it when the keyboard's
  /// layout changes. Fails where another program has it. `keyCode`: a virtual key code.
  [[nodiscard]] virtual Registration registerEventHotKey(std::uint32_t keyCode,
                                                         std::uint32_t modifiers,
                                                         EventHotKeyID id) = 0;
};

}  // namespace brimlo
