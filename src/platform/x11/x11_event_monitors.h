#pragma once

#include <xcb/xcb.h>

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <cstdint>
#include <functional>
#include <memory>

#include "base/observer_list.h"
#include "platform/event_monitors.h"
#include "platform/x11/x11_connection.h"
#include "platform/x11/x11_keyboard.h"
#include "platform/x11/x11_raw_input.h"

namespace brimlo {

/// Keys come from the toolkit, in order with what else is typed, once an input method has seen
/// them; the page keys come from the server, before an input method. Clicks on windows of this
/// program come from the toolkit, all others from the devices.
class X11EventMonitors : public EventMonitors, private QAbstractNativeEventFilter, private QObject {
 public:
  /// All of it outlives the object. Needs the running `QGuiApplication`.
  X11EventMonitors(X11Connection& x11, X11Keyboard& keyboard, X11RawInput& rawInput);

  std::unique_ptr<EventMonitor> addLocalKeyDownMonitor(
      std::function<bool(const KeyDownEvent&)> handler) override;
  std::unique_ptr<EventMonitor> addGlobalMouseDownMonitor(std::function<void()> handler) override;
  std::unique_ptr<EventMonitor> addLocalMouseDownMonitor(
      std::function<void(WindowId window)> handler) override;

 private:
  bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;
  bool eventFilter(QObject* receiver, QEvent* event) override;
  bool isConsumed(const KeyDownEvent& press);
  KeyDownEvent translated(xcb_keycode_t key, std::uint16_t state);
  bool pointerOverOwnWindow();

  X11Connection& x11_;
  X11Keyboard& keyboard_;
  X11RawInput& rawInput_;
  ObserverList<const KeyDownEvent&, bool&> keyDownHandlers_;  // the flag: consumed
  ObserverList<WindowId> mouseDownHandlers_;
};

}  // namespace brimlo
