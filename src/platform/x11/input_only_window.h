#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <utility>

#include "platform/x11/x11_connection.h"

namespace brimlo {

/// A window that is never on screen: other clients and the server send things to it. Destroyed with
/// the object. Move-only.
class InputOnlyWindow {
 public:
  /// `events`: the events that the server reports for it (`xcb_event_mask_t`). `x11` outlives it.
  InputOnlyWindow(X11Connection& x11, std::uint32_t events)
      : x11_(&x11), id_(xcb_generate_id(x11.xcb())) {
    xcb_create_window(x11.xcb(), XCB_COPY_FROM_PARENT, id_, x11.root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                      &events);
  }
  InputOnlyWindow(InputOnlyWindow&& other) noexcept
      : x11_(other.x11_), id_(std::exchange(other.id_, XCB_NONE)) {}
  InputOnlyWindow& operator=(InputOnlyWindow&& other) noexcept {
    std::swap(x11_, other.x11_);
    std::swap(id_, other.id_);
    return *this;
  }
  ~InputOnlyWindow() {
    if (id_ != XCB_NONE) xcb_destroy_window(x11_->xcb(), id_);
  }

  xcb_window_t id() const { return id_; }

 private:
  X11Connection* x11_;
  xcb_window_t id_;
};

}  // namespace brimlo
