#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>

#include "platform/x11/x11_connection.h"

namespace brimlo {

/// The first number of a window's property. None where it has none, or one that is no number.
std::optional<std::uint32_t> numberProperty(X11Connection& x11, xcb_window_t window,
                                            xcb_atom_t property, xcb_atom_t type);

/// Whether `window` says that it is one of this process.
bool isOwnWindow(X11Connection& x11, xcb_window_t window);

}  // namespace brimlo
