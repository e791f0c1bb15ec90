#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "base/geometry.h"
#include "base/published.h"
#include "base/weak_anchor.h"
#include "menu/menu_content_model.h"
#include "platform/event_monitors.h"
#include "platform/keyable_panel.h"
#include "platform/main_queue.h"
#include "platform/screens.h"

namespace brimlo {

/// Opens the menu window beside its icon, and closes it when the person is done with it. A window
/// is made for each opening: it takes little time, and a closed one keeps no memory. Main thread.
class MenuBarController {
 public:
  /// All of it outlives the controller.
  struct Services {
    EventMonitors& events;
    MainQueue& queue;
    Screens& screens;
    std::function<std::unique_ptr<MenuContentModel>()> makeContent;
    std::function<std::unique_ptr<KeyablePanel>(MenuContentModel&)> makePanel;
  };

  explicit MenuBarController(Services services);
  ~MenuBarController();

  /// The icon, which is at `item`, was clicked: opens the window, or closes it. `item` may have no
  /// size, as when a tray says only where the click was.
  void toggle(const std::optional<Rect>& item);

  /// Opens the window beside `item`; without one, in a corner of the screen that the pointer is on.
  /// A window that is open already comes to the front.
  void open(const std::optional<Rect>& item);

  /// Does nothing when it is closed.
  void close();

  bool isOpen() const { return panel_ != nullptr; }

 private:
  void fit();
  void closeSoon();
  void closeByClick();

  Services services_;
  std::unique_ptr<MenuContentModel> content_;
  std::unique_ptr<KeyablePanel> panel_;  // null while closed
  std::unique_ptr<EventMonitor> globalClickMonitor_;
  std::unique_ptr<EventMonitor> localClickMonitor_;
  Subscription screensChange_;
  std::optional<Rect> item_;
  bool closedByThisClick_ = false;
  WeakAnchor anchor_;
};

/// The bottom left corner of a window of `size` that belongs to an icon at `item`: beside the icon,
/// away from the edge of the screen that the icon's panel is on, and within `screen.visibleFrame`.
/// A window that is too high for that extends below it.
Point originBeside(const Rect& item, Size size, const Screen& screen);

}  // namespace brimlo
