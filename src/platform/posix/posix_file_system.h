#pragma once

#include <sys/stat.h>

#include <future>
#include <map>

#include "platform/file_system.h"

namespace brimlo {

/// Files of a POSIX system, in the folders that the XDG Base Directory Specification names.
/// A file is written beside its target, under the target's name and ".tmp"; one that a crash left
/// behind is overwritten by the next save.
class PosixFileSystem : public FileSystem {
 public:
  std::optional<std::string> applicationSupportFolder() const override;
  std::string temporaryFolder() const override;
  std::error_code createPrivateFolder(const std::string& path) override;
  ReadResult read(const std::string& path) const override;
  std::error_code replace(const std::string& path,
                          const std::function<void(ByteSink&)>& produce) override;
  AsideResult setAside(const std::string& path) override;

 private:
  bool refused(const std::string& path) const;

  std::string refusedFolder_;                   // another user's; nothing in it is touched
  std::map<std::string, struct stat> written_;  // the files as this object left them, by path
  std::future<void> freeing_;  // the release of a large replaced file, on a thread of its own
};

}  // namespace brimlo
