#pragma once

#include <QSocketNotifier>
#include <functional>
#include <memory>
#include <vector>

#include "platform/linux/file_descriptor.h"

namespace brimlo {

/// Delivers Unix signals as blocks on the main run loop. One object a process, on the main thread.
class UnixSignals {
 public:
  UnixSignals();
  /// Gives the handled signals their default action back.
  ~UnixSignals();

  /// Calls `block` for every delivery of `signal` from now on; several that arrive at once may be
  /// one. A signal that the process was started to ignore, as `nohup` does, stays ignored.
  void handle(int signal, std::function<void()> block);

 private:
  void drain();

  struct Handler {
    int signal;
    std::function<void()> block;
  };
  FileDescriptor reader_;
  FileDescriptor writer_;
  std::vector<Handler> handlers_;
  std::unique_ptr<QSocketNotifier> readable_;
};

}  // namespace brimlo
