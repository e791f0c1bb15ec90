#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>

#include "platform/x11/x11_connection.h"

namespace brimlo {

/// The first 32-bit value of a window's property; none where there is no such property of that
/// type. Waits for the server.
std::optional<std::uint32_t> numberProperty(X11Connection& x11, xcb_window_t window,
                                            xcb_atom_t property, xcb_atom_t type);

/// Whether `window` belongs to this process, by its _NET_WM_PID. Waits for the server.
bool isOwnWindow(X11Connection& x11, xcb_window_t window);

}  // namespace brimlo
