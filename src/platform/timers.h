#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace brimlo {

/// A running timer; destroying it invalidates it, after which it never ticks again.
class RepeatingTimer {
 public:
  virtual ~RepeatingTimer() = default;
};

/// Timers of the main run loop. Main thread.
class Timers {
 public:
  virtual ~Timers() = default;

  /// Calls `tick` on the main thread every `interval`, the first time one interval from now,
  /// menus and dialogs open or not. A tick that comes late is not made up for.
  [[nodiscard]] virtual std::unique_ptr<RepeatingTimer> scheduleRepeating(
      std::chrono::milliseconds interval, std::function<void()> tick) = 0;
};

}  // namespace brimlo
