#pragma once

#include <QDBusVariant>
#include <QObject>
#include <memory>
#include <string>

#include "base/published.h"
#include "platform/appearance.h"
#include "platform/freedesktop/dbus_signal.h"

namespace brimlo {

/// The desktop's appearance, as the settings portal says ("color-scheme" of
/// "org.freedesktop.appearance"). Where that knows none, the name of the desktop's theme tells, and
/// where there is no such name, the toolkit's own colours do. Nothing waits for the portal. Main
/// thread.
class DesktopAppearance : private QObject {
 public:
  /// `themeName`: what the desktop calls its theme; outlives it. Needs the running
  /// `QGuiApplication`.
  explicit DesktopAppearance(const Published<std::string>& themeName);

  const Published<Appearance>& value() const { return value_; }

 private:
  bool eventFilter(QObject* receiver, QEvent* event) override;
  void take(const QVariant& scheme);
  void publish();

  const Published<std::string>& themeName_;
  uint scheme_ = 0;
  std::unique_ptr<DbusSignal> changes_;
  Published<Appearance> value_{Appearance::kLight};
  Subscription themeChanges_;
};

}  // namespace brimlo
