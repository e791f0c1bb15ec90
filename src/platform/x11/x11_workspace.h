#pragma once

#include <xcb/xcb.h>

#include <array>
#include <cstdint>
#include <optional>

#include "base/weak_anchor.h"
#include "platform/workspace.h"
#include "platform/x11/x11_connection.h"
#include "platform/x11/x11_time.h"

namespace brimlo {

/// The applications of an X session: the active window and its class, as the window manager has
/// them (ICCCM and EWMH); where there is none, the window that has the focus.
class X11Workspace : public Workspace {
 public:
  /// Both outlive the object.
  X11Workspace(X11Connection& x11, X11Time& time);

  std::optional<RunningApplication> frontmostApplication() override;
  Activation activate(const RunningApplication& application) override;

  /// Has `frontmostApplication` answer as it does now, until `releaseFront`. While a panel has the
  /// keyboard, nothing on the server need tell any more which application was in front.
  void holdFront();
  void releaseFront();

  /// The window of an application that `window` is in or is; none when it is in no window.
  xcb_window_t topLevelOf(xcb_window_t window);

  /// Whether the keyboard goes to a window of this process that no window manager manages.
  bool ownPanelInFront();

 private:
  xcb_window_t frontWindow();
  xcb_window_t focusedTopLevel();
  bool hasWindowManager();
  void activateAt(xcb_window_t window, xcb_timestamp_t time);
  void askManager(xcb_window_t window, xcb_atom_t what, std::array<std::uint32_t, 2> data);

  X11Connection& x11_;
  X11Time& time_;
  std::optional<std::optional<RunningApplication>> held_;
  WeakAnchor anchor_;
};

}  // namespace brimlo
