#include "platform/x11/x11_raw_input.h"

#include <xcb/xinput.h>

#include <utility>

namespace brimlo {

X11RawInput::X11RawInput(X11Connection& x11) : x11_(x11) {
  if (!isAvailable()) return;
  events_ = x11_.addEventHandler([this](const xcb_generic_event_t& event) {
    const auto& input = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
    if ((event.response_type & 0x7F) != XCB_GE_GENERIC || input.extension != x11_.xinputOpcode()) {
      return;
    }
    if (input.event_type == XCB_INPUT_RAW_BUTTON_PRESS) {
      const auto& press = reinterpret_cast<const xcb_input_raw_button_press_event_t&>(event);
      buttonPressHandlers_.notify(press.detail);
    } else if (input.event_type == XCB_INPUT_RAW_KEY_RELEASE) {
      const auto& release = reinterpret_cast<const xcb_input_raw_key_release_event_t&>(event);
      keyReleaseHandlers_.notify(static_cast<xcb_keycode_t>(release.detail));
    }
  });
}

Subscription X11RawInput::addButtonPressHandler(std::function<void(std::uint32_t)> onButtonPress) {
  return buttonPressHandlers_.add(std::move(onButtonPress));
}

Subscription X11RawInput::addKeyReleaseHandler(std::function<void(xcb_keycode_t)> onKeyRelease) {
  return keyReleaseHandlers_.add(std::move(onKeyRelease));
}

void X11RawInput::select() {
  if (!isAvailable()) return;
  struct {
    xcb_input_event_mask_t header{XCB_INPUT_DEVICE_ALL_MASTER, 1};
    std::uint32_t events = 0;
  } mask;
  if (!buttonPressHandlers_.empty()) mask.events |= XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS;
  if (!keyReleaseHandlers_.empty()) mask.events |= XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE;
  xcb_input_xi_select_events(x11_.xcb(), x11_.root(), 1, &mask.header);
  x11_.flush();
}

}  // namespace brimlo
