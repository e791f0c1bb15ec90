#pragma once

#include "platform/application.h"
#include "platform/descriptor_watches.h"
#include "platform/main_queue.h"
#include "platform/timers.h"

namespace brimlo {

/// Qt's event loop, run by the `QCoreApplication` on the main thread.
class QtRunLoop : public Application, public MainQueue, public Timers, public DescriptorWatches {
 public:
  void terminate() override;
  void async(std::function<void()> block) override;
  void asyncAfter(std::chrono::milliseconds delay, std::function<void()> block) override;
  std::unique_ptr<RepeatingTimer> scheduleRepeating(std::chrono::milliseconds interval,
                                                    std::function<void()> tick) override;
  Subscription whenReadable(int descriptor, std::function<void()> onReadable) override;
};

}  // namespace brimlo
