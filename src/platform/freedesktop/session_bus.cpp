#include "platform/freedesktop/session_bus.h"

#include <QFile>
#include <QFileInfo>
#include <cstdlib>

namespace brimlo {

std::optional<QDBusConnection> sessionBus() {
  const char* runtime = std::getenv("XDG_RUNTIME_DIR");
  if (!std::getenv("DBUS_SESSION_BUS_ADDRESS") &&
      !(runtime && QFileInfo::exists(QFile::decodeName(runtime) + "/bus"))) {
    return std::nullopt;
  }
  QDBusConnection bus = QDBusConnection::sessionBus();
  return bus.isConnected() ? std::optional(bus) : std::nullopt;
}

}  // namespace brimlo
