#include "platform/linux/dbus_notifications.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <QVariantMap>
#include <cstdlib>

namespace brimlo {

namespace {

/// Asked for a session bus where there is none, the library would start one of its own.
bool hasSessionBus() {
  if (std::getenv("DBUS_SESSION_BUS_ADDRESS")) return true;
  const char* runtime = std::getenv("XDG_RUNTIME_DIR");
  return runtime && QFileInfo::exists(QFile::decodeName(runtime) + "/bus");
}

}  // namespace

void DbusNotifications::deliver(const std::string& title, const std::string& body) {
  if (!hasSessionBus()) return;
  QDBusMessage call = QDBusMessage::createMethodCall("org.freedesktop.Notifications",
                                                     "/org/freedesktop/Notifications",
                                                     "org.freedesktop.Notifications", "Notify");
  constexpr uint kNew = 0;
  constexpr int kUsualTime = -1;
  // The body is markup to the daemon.
  call << "Brimlo" << kNew << "edit-paste" << QString::fromStdString(title)
       << QString::fromStdString(body).toHtmlEscaped() << QStringList() << QVariantMap()
       << kUsualTime;
  QDBusConnection::sessionBus().send(call);  // queued; a daemon that hangs is not waited for
}

}  // namespace brimlo
