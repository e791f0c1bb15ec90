#include "platform/x11/x11_window_server.h"

#include <utility>

#include "platform/x11/selection_owner.h"
#include "platform/x11/x11_window_id.h"

namespace brimlo {

X11WindowServer::X11WindowServer(X11Connection& x11, X11Time& time, X11Workspace& workspace)
    : x11_(x11), workspace_(workspace), time_(time) {
  events_ = x11_.addEventHandler([this](const xcb_generic_event_t& event) { handle(event); });
}

void X11WindowServer::takeKeyboard(xcb_window_t window, std::function<void()> onLost) {
  const auto lost = std::exchange(onLost_, std::move(onLost));
  if (window == window_ && state_ != State::kIdle) return;
  // Another of this program's windows has it; the new one takes it from the same application.
  if (state_ == State::kHasKeyboard && hasFocus()) restoreFocus();
  if (state_ != State::kIdle) workspace_.releaseFront();
  window_ = window;
  state_ = State::kUntilMapped;
  const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_FOCUS_CHANGE;
  xcb_change_window_attributes(x11_.xcb(), window_, XCB_CW_EVENT_MASK, &events);
  if (isViewable(window_)) onMapped();
  if (lost) lost();
}

void X11WindowServer::giveKeyboardBack(xcb_window_t window) {
  if (window != window_) return;
  const State was = std::exchange(state_, State::kIdle);
  onLost_ = nullptr;
  if (was == State::kHasKeyboard && hasFocus()) restoreFocus();
  workspace_.releaseFront();
}

bool X11WindowServer::isCompositing() {
  return selectionOwner(x11_, x11_.atoms().compositingManager) != XCB_NONE;
}

void X11WindowServer::handle(const xcb_generic_event_t& event) {
  switch (event.response_type & 0x7F) {
    case XCB_MAP_NOTIFY:
      if (state_ == State::kUntilMapped &&
          reinterpret_cast<const xcb_map_notify_event_t&>(event).window == window_) {
        onMapped();
      }
      break;
    case XCB_UNMAP_NOTIFY:
      if (state_ != State::kIdle &&
          reinterpret_cast<const xcb_unmap_notify_event_t&>(event).window == window_) {
        onUnmapped();
      }
      break;
    case XCB_DESTROY_NOTIFY:
      if (reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window == window_) {
        state_ = State::kIdle;
        window_ = XCB_NONE;
        workspace_.releaseFront();
      }
      break;
    case XCB_FOCUS_OUT:
      onFocusOut(reinterpret_cast<const xcb_focus_out_event_t&>(event));
      break;
    default:
      break;
  }
}

void X11WindowServer::onMapped() {
  state_ = State::kUntilTime;
  time_.now(anchor_.guard([this, window = window_](xcb_timestamp_t time) {
    if (state_ == State::kUntilTime && window == window_) takeAt(time);
  }));
}

void X11WindowServer::onUnmapped() {
  const State was = std::exchange(state_, State::kUntilMapped);
  // If it is viewable again already, MapNotify follows, and it takes the focus anew.
  if (was == State::kHasKeyboard && !isViewable(window_)) lose();
}

void X11WindowServer::takeAt(xcb_timestamp_t time) {
  const auto focus = x11_.waitFor(xcb_get_input_focus_reply, xcb_get_input_focus(x11_.xcb()));
  if (focus && focus->focus != window_) {
    before_ = focus->focus;
    beforeRevertsTo_ = focus->revert_to;
    workspace_.holdFront();
    // While the window manager switches clients, one of its own windows has the focus.
    const auto front = workspace_.frontmostApplication();
    if (front && workspace_.topLevelOf(before_) != xcbWindow(front->window)) {
      before_ = xcbWindow(front->window);
    }
  }
  takenAt_ = time;
  xcb_set_input_focus(x11_.xcb(), XCB_INPUT_FOCUS_PARENT, window_, time);
  if (hasFocus()) {
    state_ = State::kHasKeyboard;
  } else if (isViewable(window_)) {
    lose();  // to a client whose request had a later time
  } else {
    state_ = State::kUntilMapped;
  }
}

void X11WindowServer::onFocusOut(const xcb_focus_out_event_t& event) {
  // A keyboard grab, such as a hotkey's, does not change the input focus.
  const bool grabbed = event.mode == XCB_NOTIFY_MODE_GRAB || event.mode == XCB_NOTIFY_MODE_UNGRAB;
  const bool within =
      event.detail == XCB_NOTIFY_DETAIL_INFERIOR || event.detail == XCB_NOTIFY_DETAIL_POINTER;
  if (event.event != window_ || state_ != State::kHasKeyboard || grabbed || within) return;
  lose();
}

void X11WindowServer::lose() {
  state_ = State::kIdle;
  workspace_.releaseFront();
  if (const auto lost = std::exchange(onLost_, nullptr)) lost();
}

/// Uses the time at which the focus was taken, so that any later choice of the person wins, even
/// one that the window manager has yet to carry out.
void X11WindowServer::restoreFocus() {
  const bool isWindow = before_ > XCB_INPUT_FOCUS_POINTER_ROOT;
  const bool there = !isWindow || isViewable(before_);
  if (!there) {
    before_ = XCB_INPUT_FOCUS_POINTER_ROOT;
    beforeRevertsTo_ = XCB_INPUT_FOCUS_POINTER_ROOT;
  }
  xcb_set_input_focus(x11_.xcb(), beforeRevertsTo_, before_, takenAt_);
  if (!there) {
    if (const auto front = workspace_.frontmostApplication()) workspace_.activate(*front);
  }
  // A round trip: the window may be hidden, on another connection, once the server has done it.
  hasFocus();
}

bool X11WindowServer::hasFocus() {
  const auto focus = x11_.waitFor(xcb_get_input_focus_reply, xcb_get_input_focus(x11_.xcb()));
  return focus && focus->focus == window_;
}

bool X11WindowServer::isViewable(xcb_window_t window) {
  const auto attributes =
      x11_.waitFor(xcb_get_window_attributes_reply, xcb_get_window_attributes(x11_.xcb(), window));
  return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
}

}  // namespace brimlo
