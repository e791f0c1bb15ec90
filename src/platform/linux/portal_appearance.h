#pragma once

#include <QDBusVariant>
#include <QObject>
#include <memory>

#include "base/published.h"
#include "platform/appearance.h"
#include "platform/linux/dbus_signal.h"

namespace brimlo {

/// The desktop's appearance, as the settings portal says ("color-scheme" of
/// "org.freedesktop.appearance"); where that knows none, as the toolkit's own colours are. Nothing
/// waits for the portal. Main thread.
class PortalAppearance : private QObject {
 public:
  /// Needs the running `QGuiApplication`.
  PortalAppearance();

  const Published<Appearance>& value() const { return value_; }

 private:
  bool eventFilter(QObject* receiver, QEvent* event) override;
  void take(const QVariant& scheme);
  void publish();

  uint scheme_ = 0;
  std::unique_ptr<DbusSignal> changes_;
  Published<Appearance> value_{Appearance::kLight};
};

}  // namespace brimlo
