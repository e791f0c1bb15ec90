#pragma once

#include <QDBusVariant>
#include <QObject>
#include <memory>
#include <string>

#include "base/published.h"
#include "platform/appearance.h"
#include "platform/freedesktop/dbus_signal.h"

namespace brimlo {

/// The desktop's appearance: what the settings portal says ("color-scheme" of
/// "org.freedesktop.appearance"); without a preference there, what the name of the desktop's theme
/// suggests; without such a name, what the toolkit's colours are. Never waits for the portal. Main
/// thread.
class DesktopAppearance : private QObject {
 public:
  /// `themeName`: the name of the desktop's theme, empty where it is not known; outlives the
  /// object. Needs the running `QGuiApplication`.
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
