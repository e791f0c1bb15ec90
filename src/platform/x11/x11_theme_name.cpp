#include "platform/x11/x11_theme_name.h"

#include <cstdint>
#include <string_view>

#include "platform/freedesktop/xsettings.h"
#include "platform/x11/selection_owner.h"

namespace brimlo {

X11ThemeName::X11ThemeName(X11Connection& x11) : x11_(x11) {
  events_ = x11_.addEventHandler([this](const xcb_generic_event_t& event) {
    if ((event.response_type & 0x7F) != XCB_PROPERTY_NOTIFY) return;
    const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if (change.window == manager_ && change.atom == x11_.atoms().settings) read();
  });
  managerChanges_ = watchSelectionOwner(x11_, x11_.atoms().settingsManager,
                                        [this](const auto&) { findManager(); });
  findManager();
}

void X11ThemeName::findManager() {
  const auto cookie = xcb_get_selection_owner(x11_.xcb(), x11_.atoms().settingsManager);
  x11_.whenReplied<xcb_get_selection_owner_reply_t>(
      cookie.sequence, [this](const xcb_get_selection_owner_reply_t* reply) {
        manager_ = reply ? reply->owner : static_cast<xcb_window_t>(XCB_NONE);
        // When the manager is gone, its last theme stays in use.
        if (manager_ == XCB_NONE) return;
        const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(x11_.xcb(), manager_, XCB_CW_EVENT_MASK, &events);
        read();
      });
  x11_.flush();
}

void X11ThemeName::read() {
  constexpr std::uint32_t kMostWords = 65536;
  const xcb_atom_t settings = x11_.atoms().settings;
  const auto cookie = xcb_get_property(x11_.xcb(), 0, manager_, settings, settings, 0, kMostWords);
  x11_.whenReplied<xcb_get_property_reply_t>(
      cookie.sequence, [this](const xcb_get_property_reply_t* reply) {
        if (!reply || reply->format != 8) return;
        const std::string_view value(
            static_cast<const char*>(xcb_get_property_value(reply)),
            static_cast<std::size_t>(xcb_get_property_value_length(reply)));
        value_.set(xsettingsText(value, "Net/ThemeName"));
      });
  x11_.flush();
}

}  // namespace brimlo
