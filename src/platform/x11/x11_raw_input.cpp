#include "platform/x11/x11_raw_input.h"

#include <xcb/xinput.h>

#include <utility>

namespace brimlo {

X11RawInput::X11RawInput(X11Connection& x11) : x11_(x11) {
  if (!isAvailable()) return;
  x11_.addEventHandler([this](const xcb_generic_event_t& event) {
    const auto& input = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
    if ((event.response_type & 0x7F) != XCB_GE_GENERIC || input.extension != x11_.xinputOpcode()) {
      return;
    }
    // A callback may replace itself.
    if (input.event_type == XCB_INPUT_RAW_BUTTON_PRESS) {
      const auto then = onButtonPress_;
      const auto& press = reinterpret_cast<const xcb_input_raw_button_press_event_t&>(event);
      if (then) then(press.detail);
    } else if (input.event_type == XCB_INPUT_RAW_KEY_RELEASE) {
      const auto then = onKeyRelease_;
      const auto& release = reinterpret_cast<const xcb_input_raw_key_release_event_t&>(event);
      if (then) then(static_cast<xcb_keycode_t>(release.detail));
    }
  });
}

void X11RawInput::setOnButtonPress(std::function<void(std::uint32_t)> onButtonPress) {
  onButtonPress_ = std::move(onButtonPress);
  select();
}

void X11RawInput::setOnKeyRelease(std::function<void(xcb_keycode_t)> onKeyRelease) {
  onKeyRelease_ = std::move(onKeyRelease);
  select();
}

void X11RawInput::select() {
  if (!isAvailable()) return;
  struct {
    xcb_input_event_mask_t header{XCB_INPUT_DEVICE_ALL_MASTER, 1};
    std::uint32_t events = 0;
  } mask;
  if (onButtonPress_) mask.events |= XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS;
  if (onKeyRelease_) mask.events |= XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE;
  xcb_input_xi_select_events(x11_.xcb(), x11_.root(), 1, &mask.header);
  x11_.flush();
}

}  // namespace brimlo
