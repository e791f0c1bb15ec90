#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <functional>

#include "platform/x11/window_server.h"
#include "platform/x11/x11_connection.h"
#include "platform/x11/x11_time.h"
#include "platform/x11/x11_workspace.h"

namespace brimlo {

/// The X server's input focus, for windows that the window manager leaves alone
/// (override-redirect), and so gives no focus to. One window at a time.
class X11WindowServer : public WindowServer {
 public:
  /// Both outlive the object, and `x11` serves it from now on.
  X11WindowServer(X11Connection& x11, X11Workspace& workspace);

  void takeKeyboard(std::uint64_t window, std::function<void()> onLost) override;
  void giveKeyboardBack(std::uint64_t window) override;
  bool isCompositing() override;

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
  X11Time time_;
  xcb_atom_t compositingManager_;
  State state_ = State::kIdle;
  xcb_window_t window_ = XCB_NONE;
  xcb_window_t before_ = XCB_NONE;  // what had the focus
  std::uint8_t beforeRevertsTo_ = XCB_INPUT_FOCUS_PARENT;
  xcb_timestamp_t takenAt_ = 0;
  std::function<void()> onLost_;
};

}  // namespace brimlo
