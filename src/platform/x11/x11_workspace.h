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

/// The applications of an X session: the active window (EWMH) and its class (ICCCM); without a
/// window manager, the top-level window that has the input focus.
class X11Workspace : public Workspace {
 public:
  /// Both outlive the object.
  X11Workspace(X11Connection& x11, X11Time& time);

  std::optional<RunningApplication> frontmostApplication() override;
  Activation activate(const RunningApplication& application) override;

  /// Has `frontmostApplication` answer as it does now, until `releaseFront`: while a panel has the
  /// focus, the server may no longer know which application was in front.
  void holdFront();
  void releaseFront();

  /// The client's top-level window that contains `window`, or is it; none when there is none.
  xcb_window_t topLevelOf(xcb_window_t window);

  /// Whether an override-redirect window of this process has the input focus.
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
