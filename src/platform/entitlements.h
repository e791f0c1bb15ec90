#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace brimlo {

/// What this build of the program was given the right to. Any thread.
class Entitlements {
 public:
  virtual ~Entitlements() = default;

  /// The value of the entitlement called `name`; none when it is missing or no list of strings.
  virtual std::optional<std::vector<std::string>> stringList(std::string_view name) const = 0;
};

}  // namespace brimlo
