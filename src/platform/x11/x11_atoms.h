#pragma once

#include <xcb/xcb.h>

namespace brimlo {

/// The atoms of the selection protocol (ICCCM, section 2) and of the conventions around it.
struct X11Atoms {
  xcb_atom_t clipboard;
  xcb_atom_t targets;
  xcb_atom_t timestamp;
  xcb_atom_t multiple;
  xcb_atom_t atomPair;
  xcb_atom_t incr;
  xcb_atom_t utf8String;
  xcb_atom_t text;
  xcb_atom_t compoundText;
  xcb_atom_t plainUtf8;
  xcb_atom_t plainUtf8Upper;
  xcb_atom_t plain;
  xcb_atom_t passwordHint;  ///< offered with contents that are secret
  xcb_atom_t transfer;      ///< the property that other clients put contents in
  xcb_atom_t clipboardManager;
  xcb_atom_t saveTargets;  ///< what the clipboard manager is asked to do
  xcb_atom_t null;         ///< the type of nothing
  xcb_atom_t stamp;        ///< the property changed to learn the server's time

  // Extended Window Manager Hints, and what belongs to them.
  xcb_atom_t activeWindow;
  xcb_atom_t currentDesktop;
  xcb_atom_t supportingWmCheck;
  xcb_atom_t wmDesktop;
  xcb_atom_t wmPid;
  xcb_atom_t wmState;

  // Startup notification: the first piece of a message, and the others.
  xcb_atom_t startupInfoBegin;
  xcb_atom_t startupInfo;

  /// Asks the server for all of them, in one exchange; waits for it.
  static X11Atoms intern(xcb_connection_t* xcb);
};

}  // namespace brimlo
