#include "platform/linux/x11_workspace.h"

#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <string_view>
#include <utility>

namespace brimlo {

X11Workspace::X11Workspace(X11Connection& x11) : x11_(x11), window_(xcb_generate_id(x11.xcb())) {
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_create_window(x11_.xcb(), XCB_COPY_FROM_PARENT, window_, x11_.root(), 0, 0, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
  x11_.addEventHandler([this](const xcb_generic_event_t& event) {
    if ((event.response_type & 0x7F) != XCB_PROPERTY_NOTIFY) return;
    const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if (change.window == window_) onTime(change.time);
  });
}

std::optional<RunningApplication> X11Workspace::frontmostApplication() {
  const xcb_window_t window = frontWindow();
  if (window == XCB_NONE || isOwn(window)) return std::nullopt;
  // WM_CLASS holds two strings, each ended by NUL: the instance's name and the class.
  constexpr std::uint32_t kLongest = 256;
  const auto reply = x11_.waitFor(
      xcb_get_property_reply,
      xcb_get_property(x11_.xcb(), 0, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 0, kLongest));
  RunningApplication application;
  application.window = window;
  if (reply) {
    std::string_view names(static_cast<const char*>(xcb_get_property_value(reply.get())),
                           static_cast<std::size_t>(xcb_get_property_value_length(reply.get())));
    names.remove_prefix(std::min(names.size(), names.find('\0') + 1));
    application.bundleIdentifier = names.substr(0, names.find('\0'));
  }
  return application;
}

Workspace::Activation X11Workspace::activate(const RunningApplication& application) {
  const auto window = static_cast<xcb_window_t>(application.window);
  const auto attributes =
      x11_.waitFor(xcb_get_window_attributes_reply, xcb_get_window_attributes(x11_.xcb(), window));
  if (!attributes) return Activation::kGone;
  activating_ = window;
  xcb_change_property(x11_.xcb(), XCB_PROP_MODE_APPEND, window_, x11_.atoms().stamp,
                      XCB_ATOM_INTEGER, 32, 0, nullptr);
  x11_.flush();
  return Activation::kAsked;
}

bool X11Workspace::ownWindowInFront() {
  // A panel may have the keyboard without the manager calling it active.
  const xcb_window_t window = focusedTopLevel();
  return window != XCB_NONE && isOwn(window);
}

void X11Workspace::onTime(xcb_timestamp_t time) {
  const xcb_window_t window = std::exchange(activating_, xcb_window_t{XCB_NONE});
  if (window == XCB_NONE) return;
  if (!hasWindowManager()) {
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_map_window(x11_.xcb(), window);
    xcb_configure_window(x11_.xcb(), window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    xcb_set_input_focus(x11_.xcb(), XCB_INPUT_FOCUS_PARENT, window, time);
    return;
  }
  // Not every manager goes to another desktop for a window that asks to be active.
  constexpr std::uint32_t kAllDesktops = 0xFFFFFFFF;
  const auto desktop = number(window, x11_.atoms().wmDesktop, XCB_ATOM_CARDINAL);
  const auto current = number(x11_.root(), x11_.atoms().currentDesktop, XCB_ATOM_CARDINAL);
  if (desktop && *desktop != kAllDesktops && desktop != current) {
    askManager(x11_.root(), x11_.atoms().currentDesktop, {*desktop, time});
  }
  // As a pager asks: the person has chosen that window, so the manager lets it have the focus.
  constexpr std::uint32_t kFromPager = 2;
  askManager(window, x11_.atoms().activeWindow, {kFromPager, time});
}

void X11Workspace::askManager(xcb_window_t window, xcb_atom_t what,
                              std::array<std::uint32_t, 2> data) {
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = window;
  message.type = what;
  std::copy(data.begin(), data.end(), message.data.data32);
  xcb_send_event(x11_.xcb(), 0, x11_.root(),
                 XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                 reinterpret_cast<const char*>(&message));
}

xcb_window_t X11Workspace::frontWindow() {
  if (!hasWindowManager()) return focusedTopLevel();
  // While no application is active, the focus is with some helper window of the manager's own.
  return number(x11_.root(), x11_.atoms().activeWindow, XCB_ATOM_WINDOW)
      .value_or(static_cast<std::uint32_t>(XCB_NONE));
}

xcb_window_t X11Workspace::focusedTopLevel() {
  const auto focus = x11_.waitFor(xcb_get_input_focus_reply, xcb_get_input_focus(x11_.xcb()));
  // The focus may also be nowhere, or wherever the pointer is; neither names an application.
  if (!focus || focus->focus <= XCB_INPUT_FOCUS_POINTER_ROOT || focus->focus == x11_.root()) {
    return XCB_NONE;
  }
  for (xcb_window_t window = focus->focus;;) {
    // A window manager that is no more has left its mark on the client's window.
    if (number(window, x11_.atoms().wmState, XCB_GET_PROPERTY_TYPE_ANY)) return window;
    const auto tree = x11_.waitFor(xcb_query_tree_reply, xcb_query_tree(x11_.xcb(), window));
    if (!tree || tree->parent == XCB_NONE || tree->parent == x11_.root()) return window;
    window = tree->parent;
  }
}

bool X11Workspace::hasWindowManager() {
  const auto check = number(x11_.root(), x11_.atoms().supportingWmCheck, XCB_ATOM_WINDOW);
  // The property outlives a manager that crashed; its window, which names itself, does not.
  return check && number(*check, x11_.atoms().supportingWmCheck, XCB_ATOM_WINDOW) == check;
}

bool X11Workspace::isOwn(xcb_window_t window) {
  return number(window, x11_.atoms().wmPid, XCB_ATOM_CARDINAL) ==
         static_cast<std::uint32_t>(getpid());
}

std::optional<std::uint32_t> X11Workspace::number(xcb_window_t window, xcb_atom_t property,
                                                  xcb_atom_t type) {
  const auto reply = x11_.waitFor(xcb_get_property_reply,
                                  xcb_get_property(x11_.xcb(), 0, window, property, type, 0, 1));
  if (!reply || reply->format != 32 || xcb_get_property_value_length(reply.get()) < 4) {
    return std::nullopt;
  }
  std::uint32_t value;
  std::memcpy(&value, xcb_get_property_value(reply.get()), sizeof value);
  return value;
}

}  // namespace brimlo
