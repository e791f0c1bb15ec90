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

/// What a floating panel needs of the X server and the toolkit does not give it: the input focus
/// for windows that the window manager leaves alone (override-redirect), and so gives no focus to.
/// One window at a time. Main thread.
class X11WindowServer {
 public:
  /// All of it outlives the object.
  X11WindowServer(X11Connection& x11, X11Time& time, X11Workspace& workspace);

  /// Has the keyboard go to `window`, one of this program's, from when it is on screen on: at once,
  /// whatever a window manager thinks of that. `onLost` is called, from the run loop, once it goes
  /// elsewhere by anybody's doing but `giveKeyboardBack`, and from within this where another of
  /// this program's windows takes it; a hotkey that is pressed meanwhile does not count. For a
  /// window that has the keyboard already, only `onLost` is replaced.
  void takeKeyboard(xcb_window_t window, std::function<void()> onLost);

  /// Has the keyboard go to where `window` took it from, if `window` still has it; in any case
  /// `window` no longer waits for it. Returns when it has happened, so the window may be hidden.
  /// Somebody whom the person has meanwhile chosen wins.
  void giveKeyboardBack(xcb_window_t window);

  /// Whether the translucent parts of a window show what is behind it now.
  bool isCompositing();

 private:
  enum class State {
    kIdle,
    kUntilMapped,  // the window is not on screen yet
    kUntilTime,    // the server's time has been asked for
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
  xcb_window_t before_ = XCB_NONE;  // what had the focus
  std::uint8_t beforeRevertsTo_ = XCB_INPUT_FOCUS_PARENT;
  xcb_timestamp_t takenAt_ = 0;
  std::function<void()> onLost_;
  Subscription events_;
  WeakAnchor anchor_;
};

}  // namespace brimlo
