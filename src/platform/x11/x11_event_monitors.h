#pragma once

#include <xcb/xcb.h>

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <cstdint>
#include <functional>
#include <memory>
#include <set>

#include "platform/event_monitors.h"
#include "platform/x11/x11_connection.h"
#include "platform/x11/x11_keyboard.h"
#include "platform/x11/x11_raw_input.h"

namespace brimlo {

/// Keys as the toolkit gives them to its windows, in order with what else is typed, once input
/// methods have had them; but the page keys as they come from the server, before any input method.
/// Clicks on windows of this program as the toolkit delivers them; all others as they come from the
/// device.
class X11EventMonitors : public EventMonitors, private QAbstractNativeEventFilter, private QObject {
 public:
  /// All of it outlives the object. Needs the running `QGuiApplication`.
  X11EventMonitors(X11Connection& x11, X11Keyboard& keyboard, X11RawInput& rawInput);
  ~X11EventMonitors() override;

  std::unique_ptr<EventMonitor> addLocalKeyDownMonitor(
      std::function<bool(const KeyDownEvent&)> handler) override;
  std::unique_ptr<EventMonitor> addGlobalMouseDownMonitor(std::function<void()> handler) override;
  std::unique_ptr<EventMonitor> addLocalMouseDownMonitor(
      std::function<void(WindowId window)> handler) override;

 private:
  template <typename Handler>
  class Monitor;
  using KeyDownMonitor = Monitor<std::function<bool(const KeyDownEvent&)>>;
  using GlobalMouseDownMonitor = Monitor<std::function<void()>>;
  using LocalMouseDownMonitor = Monitor<std::function<void(WindowId)>>;

  bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;
  bool eventFilter(QObject* receiver, QEvent* event) override;
  bool isConsumed(const KeyDownEvent& press);
  KeyDownEvent translated(xcb_keycode_t key, std::uint16_t state);
  void onButtonPress(std::uint32_t button);
  bool pointerOverOwnWindow();
  void watchButtons();

  X11Connection& x11_;
  X11Keyboard& keyboard_;
  X11RawInput& rawInput_;
  std::set<KeyDownMonitor*> keyDownMonitors_;
  std::set<GlobalMouseDownMonitor*> globalMouseDownMonitors_;
  std::set<LocalMouseDownMonitor*> localMouseDownMonitors_;
  Subscription buttonPresses_;
};

}  // namespace brimlo
