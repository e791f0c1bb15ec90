#pragma once

#include <functional>

#include "base/published.h"

namespace brimlo {

/// File descriptors that the main run loop watches. Main thread.
class DescriptorWatches {
 public:
  virtual ~DescriptorWatches() = default;

  /// Calls `onReadable` from the run loop whenever `descriptor` can be read without waiting, until
  /// the subscription ends. The descriptor stays open as long.
  virtual Subscription whenReadable(int descriptor, std::function<void()> onReadable) = 0;
};

}  // namespace brimlo
