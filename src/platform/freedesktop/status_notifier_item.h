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

/// An icon in the desktop's tray that opens a window (StatusNotifierItem on the session bus). The
/// tray may come, go and come back: the item is announced to each. Main thread.
class StatusNotifierItem : private QDBusVirtualObject {
 public:
  /// `themeIcon`: the name of the icon in the desktop's icon theme, which the tray colours as it
  /// likes; empty where it is not installed. `icon` is what is drawn then.
  StatusNotifierItem(const std::string& title, const std::string& themeIcon, QIcon icon,
                     SystemLog& log);
  ~StatusNotifierItem() override;

  /// A click on the icon.
  struct Click {
    int x, y;  ///< what the tray says of the icon's place, in pixels of the whole desktop
    std::string activationToken;  ///< what the tray got from the desktop for it; may be empty
  };
  void setOnActivate(std::function<void(const Click&)> onActivate);

  /// Tells `onChange` whether a tray shows the item: once that is known, and when it changes.
  /// Where there is no session bus, at once.
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
