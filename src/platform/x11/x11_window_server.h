#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <functional>

#include "base/published.h"
#include "base/weak_anchor.h"
#include "platform/x11/x11_connection.h"
#include "platform/x11/x11_time.h"
#include "platform/x11/x11_workspace.h"

namespace brimlo {

/// Gives the input focus to override-redirect windows, to which no window manager gives it, and
/// back again. One window at a time. Main thread.
class X11WindowServer {
 public:
  /// All of it outlives the object.
  X11WindowServer(X11Connection& x11, X11Time& time, X11Workspace& workspace);

  /// Sets the input focus to `window`, one of this program's, as soon as it is on screen. Calls
  /// `onLost` once when anything but `giveKeyboardBack` takes the focus away: from the run loop, or
  /// from within `takeKeyboard` for another window. The grab of a pressed hotkey does not count.
  /// For a window that has the focus already, only `onLost` is replaced.
  void takeKeyboard(xcb_window_t window, std::function<void()> onLost);

  /// Sets the input focus back to where `window` took it from, if `window` still has it; otherwise
  /// `window` only ceases to wait for it. A window that the person has chosen meanwhile keeps the
  /// focus. When this returns the server has done it, so that `window` may be hidden.
  void giveKeyboardBack(xcb_window_t window);

  /// Whether a compositing manager runs, so that translucent windows show what is behind them.
  bool isCompositing();

 private:
  enum class State {
    kIdle,
    kUntilMapped,  // the window is not on screen yet
    kUntilTime,    // the server has been asked for its time
    kHasKeyboard,
  };

  void handle(const xcb_generic_event_t& event);
  void onMapped();
  void onUnmapped();
  void takeAt(xcb_timestamp_t time);
  void onFocusOut(const xcb_focus_out_event_t& event);
  void lose();
  void restoreFocus();
  bool hasFocus();
  bool isViewable(xcb_window_t window);

  X11Connection& x11_;
  X11Workspace& workspace_;
  X11Time& time_;
  State state_ = State::kIdle;
  xcb_window_t window_ = XCB_NONE;
  xcb_window_t before_ = XCB_NONE;  // what had the focus before window_
  std::uint8_t beforeRevertsTo_ = XCB_INPUT_FOCUS_PARENT;
  xcb_timestamp_t takenAt_ = 0;
  std::function<void()> onLost_;
  Subscription events_;
  WeakAnchor anchor_;
};

}  // namespace brimlo
