#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

#include "platform/background_queue.h"

namespace brimlo {

/// One thread that runs what is queued. It receives no signals; those go to the main thread.
class WorkerThread : public BackgroundQueue {
 public:
  WorkerThread();
  /// Waits for the running block; drops the waiting ones.
  ~WorkerThread() override;

  void async(std::function<void()> block) override;

  enum class Ending { kDone, kHanging };
  /// Drops the waiting blocks, and waits up to `patience` for the running one to end.
  Ending finish(std::chrono::milliseconds patience);

 private:
  void run();

  std::mutex mutex_;  // guards the next four members
  std::condition_variable changed_;
  std::deque<std::function<void()>> blocks_;
  bool busy_ = false;
  bool ending_ = false;

  std::thread thread_;
};

}  // namespace brimlo
