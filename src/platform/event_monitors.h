#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "platform/window_id.h"

namespace brimlo {

/// A key pressed in a window of this program, repeats included.
struct KeyDownEvent {
  static constexpr std::uint64_t kShiftFlag = 0x20000;
  static constexpr std::uint64_t kControlFlag = 0x40000;
  static constexpr std::uint64_t kOptionFlag = 0x80000;
  static constexpr std::uint64_t kCommandFlag = 0x100000;
  static constexpr std::uint16_t kOtherKey = 0xFFFF;

  std::uint16_t keyCode = kOtherKey;  ///< a virtual key code; `kOtherKey` where none is known
  std::uint64_t modifierFlags = 0;
  /// What the key types with no modifier but Shift and the lock keys, UTF-8; may be empty.
  std::string charactersIgnoringModifiers;
};

/// A monitor; destroying it removes it.
class EventMonitor {
 public:
  virtual ~EventMonitor() = default;
};

/// Lets the program see events before they reach their windows, or beside them. Null is returned
/// for a monitor that the desktop does not have. A handler may remove any monitor, its own
/// included. Main thread.
class EventMonitors {
 public:
  virtual ~EventMonitors() = default;

  /// Shows `handler` every key pressed in a window of this program before the window sees it, in
  /// order with all that is typed. An input method that composes may keep keys to itself, except
  /// for the page keys. An event that `handler` answers with true goes no further.
  [[nodiscard]] virtual std::unique_ptr<EventMonitor> addLocalKeyDownMonitor(
      std::function<bool(const KeyDownEvent&)> handler) = 0;

  /// Tells `handler` of every mouse button pressed over another program's window or none.
  [[nodiscard]] virtual std::unique_ptr<EventMonitor> addGlobalMouseDownMonitor(
      std::function<void()> handler) = 0;

  /// Tells `handler` of every mouse button pressed over a window of this program, and which one.
  /// The event goes on.
  [[nodiscard]] virtual std::unique_ptr<EventMonitor> addLocalMouseDownMonitor(
      std::function<void(WindowId window)> handler) = 0;
};

}  // namespace brimlo
