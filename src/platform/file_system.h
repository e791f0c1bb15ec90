#pragma once

#include <cstddef>
#include <cstdlib>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace brimlo {

/// A file read whole, followed by `kPadding` bytes that may be read but mean nothing.
struct FileContents {
  static constexpr std::size_t kPadding = 64;

  struct Free {
    void operator()(char* memory) const { std::free(memory); }
  };
  std::unique_ptr<char[], Free> bytes;  ///< from `std::malloc` or one of its kin
  std::size_t size = 0;

  std::string_view view() const { return {bytes.get(), size}; }
};

/// Where a new file's content goes, piece by piece.
class ByteSink {
 public:
  virtual ~ByteSink() = default;

  virtual void append(std::string_view bytes) = 0;

  /// Appends what stands in the file that is being replaced, from `offset` to its end, provided
  /// that it is still the very content that a successful `replace` put there last. Otherwise, or
  /// when it cannot be read, appends nothing and returns false.
  [[nodiscard]] virtual bool appendFromReplaced(std::size_t offset) = 0;
};

/// The user's folders and the files in them. Paths are absolute. Main thread; every call
/// returns when the work is done.
class FileSystem {
 public:
  virtual ~FileSystem() = default;

  /// The parent of this program's data folder; none where the user has no such place.
  virtual std::optional<std::string> applicationSupportFolder() const = 0;

  /// The process's temporary folder.
  virtual std::string temporaryFolder() const = 0;

  /// Makes `path` a folder only its owner can enter, with any missing parents. An existing folder
  /// of the user's is made private; one of somebody else's is refused.
  [[nodiscard]] virtual std::error_code createPrivateFolder(const std::string& path) = 0;

  struct ReadResult {
    std::optional<FileContents> contents;
    std::error_code error;  ///< `no_such_file_or_directory` for a missing file
  };
  /// Reads a regular file whole; anything else in its place is an error, at once.
  [[nodiscard]] virtual ReadResult read(const std::string& path) const = 0;

  /// Puts what `produce` appends in the place of the file at `path`, readable by its owner alone,
  /// atomically and durably: whatever happens, the old or the new content stands there whole, and
  /// after success the new one survives a power cut. On failure the old content stays, unless only
  /// the last step failed, that of making the new one safe from a power cut.
  [[nodiscard]] virtual std::error_code replace(const std::string& path,
                                                const std::function<void(ByteSink&)>& produce) = 0;

  struct AsideResult {
    std::string path;  ///< where it is now; empty when there was nothing to move
    std::error_code error;
  };
  /// Renames whatever stands at `path` to a name beside it that tells of damage and was free.
  [[nodiscard]] virtual AsideResult setAside(const std::string& path) = 0;
};

}  // namespace brimlo
