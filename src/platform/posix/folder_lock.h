#pragma once

#include <string>

#include "platform/posix/file_descriptor.h"

namespace brimlo {

/// Keeps a second process from working in the same folder. The kernel releases the lock when the
/// process ends, however it ends. No file is made, so a read-only folder can be locked too.
class FolderLock {
 public:
  enum class State {
    kHeld,
    kHeldByAnother,
    kUnavailable,  ///< no such folder that belongs to the user, or a file system without locks
  };

  explicit FolderLock(const std::string& folder);

  State state() const { return state_; }

 private:
  FileDescriptor folder_;
  State state_;
};

}  // namespace brimlo
