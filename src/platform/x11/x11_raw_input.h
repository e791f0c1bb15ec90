#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <functional>

#include "base/observer_list.h"
#include "platform/x11/x11_connection.h"

namespace brimlo {

/// Raw events of the X Input extension: what the devices report, whichever window it is for and
/// whichever client has grabbed them. They are asked for only while there is a handler. Main
/// thread.
class X11RawInput {
 public:
  explicit X11RawInput(X11Connection& x11);

  /// Whether the server has such events; without them, no handler is ever called.
  bool isAvailable() const { return x11_.xinputOpcode() != 0; }

  Subscription addButtonPressHandler(std::function<void(std::uint32_t button)> onButtonPress);
  Subscription addKeyReleaseHandler(std::function<void(xcb_keycode_t key)> onKeyRelease);

 private:
  void select();

  X11Connection& x11_;
  ObserverList<std::uint32_t> buttonPressHandlers_{[this] { select(); }};
  ObserverList<xcb_keycode_t> keyReleaseHandlers_{[this] { select(); }};
  Subscription events_;
};

}  // namespace brimlo
