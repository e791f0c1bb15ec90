#include "app/debug_menu_panels.h"

#include <utility>

namespace brimlo {

DebugMenuPanels::DebugMenuPanels(Services services) : services_(std::move(services)) {}

void DebugMenuPanels::show() {
  panels_.push_back({services_.makeContent()});
  const auto panel = std::prev(panels_.end());
  panel->window = services_.makeWindow(*panel->content);
  TitledWindow& window = *panel->window;
  // The window is destroyed later, when the event that closes it has been handled.
  const auto close = anchor_.guard([this, panel] {
    if (std::exchange(panel->closing, true)) return;
    panel->window->orderOut();
    services_.queue.async(anchor_.guard([this, panel] { panels_.erase(panel); }));
  });
  window.setOnWillClose(close);
  panel->content->setOnClose(close);
  window.setLevel(TitledWindow::Level::kFloating);
  const Size size = window.contentSize();
  if (const auto screen = primaryScreen(services_.screens)) {
    window.setFrameOrigin(originCentered(size, screen->visibleFrame));
  }
  window.makeKeyAndOrderFront();
  services_.log.write("SIGWINCH -> popover preview shown (size=" + toString(size) + ")");
}

}  // namespace brimlo
