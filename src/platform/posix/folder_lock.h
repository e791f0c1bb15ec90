#pragma once

#include <string>

#include "platform/posix/file_descriptor.h"

namespace brimlo {

/// Keeps a second process from working in the same folder. The kernel lifts the lock with the
/// process, however that ends, and it needs no file: a read-only folder can be locked too.
class FolderLock {
 public:
  enum class State {
    kHeld,
    kHeldByAnother,
    kUnavailable,  ///< no such folder of the user's, or its file system knows no locks
  };

  explicit FolderLock(const std::string& folder);

  State state() const { return state_; }

 private:
  FileDescriptor folder_;
  State state_;
};

}  // namespace brimlo
