#pragma once

#include <QDBusConnection>
#include <optional>

namespace brimlo {

/// The session bus; none where the session has none, in which case the library would otherwise
/// start one. Needs the running `QCoreApplication`.
std::optional<QDBusConnection> sessionBus();

}  // namespace brimlo
