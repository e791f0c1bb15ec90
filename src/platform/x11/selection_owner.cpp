#include "platform/x11/selection_owner.h"

#include <cstdint>
#include <utility>

namespace brimlo {

xcb_window_t selectionOwner(X11Connection& x11, xcb_atom_t selection) {
  const auto reply =
      x11.waitFor(xcb_get_selection_owner_reply, xcb_get_selection_owner(x11.xcb(), selection));
  return reply ? reply->owner : static_cast<xcb_window_t>(XCB_NONE);
}

Subscription watchSelectionOwner(
    X11Connection& x11, xcb_atom_t selection,
    std::function<void(const xcb_xfixes_selection_notify_event_t&)> onChange) {
  constexpr std::uint32_t kEveryChange = XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                         XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                         XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE;
  xcb_xfixes_select_selection_input(x11.xcb(), x11.root(), selection, kEveryChange);
  const int type = x11.xfixesFirstEvent() + XCB_XFIXES_SELECTION_NOTIFY;
  return x11.addEventHandler(
      [type, selection, onChange = std::move(onChange)](const xcb_generic_event_t& event) {
        const auto& change = reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event);
        if ((event.response_type & 0x7F) == type && change.selection == selection) onChange(change);
      });
}

}  // namespace brimlo
