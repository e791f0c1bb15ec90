#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "platform/file_system.h"
#include "platform/system_log.h"
#include "store/guarded_file.h"

namespace brimlo {

/// A value that a store keeps in a file of its own.
///
/// Saving leaves the write out only where the file is known to hold the very value: where it was
/// read from there as it is, or was the last one written. So a missing or damaged file, and one in
/// another order, is written even when nothing has changed since.
template <typename Value>
class StoredValue {
 public:
  StoredValue(FileSystem& files, SystemLog& log, std::string path)
      : file_(files, log, std::move(path)) {}

  const std::string& path() const { return file_.path(); }

  /// What `decode` makes of the file's content; none when the file is missing, cannot be read, or
  /// is damaged, of which the last two are logged.
  template <typename Decode>
  auto load(Decode decode) -> decltype(decode(FileContents()).value) {
    const auto content = file_.read();
    if (!content) return std::nullopt;
    auto decoded = decode(*content);
    if (!decoded.value) file_.declareDamaged(decoded.fault);
    return std::move(decoded.value);
  }

  /// Says that the file that was loaded holds `value`.
  void setHeld(Value value) { held_ = std::move(value); }

  /// The value that was read or written last; none when nothing is known of the file.
  const std::optional<Value>& held() const { return held_; }

  /// Makes what `encode` appends, the form of `value`, the content of the file, unless it is known
  /// to be that already.
  void save(const Value& value, const std::function<void(ByteSink&)>& encode) {
    if (held_ == value && !file_.unsaved()) return;
    file_.save(encode);
    if (!file_.unsaved()) held_ = value;
  }

  /// Whether the last save failed, so that the value is only in memory.
  bool unsaved() const { return file_.unsaved(); }

 private:
  GuardedFile file_;
  std::optional<Value> held_;
};

}  // namespace brimlo
