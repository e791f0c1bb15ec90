#pragma once

#include <chrono>
#include <functional>

namespace brimlo {

/// Blocks to run on the main thread, in the order they were queued.
class MainQueue {
 public:
  virtual ~MainQueue() = default;

  /// Queues `block`; it never runs before the caller returns to the run loop. Any thread.
  virtual void async(std::function<void()> block) = 0;

  /// Queues `block` once `delay` has passed. Main thread.
  virtual void asyncAfter(std::chrono::milliseconds delay, std::function<void()> block) = 0;
};

}  // namespace brimlo
