#pragma once

#include "platform/user_notifications.h"

namespace brimlo {

/// Notifications through `org.freedesktop.Notifications` on the session bus (Desktop Notifications
/// Specification). Without a bus or a daemon nothing is shown.
class DbusNotifications : public UserNotifications {
 public:
  void deliver(const std::string& title, const std::string& body) override;
};

}  // namespace brimlo
