#pragma once

#include <QDBusServiceWatcher>
#include <QDBusVirtualObject>
#include <QIcon>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/freedesktop/dbus_signal.h"
#include "platform/system_log.h"

namespace brimlo {

/// An icon in the desktop's tray (StatusNotifierItem on the session bus). It is announced to every
/// tray that starts, now or later. Main thread.
class StatusNotifierItem : private QDBusVirtualObject {
 public:
  /// `themeIcon`: a name in the desktop's icon theme, in which case the tray may colour the icon;
  /// empty where it is not installed, in which case `icon` is drawn.
  StatusNotifierItem(const std::string& title, const std::string& themeIcon, QIcon icon,
                     SystemLog& log);
  ~StatusNotifierItem() override;

  /// A click on the icon.
  struct Click {
    int x, y;  ///< the icon's place according to the tray, in pixels of the whole desktop
    std::string activationToken;  ///< what the tray got from the desktop for it; may be empty
  };
  void setOnActivate(std::function<void(const Click&)> onActivate);

  /// Calls `onChange` with whether a tray shows the item: once that is known (without a session bus
  /// at once), and whenever it changes.
  void watchHosted(std::function<void(bool hosted)> onChange);

 private:
  QString introspect(const QString& path) const override;
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;
  QVariantMap plainProperties() const;
  void announce();
  void askForHost();
  void setHosted(bool hosted);

  QString title_;
  QString themeIcon_;
  QIcon icon_;
  SystemLog& log_;
  QString service_;
  std::optional<QDBusConnection> bus_;
  std::unique_ptr<QDBusServiceWatcher> watcher_;
  std::vector<std::unique_ptr<DbusSignal>> hostSignals_;
  std::optional<bool> hosted_;
  std::function<void(const Click&)> onActivate_;
  std::string activationToken_;  // of the click that is told next
  std::function<void(bool)> onHostedChange_;
};

}  // namespace brimlo
