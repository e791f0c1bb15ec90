#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <functional>

#include "platform/x11/x11_connection.h"

namespace brimlo {

/// What the person does with keyboard and mouse, as it comes from the devices: whichever window it
/// is for, and whoever has grabbed them. Main thread.
class X11RawInput {
 public:
  /// `x11` serves it from now on.
  explicit X11RawInput(X11Connection& x11);

  /// Whether the server has such events.
  bool isAvailable() const { return x11_.xinputOpcode() != 0; }

  /// Has `onButtonPress` called for every press of a mouse button, by its number; null ends that.
  void setOnButtonPress(std::function<void(std::uint32_t button)> onButtonPress);

  /// Has `onKeyRelease` called for every key that is let go; null ends that.
  void setOnKeyRelease(std::function<void(xcb_keycode_t key)> onKeyRelease);

 private:
  void select();

  X11Connection& x11_;
  std::function<void(std::uint32_t)> onButtonPress_;
  std::function<void(xcb_keycode_t)> onKeyRelease_;
};

}  // namespace brimlo
