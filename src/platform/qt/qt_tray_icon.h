#pragma once

#include <QIcon>
#include <QSystemTrayIcon>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "base/geometry.h"

namespace brimlo {

/// An icon in a tray that embeds windows (System Tray Protocol, XEmbed). The tray may come, go and
/// come back. Main thread.
class QtTrayIcon {
 public:
  QtTrayIcon(const std::string& title, QIcon icon);

  /// Whether there is to be one. Without a tray it waits for one.
  void setShown(bool shown);

  /// Where it is; none while no tray has it.
  std::optional<Rect> frame() const;

  /// Called when it is clicked, with any button.
  void setOnActivate(std::function<void()> onActivate);

 private:
  QString title_;
  QIcon icon_;
  std::unique_ptr<QSystemTrayIcon> tray_;
  std::function<void()> onActivate_;
};

}  // namespace brimlo
