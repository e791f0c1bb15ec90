#include "platform/x11/x11_atoms.h"

#include <array>
#include <string_view>
#include <utility>

#include "platform/x11/x11_connection.h"

namespace brimlo {

X11Atoms X11Atoms::intern(xcb_connection_t* xcb) {
  constexpr std::pair<xcb_atom_t X11Atoms::*, std::string_view> kNames[] = {
      {&X11Atoms::clipboard, "CLIPBOARD"},
      {&X11Atoms::targets, "TARGETS"},
      {&X11Atoms::timestamp, "TIMESTAMP"},
      {&X11Atoms::multiple, "MULTIPLE"},
      {&X11Atoms::atomPair, "ATOM_PAIR"},
      {&X11Atoms::incr, "INCR"},
      {&X11Atoms::utf8String, "UTF8_STRING"},
      {&X11Atoms::text, "TEXT"},
      {&X11Atoms::compoundText, "COMPOUND_TEXT"},
      {&X11Atoms::plainUtf8, "text/plain;charset=utf-8"},
      {&X11Atoms::plainUtf8Upper, "text/plain;charset=UTF-8"},
      {&X11Atoms::plain, "text/plain"},
      {&X11Atoms::passwordHint, "x-kde-passwordManagerHint"},
      {&X11Atoms::transfer, "BRIMLO_TRANSFER"},
      {&X11Atoms::clipboardManager, "CLIPBOARD_MANAGER"},
      {&X11Atoms::saveTargets, "SAVE_TARGETS"},
      {&X11Atoms::null, "NULL"},
      {&X11Atoms::stamp, "BRIMLO_STAMP"},
      {&X11Atoms::activeWindow, "_NET_ACTIVE_WINDOW"},
      {&X11Atoms::supportingWmCheck, "_NET_SUPPORTING_WM_CHECK"},
      {&X11Atoms::currentDesktop, "_NET_CURRENT_DESKTOP"},
      {&X11Atoms::wmDesktop, "_NET_WM_DESKTOP"},
      {&X11Atoms::wmPid, "_NET_WM_PID"},
      {&X11Atoms::wmState, "WM_STATE"},
      {&X11Atoms::startupInfoBegin, "_NET_STARTUP_INFO_BEGIN"},
      {&X11Atoms::startupInfo, "_NET_STARTUP_INFO"},
  };
  std::array<xcb_intern_atom_cookie_t, std::size(kNames)> cookies;
  for (std::size_t i = 0; i < cookies.size(); ++i) {
    const std::string_view name = kNames[i].second;
    cookies[i] = xcb_intern_atom(xcb, 0, static_cast<std::uint16_t>(name.size()), name.data());
  }
  X11Atoms atoms{};
  for (std::size_t i = 0; i < cookies.size(); ++i) {
    const XcbPtr<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(xcb, cookies[i], nullptr));
    atoms.*kNames[i].first = reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
  }
  return atoms;
}

}  // namespace brimlo
