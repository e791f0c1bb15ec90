#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/file_system.h"
#include "platform/system_log.h"

namespace brimlo {

/// One file of the data folder that a store writes through.
///
/// Content that could not be read or understood is never overwritten: the next save keeps it aside
/// first. Of saves that fail in a row only the first is logged.
class GuardedFile {
 public:
  GuardedFile(FileSystem& files, SystemLog& log, std::string path);

  const std::string& path() const { return path_; }

  /// The content on disk; none when the file is missing, or cannot be read, which is logged.
  std::optional<FileContents> read();

  /// Declares what was read damaged; `fault` is logged.
  void declareDamaged(std::string_view fault);

  /// Replaces the content by what `produce` appends.
  void save(const std::function<void(ByteSink&)>& produce);

  /// Whether the last save failed, so that its content is only in memory.
  bool unsaved() const { return unsaved_; }

 private:
  bool keepDamagedAside();

  FileSystem& files_;
  SystemLog& log_;
  std::string path_;
  std::string name_;  // the last part of the path, for the log
  bool damaged_ = false;
  bool unsaved_ = false;
};

}  // namespace brimlo
