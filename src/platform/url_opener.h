#pragma once

#include <string>

namespace brimlo {

/// The desktop's programs for addresses. Main thread.
class UrlOpener {
 public:
  virtual ~UrlOpener() = default;

  /// Has the person's browser show `address`. Does not wait.
  virtual void open(const std::string& address) = 0;
};

}  // namespace brimlo
