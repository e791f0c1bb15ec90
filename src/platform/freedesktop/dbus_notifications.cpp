#include "platform/freedesktop/dbus_notifications.h"

#include <QDBusMessage>
#include <QStringList>
#include <QVariantMap>

#include "platform/freedesktop/session_bus.h"

namespace brimlo {

void DbusNotifications::deliver(const std::string& title, const std::string& body) {
  auto bus = sessionBus();
  if (!bus) return;
  QDBusMessage call = QDBusMessage::createMethodCall("org.freedesktop.Notifications",
                                                     "/org/freedesktop/Notifications",
                                                     "org.freedesktop.Notifications", "Notify");
  constexpr uint kNew = 0;
  constexpr int kUsualTime = -1;
  // The daemon reads the body as markup.
  call << "Brimlo" << kNew << "edit-paste" << QString::fromStdString(title)
       << QString::fromStdString(body).toHtmlEscaped() << QStringList() << QVariantMap()
       << kUsualTime;
  bus->send(call);  // does not wait for the daemon
}

}  // namespace brimlo
