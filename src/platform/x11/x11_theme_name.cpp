#include "platform/x11/x11_theme_name.h"

#include <xcb/xfixes.h>

#include <cstdint>
#include <optional>

namespace brimlo {
namespace {

/// Takes the parts of the property one after the other; nothing once it is at its end.
class Parts {
 public:
  explicit Parts(std::string_view bytes) : rest_(bytes) {}

  std::optional<std::string_view> take(std::size_t size) {
    if (size > rest_.size()) return std::nullopt;
    const std::string_view part = rest_.substr(0, size);
    rest_.remove_prefix(size);
    return part;
  }

  std::optional<std::uint32_t> number(std::size_t size) {
    const auto bytes = take(size);
    if (!bytes) return std::nullopt;
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < size; ++i) {
      const std::size_t place = bigEndian ? size - 1 - i : i;
      value |= std::uint32_t{static_cast<unsigned char>((*bytes)[i])} << (8 * place);
    }
    return value;
  }

  /// A text, and what fills it up to a multiple of four bytes.
  std::optional<std::string_view> text(std::size_t size) {
    const auto part = take(size);
    take((4 - size % 4) % 4);
    return part;
  }

  bool bigEndian = false;

 private:
  std::string_view rest_;
};

}  // namespace

std::string xsettingsText(std::string_view settings, std::string_view name) {
  constexpr std::uint32_t kNumber = 0, kText = 1, kColor = 2;
  Parts parts(settings);
  parts.bigEndian = parts.number(1) == 1U;
  parts.take(3);
  parts.number(4);  // its serial
  const std::uint32_t count = parts.number(4).value_or(0);
  for (std::uint32_t i = 0; i < count; ++i) {
    const auto type = parts.number(1);
    parts.take(1);
    const auto length = parts.number(2);
    const auto found = length ? parts.text(*length) : std::nullopt;
    if (!found || !parts.number(4)) return {};
    if (type == kText) {
      const auto size = parts.number(4);
      const auto text = size ? parts.text(*size) : std::nullopt;
      if (!text) return {};
      if (found == name) return std::string(*text);
    } else if (type == kNumber || type == kColor) {
      parts.take(type == kNumber ? 4 : 8);
    } else {
      return {};
    }
  }
  return {};
}

X11ThemeName::X11ThemeName(X11Connection& x11) : x11_(x11) {
  const auto intern = [&](const std::string& name) {
    const auto atom = x11_.waitFor(
        xcb_intern_atom_reply,
        xcb_intern_atom(x11_.xcb(), 0, static_cast<std::uint16_t>(name.size()), name.data()));
    return atom ? atom->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
  };
  std::string selection = "_XSETTINGS_S";
  selection += std::to_string(x11_.screen());
  selection_ = intern(selection);
  settings_ = intern("_XSETTINGS_SETTINGS");
  x11_.addEventHandler([this](const xcb_generic_event_t& event) { handle(event); });
  xcb_xfixes_select_selection_input(x11_.xcb(), x11_.root(), selection_,
                                    XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                        XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                        XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
  findManager();
}

void X11ThemeName::handle(const xcb_generic_event_t& event) {
  const std::uint8_t type = event.response_type & 0x7F;
  if (type == x11_.xfixesFirstEvent() + XCB_XFIXES_SELECTION_NOTIFY) {
    const auto& change = reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event);
    if (change.selection == selection_) findManager();
  } else if (type == XCB_PROPERTY_NOTIFY) {
    const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if (change.window == manager_ && change.atom == settings_) read();
  }
}

void X11ThemeName::findManager() {
  const auto cookie = xcb_get_selection_owner(x11_.xcb(), selection_);
  x11_.whenReplied<xcb_get_selection_owner_reply_t>(
      cookie.sequence, [this](const xcb_get_selection_owner_reply_t* reply) {
        manager_ = reply ? reply->owner : static_cast<xcb_window_t>(XCB_NONE);
        // Where it is gone, the desktop keeps looking as it did.
        if (manager_ == XCB_NONE) return;
        const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(x11_.xcb(), manager_, XCB_CW_EVENT_MASK, &events);
        read();
      });
  x11_.flush();
}

void X11ThemeName::read() {
  constexpr std::uint32_t kMostWords = 65536;
  const auto cookie =
      xcb_get_property(x11_.xcb(), 0, manager_, settings_, settings_, 0, kMostWords);
  x11_.whenReplied<xcb_get_property_reply_t>(
      cookie.sequence, [this](const xcb_get_property_reply_t* reply) {
        if (!reply || reply->format != 8) return;
        const std::string_view settings(
            static_cast<const char*>(xcb_get_property_value(reply)),
            static_cast<std::size_t>(xcb_get_property_value_length(reply)));
        value_.set(xsettingsText(settings, "Net/ThemeName"));
      });
  x11_.flush();
}

}  // namespace brimlo
