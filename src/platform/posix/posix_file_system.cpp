#include "platform/posix/posix_file_system.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <limits>
#include <memory>

#include "platform/posix/file_descriptor.h"
#include "platform/posix/xdg_folders.h"

namespace brimlo {
namespace {

const std::error_code kDenied = std::make_error_code(std::errc::permission_denied);

std::error_code lastError() {
  return {errno, std::generic_category()};
}

std::string parentOf(const std::string& path) {
  return path.substr(0, path.find_last_of('/'));
}

std::error_code syncFolder(const std::string& path) {
  const FileDescriptor folder(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!folder || fsync(folder.get()) != 0) return lastError();
  return {};
}

/// Memory for a file; null when there is not enough. A large file gets huge pages where the kernel
/// has them: faulting in one small page after the other takes longer than reading the file.
char* allocate(std::size_t size) {
  constexpr std::size_t kHugePage = std::size_t{2} * 1024 * 1024;
  if (size < 2 * kHugePage) return static_cast<char*>(std::malloc(size));
  const std::size_t rounded = (size + kHugePage - 1) / kHugePage * kHugePage;
  void* memory = std::aligned_alloc(kHugePage, rounded);
  if (memory) madvise(memory, rounded, MADV_HUGEPAGE);
  return static_cast<char*>(memory);
}

bool sameTime(const timespec& a, const timespec& b) {
  return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}

/// Whether nobody has written to the file in between. The change time catches what restores the
/// modification time.
bool untouched(const struct stat& before, const struct stat& now) {
  return before.st_dev == now.st_dev && before.st_ino == now.st_ino &&
         before.st_size == now.st_size && sameTime(before.st_mtim, now.st_mtim) &&
         sameTime(before.st_ctim, now.st_ctim);
}

/// Writes to a descriptor. Keeps the first error, and writes nothing after it.
class DescriptorSink : public ByteSink {
 public:
  /// `replaced`: the path of the file that the new one replaces; `written`: its status right after
  /// it was written, or null.
  DescriptorSink(int fd, const std::string& replaced, const struct stat* written)
      : fd_(fd), replaced_(replaced), written_(written) {}

  void append(std::string_view bytes) override {
    while (!error_ && !bytes.empty()) {
      const ssize_t count = write(fd_, bytes.data(), bytes.size());
      if (count >= 0) {
        bytes.remove_prefix(static_cast<std::size_t>(count));
        size_ += count;
      } else if (errno != EINTR) {
        error_ = lastError();
      }
    }
    // Start writing out, so that the disk works while the rest is being produced.
    constexpr off_t kEnough = off_t{4} * 1024 * 1024;
    if (size_ - flushed_ < kEnough) return;
    sync_file_range(fd_, flushed_, size_ - flushed_, SYNC_FILE_RANGE_WRITE);
    flushed_ = size_;
  }

  bool appendFromReplaced(std::size_t offset) override {
    if (!written_) return false;
    const FileDescriptor old(open(replaced_.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status;
    if (!old || fstat(old.get(), &status) != 0 || !untouched(*written_, status)) return false;
    const off_t start = size_;
    constexpr std::size_t kPiece = 256 * 1024;
    const std::unique_ptr<char[]> piece(new char[kPiece]);
    for (auto at = static_cast<off_t>(offset); at < status.st_size && !error_;) {
      const ssize_t count = pread(old.get(), piece.get(), kPiece, at);
      if (count <= 0 && !(count < 0 && errno == EINTR)) {
        takeBackTo(start);
        return false;
      }
      if (count > 0) append({piece.get(), static_cast<std::size_t>(count)});
      at += std::max<ssize_t>(count, 0);
    }
    return true;
  }

  std::error_code finish() {
    if (!error_ && fdatasync(fd_) != 0) error_ = lastError();
    return error_;
  }

 private:
  void takeBackTo(off_t size) {
    if (ftruncate(fd_, size) != 0 || lseek(fd_, size, SEEK_SET) != size) error_ = lastError();
    size_ = size;
    flushed_ = std::min(flushed_, size);
  }

  int fd_;
  std::string replaced_;
  const struct stat* written_;
  off_t size_ = 0;
  off_t flushed_ = 0;
  std::error_code error_;
};

/// The file at `path`, held open if it is so large that freeing its blocks takes a while.
FileDescriptor holdLargeFile(const std::string& path) {
  constexpr off_t kLarge = off_t{4} * 1024 * 1024;
  struct stat status;
  const bool large =
      stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && status.st_size >= kLarge;
  return FileDescriptor(large ? open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK) : -1);
}

/// "…/clips.json.damaged-2026-03-01T09-30-00Z", with "-2", "-3", … where that is taken.
std::string damagedName(const std::string& path, int attempt) {
  const std::time_t now = std::time(nullptr);
  std::tm utc{};
  gmtime_r(&now, &utc);
  std::array<char, 32> stamp{};
  std::strftime(stamp.data(), stamp.size(), "%Y-%m-%dT%H-%M-%SZ", &utc);
  const std::string name = path + ".damaged-" + stamp.data();
  return attempt == 1 ? name : name + "-" + std::to_string(attempt);
}

/// Renames without replacing anything, also on file systems that cannot do that atomically.
int renameToFreeName(const std::string& from, const std::string& to) {
  if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return 0;
  if (errno != EINVAL && errno != ENOSYS) return -1;
  struct stat taken;
  if (lstat(to.c_str(), &taken) == 0) {
    errno = EEXIST;
    return -1;
  }
  return rename(from.c_str(), to.c_str());
}

}  // namespace

std::optional<std::string> PosixFileSystem::applicationSupportFolder() const {
  return xdgDataHome();
}

std::string PosixFileSystem::temporaryFolder() const {
  for (const char* variable : {"XDG_RUNTIME_DIR", "TMPDIR"}) {
    const char* folder = std::getenv(variable);
    if (folder && *folder == '/') return folder;
  }
  return "/tmp";
}

std::error_code PosixFileSystem::createPrivateFolder(const std::string& path) {
  std::error_code error;
  for (std::size_t end = path.find('/', 1);; end = path.find('/', end + 1)) {
    error = mkdir(path.substr(0, end).c_str(), 0700) == 0 ? std::error_code() : lastError();
    if (end == std::string::npos) break;
  }
  const FileDescriptor folder(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!folder) return error && error != std::errc::file_exists ? error : lastError();
  struct stat status;
  if (fstat(folder.get(), &status) != 0) return lastError();
  if (status.st_uid != geteuid()) {
    refusedFolder_ = path;
    return kDenied;
  }
  if ((status.st_mode & 077) != 0 && fchmod(folder.get(), 0700) != 0) return lastError();
  return {};
}

bool PosixFileSystem::refused(const std::string& path) const {
  return !refusedFolder_.empty() && parentOf(path) == refusedFolder_;
}

FileSystem::ReadResult PosixFileSystem::read(const std::string& path) const {
  if (refused(path)) return {std::nullopt, kDenied};
  // Non-blocking: opening a named pipe would wait for a writer.
  const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  struct stat status;
  if (!file || fstat(file.get(), &status) != 0) return {std::nullopt, lastError()};
  if (S_ISDIR(status.st_mode))
    return {std::nullopt, std::make_error_code(std::errc::is_a_directory)};
  if (!S_ISREG(status.st_mode)) {
    return {std::nullopt, std::make_error_code(std::errc::invalid_argument)};
  }
  const auto size = static_cast<std::size_t>(status.st_size);
  // The JSON parser counts in 32 bits.
  if (size >= std::numeric_limits<std::uint32_t>::max() - FileContents::kPadding) {
    return {std::nullopt, std::make_error_code(std::errc::file_too_large)};
  }
  FileContents contents;
  contents.bytes.reset(allocate(size + FileContents::kPadding));
  if (!contents.bytes) return {std::nullopt, std::make_error_code(std::errc::not_enough_memory)};
  while (contents.size < size) {
    const ssize_t got =
        ::read(file.get(), contents.bytes.get() + contents.size, size - contents.size);
    if (got == 0) break;
    if (got > 0) {
      contents.size += static_cast<std::size_t>(got);
    } else if (errno != EINTR) {
      return {std::nullopt, lastError()};
    }
  }
  return {std::move(contents), {}};
}

std::error_code PosixFileSystem::replace(const std::string& path,
                                         const std::function<void(ByteSink&)>& produce) {
  if (refused(path)) return kDenied;
  const std::string temporary = path + ".tmp";
  unlink(temporary.c_str());
  const FileDescriptor file(
      open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0600));
  if (!file) return lastError();
  const auto written = written_.find(path);
  DescriptorSink sink(file.get(), path, written == written_.end() ? nullptr : &written->second);
  produce(sink);
  FileDescriptor replaced = holdLargeFile(path);
  std::error_code error = sink.finish();
  if (!error && rename(temporary.c_str(), path.c_str()) != 0) error = lastError();
  if (error) {
    unlink(temporary.c_str());
    return error;
  }
  if (fstat(file.get(), &written_[path]) != 0) written_.erase(path);
  // Closing the last descriptor of the old content frees it; the caller need not wait for that.
  if (replaced) {
    freeing_ = std::async(std::launch::async, [held = std::move(replaced)]() mutable {
      const FileDescriptor closing = std::move(held);
    });
  }
  error = syncFolder(parentOf(path));
  // After a failure the caller takes the old content to be in place, so the new one must not be
  // appended from.
  if (error) written_.erase(path);
  return error;
}

FileSystem::AsideResult PosixFileSystem::setAside(const std::string& path) {
  if (refused(path)) return {{}, kDenied};
  constexpr int kAttempts = 100;
  for (int attempt = 1; attempt <= kAttempts; ++attempt) {
    std::string name = damagedName(path, attempt);
    if (renameToFreeName(path, name) == 0) return {std::move(name), syncFolder(parentOf(path))};
    if (errno == ENOENT) return {};
    if (errno != EEXIST) return {{}, lastError()};
  }
  return {{}, std::make_error_code(std::errc::file_exists)};
}

}  // namespace brimlo
