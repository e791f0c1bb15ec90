#include "platform/x11/x11_properties.h"

#include <unistd.h>

#include <cstring>

namespace brimlo {

std::optional<std::uint32_t> numberProperty(X11Connection& x11, xcb_window_t window,
                                            xcb_atom_t property, xcb_atom_t type) {
  const auto reply = x11.waitFor(xcb_get_property_reply,
                                 xcb_get_property(x11.xcb(), 0, window, property, type, 0, 1));
  if (!reply || reply->format != 32 || xcb_get_property_value_length(reply.get()) < 4) {
    return std::nullopt;
  }
  std::uint32_t value;
  std::memcpy(&value, xcb_get_property_value(reply.get()), sizeof value);
  return value;
}

bool isOwnWindow(X11Connection& x11, xcb_window_t window) {
  return numberProperty(x11, window, x11.atoms().wmPid, XCB_ATOM_CARDINAL) ==
         static_cast<std::uint32_t>(getpid());
}

}  // namespace brimlo
