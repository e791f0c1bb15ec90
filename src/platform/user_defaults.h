#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace brimlo {

/// The user's settings of this program. Main thread.
class UserDefaults {
 public:
  virtual ~UserDefaults() = default;

  /// The Boolean stored under `key`; none when there is none, or it is not a Boolean.
  virtual std::optional<bool> boolForKey(std::string_view key) const = 0;

  /// The text stored under `key`; none when there is none.
  virtual std::optional<std::string> stringForKey(std::string_view key) const = 0;

  /// Stores `value` and writes it through. A failed write is logged; the value holds until the
  /// process ends.
  virtual void setBool(std::string_view key, bool value) = 0;
  virtual void setString(std::string_view key, const std::string& value) = 0;
};

}  // namespace brimlo
