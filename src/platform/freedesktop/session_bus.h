#pragma once

#include <QDBusConnection>
#include <optional>

namespace brimlo {

/// The session bus; none where there is none. Asked for it regardless, the library would start one
/// of its own. Needs the running `QCoreApplication`.
std::optional<QDBusConnection> sessionBus();

}  // namespace brimlo
