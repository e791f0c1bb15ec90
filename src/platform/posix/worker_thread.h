#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

#include "platform/background_queue.h"

namespace brimlo {

/// One thread that runs what is queued. Signals are left to the main thread.
class WorkerThread : public BackgroundQueue {
 public:
  WorkerThread();
  /// Waits for the block that runs; drops those that wait.
  ~WorkerThread() override;

  void async(std::function<void()> block) override;

  enum class Ending { kDone, kHanging };
  /// Drops the blocks that wait, and gives the one that runs this long to come to an end.
  Ending finish(std::chrono::milliseconds patience);

 private:
  void run();

  std::mutex mutex_;  // guards what follows
  std::condition_variable changed_;
  std::deque<std::function<void()>> blocks_;
  bool busy_ = false;
  bool ending_ = false;

  std::thread thread_;
};

}  // namespace brimlo
