#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "platform/key_codes.h"
#include "platform/window_id.h"

namespace brimlo {

/// A key pressed in a window of this program, repeats included.
struct KeyDownEvent {
  std::uint16_t keyCode = key_code::kOther;
  std::uint64_t modifierFlags = 0;  ///< of `modifier_flag`
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
