#include "platform/x11/x11_workspace.h"

#include <algorithm>
#include <string_view>

#include "platform/x11/x11_properties.h"
#include "platform/x11/x11_window_id.h"

namespace brimlo {

X11Workspace::X11Workspace(X11Connection& x11, X11Time& time) : x11_(x11), time_(time) {}

std::optional<RunningApplication> X11Workspace::frontmostApplication() {
  if (held_) return *held_;
  const xcb_window_t window = frontWindow();
  if (window == XCB_NONE || isOwnWindow(x11_, window)) return std::nullopt;
  // WM_CLASS holds two NUL-terminated strings: the instance's name and the class.
  constexpr std::uint32_t kLongest = 256;
  const auto reply = x11_.waitFor(
      xcb_get_property_reply,
      xcb_get_property(x11_.xcb(), 0, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 0, kLongest));
  RunningApplication application;
  application.window = windowId(window);
  if (reply) {
    std::string_view names(static_cast<const char*>(xcb_get_property_value(reply.get())),
                           static_cast<std::size_t>(xcb_get_property_value_length(reply.get())));
    names.remove_prefix(std::min(names.size(), names.find('\0') + 1));
    application.bundleIdentifier = names.substr(0, names.find('\0'));
  }
  return application;
}

Workspace::Activation X11Workspace::activate(const RunningApplication& application) {
  const xcb_window_t window = xcbWindow(application.window);
  const auto attributes =
      x11_.waitFor(xcb_get_window_attributes_reply, xcb_get_window_attributes(x11_.xcb(), window));
  if (!attributes) return Activation::kGone;
  time_.now(anchor_.guard([this, window](xcb_timestamp_t time) { activateAt(window, time); }));
  return Activation::kAsked;
}

void X11Workspace::holdFront() {
  if (!held_) held_ = frontmostApplication();
}

void X11Workspace::releaseFront() {
  held_.reset();
}

bool X11Workspace::ownPanelInFront() {
  const xcb_window_t window = focusedTopLevel();
  if (window == XCB_NONE || !isOwnWindow(x11_, window)) return false;
  const auto attributes =
      x11_.waitFor(xcb_get_window_attributes_reply, xcb_get_window_attributes(x11_.xcb(), window));
  return attributes && attributes->override_redirect;
}

void X11Workspace::activateAt(xcb_window_t window, xcb_timestamp_t time) {
  if (!hasWindowManager()) {
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_map_window(x11_.xcb(), window);
    xcb_configure_window(x11_.xcb(), window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    xcb_set_input_focus(x11_.xcb(), XCB_INPUT_FOCUS_PARENT, window, time);
    return x11_.flush();
  }
  // Some window managers do not switch desktops when a window on another one is activated.
  constexpr std::uint32_t kAllDesktops = 0xFFFFFFFF;
  const auto desktop = numberProperty(x11_, window, x11_.atoms().wmDesktop, XCB_ATOM_CARDINAL);
  const auto current =
      numberProperty(x11_, x11_.root(), x11_.atoms().currentDesktop, XCB_ATOM_CARDINAL);
  if (desktop && *desktop != kAllDesktops && desktop != current) {
    askManager(x11_.root(), x11_.atoms().currentDesktop, {*desktop, time});
  }
  // The source indication of a pager says that the person has chosen the window, so focus-stealing
  // prevention does not apply.
  constexpr std::uint32_t kFromPager = 2;
  askManager(window, x11_.atoms().activeWindow, {kFromPager, time});
  x11_.flush();
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
  // Not the focus: while no client is active, a helper window of the manager has it.
  return numberProperty(x11_, x11_.root(), x11_.atoms().activeWindow, XCB_ATOM_WINDOW)
      .value_or(static_cast<std::uint32_t>(XCB_NONE));
}

xcb_window_t X11Workspace::focusedTopLevel() {
  const auto focus = x11_.waitFor(xcb_get_input_focus_reply, xcb_get_input_focus(x11_.xcb()));
  return focus ? topLevelOf(focus->focus) : static_cast<xcb_window_t>(XCB_NONE);
}

xcb_window_t X11Workspace::topLevelOf(xcb_window_t window) {
  // The focus may also be None or PointerRoot, which are no windows.
  if (window <= XCB_INPUT_FOCUS_POINTER_ROOT || window == x11_.root()) return XCB_NONE;
  for (;;) {
    // A window manager sets WM_STATE on the client's top-level window, inside its own frame.
    if (numberProperty(x11_, window, x11_.atoms().wmState, XCB_GET_PROPERTY_TYPE_ANY))
      return window;
    const auto tree = x11_.waitFor(xcb_query_tree_reply, xcb_query_tree(x11_.xcb(), window));
    if (!tree || tree->parent == XCB_NONE || tree->parent == x11_.root()) return window;
    window = tree->parent;
  }
}

bool X11Workspace::hasWindowManager() {
  const auto check =
      numberProperty(x11_, x11_.root(), x11_.atoms().supportingWmCheck, XCB_ATOM_WINDOW);
  // The root's property outlives a manager that crashed; the window that it names, which carries
  // the property too, does not.
  return check &&
         numberProperty(x11_, *check, x11_.atoms().supportingWmCheck, XCB_ATOM_WINDOW) == check;
}

}  // namespace brimlo
