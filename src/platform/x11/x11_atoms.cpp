#include "platform/x11/x11_atoms.h"

#include <algorithm>
#include <string>
#include <utility>

#include "platform/x11/xcb_ptr.h"

namespace brimlo {

X11Atoms X11Atoms::intern(xcb_connection_t* xcb, int screen) {
  const std::string compositing = "_NET_WM_CM_S" + std::to_string(screen);
  const std::string settings = "_XSETTINGS_S" + std::to_string(screen);
  X11Atoms atoms{};
  std::vector<std::pair<xcb_atom_t*, std::string_view>> wanted = {
      {&atoms.clipboard, "CLIPBOARD"},
      {&atoms.targets, "TARGETS"},
      {&atoms.timestamp, "TIMESTAMP"},
      {&atoms.multiple, "MULTIPLE"},
      {&atoms.atomPair, "ATOM_PAIR"},
      {&atoms.incr, "INCR"},
      {&atoms.null, "NULL"},
      {&atoms.clipboardManager, "CLIPBOARD_MANAGER"},
      {&atoms.saveTargets, "SAVE_TARGETS"},
      {&atoms.secretHint, kSecretHint},
      {&atoms.transfer, "BRIMLO_TRANSFER"},
      {&atoms.stamp, "BRIMLO_STAMP"},
      {&atoms.activeWindow, "_NET_ACTIVE_WINDOW"},
      {&atoms.currentDesktop, "_NET_CURRENT_DESKTOP"},
      {&atoms.supportingWmCheck, "_NET_SUPPORTING_WM_CHECK"},
      {&atoms.wmDesktop, "_NET_WM_DESKTOP"},
      {&atoms.wmPid, "_NET_WM_PID"},
      {&atoms.wmState, "WM_STATE"},
      {&atoms.startupInfoBegin, "_NET_STARTUP_INFO_BEGIN"},
      {&atoms.startupInfo, "_NET_STARTUP_INFO"},
      {&atoms.compositingManager, compositing},
      {&atoms.settingsManager, settings},
      {&atoms.settings, "_XSETTINGS_SETTINGS"},
  };
  for (std::size_t i = 0; i < kTextTypes.size(); ++i) {
    wanted.emplace_back(&atoms.textTypes[i], kTextTypes[i]);
  }
  std::vector<xcb_intern_atom_cookie_t> cookies;
  cookies.reserve(wanted.size());
  for (const auto& [atom, name] : wanted) {
    cookies.push_back(
        xcb_intern_atom(xcb, 0, static_cast<std::uint16_t>(name.size()), name.data()));
  }
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    const XcbPtr<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(xcb, cookies[i], nullptr));
    *wanted[i].first = reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
  }
  return atoms;
}

xcb_atom_t X11Atoms::textType(std::string_view name) const {
  const auto found = std::find(kTextTypes.begin(), kTextTypes.end(), name);
  return textTypes[static_cast<std::size_t>(found - kTextTypes.begin())];
}

std::string_view X11Atoms::textTypeName(xcb_atom_t atom) const {
  const auto found = std::find(textTypes.begin(), textTypes.end(), atom);
  if (found == textTypes.end()) return {};
  return kTextTypes[static_cast<std::size_t>(found - textTypes.begin())];
}

std::vector<xcb_atom_t> X11Atoms::offeredTextTypes() const {
  std::vector<xcb_atom_t> offered;
  offered.reserve(kOfferedTextTypes.size());
  for (const std::string_view name : kOfferedTextTypes) offered.push_back(textType(name));
  return offered;
}

}  // namespace brimlo
