#pragma once

#include <functional>
#include <list>
#include <memory>

#include "base/weak_anchor.h"
#include "menu/menu_content_model.h"
#include "platform/main_queue.h"
#include "platform/screens.h"
#include "platform/system_log.h"
#include "platform/titled_window.h"

namespace brimlo {

/// Previews of the menu window, in windows of their own that stay until they are closed. Main
/// thread.
class DebugMenuPanels {
 public:
  /// All of it outlives the previews.
  struct Services {
    SystemLog& log;
    MainQueue& queue;
    const Screens& screens;
    std::function<std::unique_ptr<MenuContentModel>()> makeContent;
    std::function<std::unique_ptr<TitledWindow>(MenuContentModel&)> makeWindow;
  };

  explicit DebugMenuPanels(Services services);

  /// Shows one more, in the middle of the primary screen.
  void show();

 private:
  struct Panel {
    std::unique_ptr<MenuContentModel> content;
    std::unique_ptr<TitledWindow> window = nullptr;
    bool closing = false;
  };

  Services services_;
  std::list<Panel> panels_;
  WeakAnchor anchor_;
};

}  // namespace brimlo
