#pragma once

#include <xcb/xcb.h>

#include <deque>
#include <functional>

#include "platform/x11/x11_connection.h"

namespace brimlo {

/// The X server's clock. What changes the focus carries a time, and a request with an older time
/// than the last change loses. Main thread.
class X11Time {
 public:
  /// `x11` serves it from now on.
  explicit X11Time(X11Connection& x11);

  /// Asks the server for its time and calls `then` with it, from the run loop. The calls come in
  /// the order of the questions.
  void now(std::function<void(xcb_timestamp_t)> then);

 private:
  X11Connection& x11_;
  xcb_window_t window_;  // a change of its property is reported with the time
  std::deque<std::function<void(xcb_timestamp_t)>> asking_;
};

}  // namespace brimlo
