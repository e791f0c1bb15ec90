#pragma once

#include <functional>
#include <optional>

#include "base/geometry.h"
#include "platform/freedesktop/status_notifier_item.h"
#include "platform/qt/qt_tray_icon.h"
#include "platform/screens.h"
#include "platform/system_log.h"

namespace brimlo {

/// The program's icon, built in, for where no icon theme has it. It stands out on light and on dark
/// panels.
QIcon programIcon();

/// The program's icon in the tray: a StatusNotifierItem, or, as long as the desktop shows none of
/// those, an embedded window. Main thread.
class TrayItem {
 public:
  TrayItem(const Screens& screens, SystemLog& log);

  struct Click {
    std::optional<Rect> item;  ///< where the icon is, or a point within it; none where unknown
    std::string activationToken = {};  ///< what the desktop gave for the click; may be empty
  };
  /// Shows the icon. `onActivate` is called for each click on it.
  void show(std::function<void(const Click&)> onActivate);

  /// Where the icon is, if the tray tells.
  std::optional<Rect> frame() const { return embedded_.frame(); }

 private:
  std::optional<Rect> place(int x, int y) const;
  std::optional<Rect> pointerPlace() const;

  const Screens& screens_;
  StatusNotifierItem notifier_;
  QtTrayIcon embedded_;
};

}  // namespace brimlo
