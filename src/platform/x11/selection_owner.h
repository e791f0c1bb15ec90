#pragma once

#include <xcb/xfixes.h>

#include <functional>

#include "base/published.h"
#include "platform/x11/x11_connection.h"

namespace brimlo {

/// The window that owns `selection`; none where nobody does. Waits for the server.
xcb_window_t selectionOwner(X11Connection& x11, xcb_atom_t selection);

/// Calls `onChange`, from the run loop, whenever `selection` gets another owner or loses its owner,
/// until the subscription ends.
Subscription watchSelectionOwner(
    X11Connection& x11, xcb_atom_t selection,
    std::function<void(const xcb_xfixes_selection_notify_event_t&)> onChange);

}  // namespace brimlo
