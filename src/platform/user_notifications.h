#pragma once

#include <string>

namespace brimlo {

/// The desktop's notifications. Main thread.
class UserNotifications {
 public:
  virtual ~UserNotifications() = default;

  /// Shows a notification, without sound or action. Does not wait, and reports nothing back: a
  /// desktop without notifications shows none.
  virtual void deliver(const std::string& title, const std::string& body) = 0;
};

}  // namespace brimlo
