#include "menu/menu_bar_controller.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <utility>
#include <vector>

namespace brimlo {
namespace {

enum class Edge { kTop, kBottom, kLeft, kRight };

/// The edge of the screen that an icon's panel is on.
Edge edgeOf(const Rect& item, const Screen& screen) {
  struct Distance {
    Edge edge;
    double fromWorkArea;  // negative in the strip that a panel keeps free for itself
    double fromScreen;
  };
  const Rect& work = screen.visibleFrame;
  const Rect& all = screen.frame;
  const double x = item.midX(), y = item.midY();
  const std::array distances{Distance{Edge::kTop, work.maxY() - y, all.maxY() - y},
                             Distance{Edge::kBottom, y - work.minY(), y - all.minY()},
                             Distance{Edge::kLeft, x - work.minX(), x - all.minX()},
                             Distance{Edge::kRight, work.maxX() - x, all.maxX() - x}};
  const auto innermost = std::min_element(
      distances.begin(), distances.end(),
      [](const Distance& a, const Distance& b) { return a.fromWorkArea < b.fromWorkArea; });
  if (innermost->fromWorkArea < 0) return innermost->edge;
  // The panel keeps no strip free, because it hides itself.
  return std::min_element(
             distances.begin(), distances.end(),
             [](const Distance& a, const Distance& b) { return a.fromScreen < b.fromScreen; })
      ->edge;
}

/// A point in the corner where icons usually are.
Rect usualPlace(const Screen& screen) {
  const Rect& work = screen.visibleFrame;
  const bool panelBelow = work.minY() - screen.frame.minY() > screen.frame.maxY() - work.maxY();
  return {{work.maxX(), panelBelow ? work.minY() : work.maxY()}, {0, 0}};
}

}  // namespace

Point originBeside(const Rect& item, Size size, const Screen& screen) {
  const Rect& work = screen.visibleFrame;
  Point origin{item.midX() - size.width / 2, item.midY() - size.height / 2};
  switch (edgeOf(item, screen)) {
    case Edge::kTop:
      origin.y = std::min(item.minY(), work.maxY()) - size.height;
      break;
    case Edge::kBottom:
      origin.y = std::max(item.maxY(), work.minY());
      break;
    case Edge::kLeft:
      origin.x = std::max(item.maxX(), work.minX());
      break;
    case Edge::kRight:
      origin.x = std::min(item.minX(), work.maxX()) - size.width;
      break;
  }
  origin.x = std::max(std::min(origin.x, work.maxX() - size.width), work.minX());
  origin.y = std::min(std::max(origin.y, work.minY()), work.maxY() - size.height);
  return origin;
}

MenuBarController::MenuBarController(Services services) : services_(std::move(services)) {}

MenuBarController::~MenuBarController() {
  close();
}

void MenuBarController::toggle(const std::optional<Rect>& item) {
  if (isOpen()) return close();
  // The same click, seen as a click elsewhere, has just closed the window.
  if (std::exchange(closedByThisClick_, false)) return;
  open(item);
}

void MenuBarController::open(const std::optional<Rect>& item) {
  item_ = item;
  if (!isOpen()) {
    content_ = services_.makeContent();
    content_->setOnClose(anchor_.guard([this] { closeSoon(); }));
    panel_ = services_.makePanel(*content_);
    panel_->setOnResignKey(anchor_.guard([this] { closeSoon(); }));
    panel_->setOnFittingSizeChange(anchor_.guard([this] { fit(); }));
    screensChange_ = services_.screens.observeChanges(anchor_.guard([this] { fit(); }));
    globalClickMonitor_ = services_.events.addGlobalMouseDownMonitor([this] { closeByClick(); });
    localClickMonitor_ = services_.events.addLocalMouseDownMonitor([this](WindowId window) {
      if (window != panel_->windowId()) closeByClick();
    });
  }
  fit();
  panel_->makeKeyAndOrderFront();
}

void MenuBarController::close() {
  if (!isOpen()) return;
  globalClickMonitor_.reset();
  localClickMonitor_.reset();
  screensChange_.reset();
  panel_->orderOut();
  panel_.reset();
  content_.reset();
}

void MenuBarController::fit() {
  if (!isOpen()) return;
  auto screen = item_ ? screenAt(Point{item_->midX(), item_->midY()}, services_.screens)
                      : std::optional<Screen>();
  if (!screen) {
    item_.reset();
    screen = screenAt(services_.screens.pointerLocation(), services_.screens);
  }
  if (!screen) screen = services_.screens.mainScreen();
  Size size = panel_->fittingSize();
  if (screen) size.height = std::min(size.height, screen->visibleFrame.size.height);
  panel_->setContentSize(size);
  if (screen) {
    panel_->setFrameOrigin(originBeside(item_.value_or(usualPlace(*screen)), size, *screen));
  }
}

void MenuBarController::closeSoon() {
  // The window may be handling an event, and must not be destroyed before that is over.
  services_.queue.async(anchor_.guard([this] { close(); }));
}

void MenuBarController::closeByClick() {
  closeSoon();
  // If it was a click on the icon, the tray reports it later, when the button is released.
  constexpr std::chrono::milliseconds kLongClick{400};
  closedByThisClick_ = true;
  services_.queue.asyncAfter(kLongClick, anchor_.guard([this] { closedByThisClick_ = false; }));
}

}  // namespace brimlo
