#pragma once

#include <xcb/xcb.h>

#include <deque>
#include <functional>

#include "base/published.h"
#include "platform/x11/input_only_window.h"
#include "platform/x11/x11_connection.h"

namespace brimlo {

/// The X server's time. Requests that set the input focus or a selection's owner carry a time, and
/// the server ignores one that is older than the last change. Main thread.
class X11Time {
 public:
  explicit X11Time(X11Connection& x11);

  /// Asks the server for its time and calls `then` with it, from the run loop. The calls come in
  /// the order of the requests.
  void now(std::function<void(xcb_timestamp_t)> then);

 private:
  X11Connection& x11_;
  InputOnlyWindow window_;  // appending nothing to its property brings an event with the time
  std::deque<std::function<void(xcb_timestamp_t)>> asking_;
  Subscription events_;
};

}  // namespace brimlo
