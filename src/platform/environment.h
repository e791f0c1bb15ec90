#pragma once

#include <optional>
#include <string>

namespace brimlo {

/// The process's environment variables. Main thread.
class Environment {
 public:
  virtual ~Environment() = default;

  /// The value that `name` has now; none when it is not set.
  virtual std::optional<std::string> value(const char* name) const = 0;
};

}  // namespace brimlo
