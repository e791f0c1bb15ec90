#pragma once

#include <xcb/xcb.h>

#include <array>
#include <string_view>
#include <vector>

#include "platform/freedesktop/text_types.h"

namespace brimlo {

/// Every atom that the program uses.
struct X11Atoms {
  // Selections (ICCCM, section 2), and the clipboard manager convention.
  xcb_atom_t clipboard;
  xcb_atom_t targets;
  xcb_atom_t timestamp;
  xcb_atom_t multiple;
  xcb_atom_t atomPair;
  xcb_atom_t incr;
  xcb_atom_t null;
  xcb_atom_t clipboardManager;
  xcb_atom_t saveTargets;
  xcb_atom_t secretHint;
  xcb_atom_t transfer;  ///< the property that this program has selections converted into
  xcb_atom_t stamp;     ///< the property that is changed to learn the server's time

  // Window managers (EWMH; WM_STATE is ICCCM, section 4.1.3.1).
  xcb_atom_t activeWindow;
  xcb_atom_t currentDesktop;
  xcb_atom_t supportingWmCheck;
  xcb_atom_t wmDesktop;
  xcb_atom_t wmPid;
  xcb_atom_t wmState;

  // Startup notification: the types of a message's first piece and of its others.
  xcb_atom_t startupInfoBegin;
  xcb_atom_t startupInfo;

  // The other managers of the screen.
  xcb_atom_t compositingManager;  ///< the selection that a compositing manager owns
  xcb_atom_t settingsManager;     ///< the selection that the XSETTINGS manager owns
  xcb_atom_t settings;            ///< the property of the manager's window that has the settings

  std::array<xcb_atom_t, kTextTypes.size()> textTypes;  ///< in the order of `kTextTypes`

  /// The atom of a type in `kTextTypes`.
  xcb_atom_t textType(std::string_view name) const;
  /// The type in `kTextTypes` that `atom` stands for; empty when there is none.
  std::string_view textTypeName(xcb_atom_t atom) const;
  /// The atoms of `kOfferedTextTypes`.
  std::vector<xcb_atom_t> offeredTextTypes() const;

  /// Asks the server for all of them at once, and waits for it.
  static X11Atoms intern(xcb_connection_t* xcb, int screen);
};

}  // namespace brimlo
