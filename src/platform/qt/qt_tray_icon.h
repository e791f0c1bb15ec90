#pragma once

#include <QIcon>
#include <QSystemTrayIcon>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "base/geometry.h"

namespace brimlo {

/// An icon in a tray that embeds windows (System Tray Protocol, XEmbed). It goes into every tray
/// that starts, now or later. Main thread.
class QtTrayIcon {
 public:
  QtTrayIcon(const std::string& title, QIcon icon);

  /// Whether there is an icon. Without a tray it waits for one.
  void setShown(bool shown);

  /// Where the icon is; none while no tray has it.
  std::optional<Rect> frame() const;

  /// Called when the icon is clicked, with any button.
  void setOnActivate(std::function<void()> onActivate);

 private:
  QString title_;
  QIcon icon_;
  std::unique_ptr<QSystemTrayIcon> tray_;
  std::function<void()> onActivate_;
};

}  // namespace brimlo
