#include "store/guarded_file.h"

#include <utility>

namespace brimlo {

GuardedFile::GuardedFile(FileSystem& files, SystemLog& log, std::string path)
    : files_(files),
      log_(log),
      path_(std::move(path)),
      name_(path_.substr(path_.find_last_of('/') + 1)) {}

std::optional<FileContents> GuardedFile::read() {
  FileSystem::ReadResult result = files_.read(path_);
  const bool missing = result.error == std::errc::no_such_file_or_directory ||
                       result.error == std::errc::not_a_directory;
  if (result.error && !missing) {
    declareDamaged("cannot be read: " + result.error.message());
  }
  return std::move(result.contents);
}

void GuardedFile::declareDamaged(std::string_view fault) {
  damaged_ = true;
  log_.write(name_ + " is damaged (" + std::string(fault) +
             "); it is kept aside before the next save");
}

void GuardedFile::save(const std::function<void(ByteSink&)>& produce) {
  if (damaged_ && !keepDamagedAside()) {
    unsaved_ = true;
    return;
  }
  const std::error_code error = files_.replace(path_, produce);
  if (error && !unsaved_) {
    log_.write("cannot save " + name_ + ": " + error.message() + "; it is kept in memory");
  }
  if (!error && unsaved_) log_.write("saved " + name_ + " again");
  unsaved_ = static_cast<bool>(error);
}

bool GuardedFile::keepDamagedAside() {
  const FileSystem::AsideResult aside = files_.setAside(path_);
  if (aside.error) {
    if (!unsaved_) {
      log_.write("cannot keep the damaged " + name_ + " aside: " + aside.error.message() +
                 "; it is left alone and nothing is saved");
    }
    return false;
  }
  if (!aside.path.empty()) log_.write("kept the damaged " + name_ + " as " + aside.path);
  damaged_ = false;
  return true;
}

}  // namespace brimlo
