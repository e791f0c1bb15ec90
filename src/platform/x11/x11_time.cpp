#include "platform/x11/x11_time.h"

#include <utility>

namespace brimlo {

X11Time::X11Time(X11Connection& x11) : x11_(x11), window_(x11, XCB_EVENT_MASK_PROPERTY_CHANGE) {
  events_ = x11_.addEventHandler([this](const xcb_generic_event_t& event) {
    if ((event.response_type & 0x7F) != XCB_PROPERTY_NOTIFY) return;
    const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if (change.window != window_.id() || asking_.empty()) return;
    const auto then = std::move(asking_.front());
    asking_.pop_front();
    then(change.time);
  });
}

void X11Time::now(std::function<void(xcb_timestamp_t)> then) {
  asking_.push_back(std::move(then));
  xcb_change_property(x11_.xcb(), XCB_PROP_MODE_APPEND, window_.id(), x11_.atoms().stamp,
                      XCB_ATOM_INTEGER, 32, 0, nullptr);
  x11_.flush();
}

}  // namespace brimlo
