#pragma once

#include <functional>

namespace brimlo {

/// Blocks to run off the main thread, one after the other, in the order they were queued.
class BackgroundQueue {
 public:
  virtual ~BackgroundQueue() = default;

  /// Queues `block`, which shares nothing with the caller that either of them changes. Main thread.
  virtual void async(std::function<void()> block) = 0;
};

}  // namespace brimlo
