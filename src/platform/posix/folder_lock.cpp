#include "platform/posix/folder_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace brimlo {

FolderLock::FolderLock(const std::string& folder)
    : folder_(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
  struct stat status;
  // Another user could hold the lock on a folder of their own for ever.
  if (fstat(folder_.get(), &status) != 0 || status.st_uid != geteuid()) {
    state_ = State::kUnavailable;
  } else if (flock(folder_.get(), LOCK_EX | LOCK_NB) == 0) {
    state_ = State::kHeld;
  } else {
    state_ = errno == EWOULDBLOCK ? State::kHeldByAnother : State::kUnavailable;
  }
}

}  // namespace brimlo
