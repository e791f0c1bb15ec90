#pragma once

#include <chrono>
#include <functional>
#include <string>

#include "platform/descriptor_watches.h"
#include "platform/posix/file_descriptor.h"
#include "platform/system_log.h"

namespace brimlo {

/// What a second start asks the running program to do.
struct InstanceRequest {
  enum class Action : unsigned char { kOpenMenu = 1, kQuickPaste = 2 };

  Action action = Action::kOpenMenu;
  /// What the desktop gave the second start to show that the person asked for it; may be empty.
  std::string activationToken = {};
};

/// The socket through which the program that works in `dataFolder` is asked: in the user's runtime
/// folder, or in `dataFolder` where there is none.
std::string instanceSocketPath(const std::string& dataFolder);

/// Asks the program that serves `path`. Returns whether it has answered within `patience`.
bool askRunningInstance(const std::string& path, const InstanceRequest& request,
                        std::chrono::milliseconds patience);

/// Serves such requests as long as it exists. Main thread.
class RunningInstance {
 public:
  /// Replaces a socket that an earlier process left at `path`. A failure is logged.
  RunningInstance(std::string path, DescriptorWatches& watches, SystemLog& log,
                  std::function<void(const InstanceRequest&)> onRequest);
  ~RunningInstance();

 private:
  void serve();

  std::string path_;
  FileDescriptor socket_;
  Subscription readable_;
  std::function<void(const InstanceRequest&)> onRequest_;
};

}  // namespace brimlo
