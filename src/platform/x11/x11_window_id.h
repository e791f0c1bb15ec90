#pragma once

#include <xcb/xcb.h>

#include "platform/window_id.h"

namespace brimlo {

/// In an X session a window's id is its number on the server.
inline WindowId windowId(xcb_window_t window) {
  return static_cast<WindowId>(window);
}
inline xcb_window_t xcbWindow(WindowId window) {
  return static_cast<xcb_window_t>(window);
}

}  // namespace brimlo
