#include "platform/posix/worker_thread.h"

#include <csignal>
#include <utility>

namespace brimlo {

WorkerThread::WorkerThread() {
  // A new thread inherits the signal mask of the thread that starts it.
  sigset_t all, before;
  sigfillset(&all);
  pthread_sigmask(SIG_SETMASK, &all, &before);
  thread_ = std::thread([this] { run(); });
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

WorkerThread::~WorkerThread() {
  finish(std::chrono::milliseconds(0));
  thread_.join();
}

void WorkerThread::async(std::function<void()> block) {
  {
    const std::lock_guard lock(mutex_);
    if (ending_) return;
    blocks_.push_back(std::move(block));
  }
  changed_.notify_all();
}

WorkerThread::Ending WorkerThread::finish(std::chrono::milliseconds patience) {
  std::deque<std::function<void()>> dropped;
  std::unique_lock lock(mutex_);
  ending_ = true;
  dropped.swap(blocks_);
  changed_.notify_all();
  const bool done = changed_.wait_for(lock, patience, [this] { return !busy_; });
  return done ? Ending::kDone : Ending::kHanging;
}

void WorkerThread::run() {
  std::unique_lock lock(mutex_);
  while (true) {
    changed_.wait(lock, [this] { return ending_ || !blocks_.empty(); });
    if (ending_) return;
    auto block = std::move(blocks_.front());
    blocks_.pop_front();
    busy_ = true;
    lock.unlock();
    block();
    block = nullptr;
    lock.lock();
    busy_ = false;
    changed_.notify_all();
  }
}

}  // namespace brimlo
