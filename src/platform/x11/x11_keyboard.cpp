#include "platform/x11/x11_keyboard.h"

#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon-x11.h>

#include <QTimer>
#include <utility>

#include "platform/x11/xcb_xkb.h"

namespace brimlo {
namespace {

constexpr std::uint16_t kGroupBits = 0x6000;  // in the state of a core event
constexpr int kGroupShift = 13;

}  // namespace

X11Keyboard::X11Keyboard(X11Connection& x11)
    : x11_(x11),
      context_(xkb_context_new(XKB_CONTEXT_NO_FLAGS)),
      changed_(std::make_unique<QTimer>()) {
  changed_->setSingleShot(true);
  QObject::connect(changed_.get(), &QTimer::timeout, changed_.get(),
                   [this] { changeHandlers_.notify(); });
  if (!isReadable()) return;
  constexpr std::uint16_t kEvents = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY |
                                    XCB_XKB_EVENT_TYPE_MAP_NOTIFY | XCB_XKB_EVENT_TYPE_STATE_NOTIFY;
  constexpr std::uint16_t kEveryPart = 0xFF;
  xcb_xkb_select_events_details_t details{};
  details.affectNewKeyboard = XCB_XKB_NKN_DETAIL_KEYCODES | XCB_XKB_NKN_DETAIL_GEOMETRY;
  details.newKeyboardDetails = details.affectNewKeyboard;
  details.affectState = XCB_XKB_STATE_PART_GROUP_STATE;
  details.stateDetails = details.affectState;
  xcb_xkb_select_events_aux(x11_.xcb(), XCB_XKB_ID_USE_CORE_KBD, kEvents, 0, 0, kEveryPart,
                            kEveryPart, &details);
  events_ = x11_.addEventHandler([this](const xcb_generic_event_t& event) { handle(event); });
  x11_.flush();
}

X11Keyboard::~X11Keyboard() = default;

std::uint32_t X11Keyboard::group() {
  if (!group_) {
    const auto state = x11_.waitFor(xcb_xkb_get_state_reply,
                                    xcb_xkb_get_state(x11_.xcb(), XCB_XKB_ID_USE_CORE_KBD));
    group_ = state ? state->group : 0;
  }
  return *group_;
}

std::optional<X11Keyboard::Place> X11Keyboard::find(xkb_keysym_t symbol) {
  xkb_keymap* const keys = map();
  if (!keys) return std::nullopt;
  const xkb_layout_index_t groups = xkb_keymap_num_layouts(keys);
  for (xkb_layout_index_t i = 0; i < groups; ++i) {
    const xkb_layout_index_t at = (group() + i) % groups;
    for (auto key = xkb_keymap_min_keycode(keys); key <= xkb_keymap_max_keycode(keys); ++key) {
      const xkb_keysym_t* symbols = nullptr;
      const xkb_layout_index_t groupsOfKey = xkb_keymap_num_layouts_for_key(keys, key);
      // A key with one group alone gives the same symbols in every group.
      const xkb_layout_index_t own = groupsOfKey == 1 ? 0 : at;
      if (own >= groupsOfKey) continue;
      const int count = xkb_keymap_key_get_syms_by_level(keys, key, own, 0, &symbols);
      if (count == 1 && symbols[0] == symbol) {
        return Place{static_cast<xcb_keycode_t>(key), groupsOfKey == 1 ? group() : at};
      }
    }
  }
  return std::nullopt;
}

std::optional<xcb_keycode_t> X11Keyboard::keyNamed(const char* name) {
  const xkb_keycode_t key = map() ? xkb_keymap_key_by_name(map(), name) : XKB_KEYCODE_INVALID;
  if (key == XKB_KEYCODE_INVALID) return std::nullopt;
  return static_cast<xcb_keycode_t>(key);
}

std::uint16_t X11Keyboard::modifiersOf(xkb_keysym_t symbol) {
  if (const auto known = modifiers_.find(symbol); known != modifiers_.end()) return known->second;
  const auto mapping =
      x11_.waitFor(xcb_get_modifier_mapping_reply, xcb_get_modifier_mapping(x11_.xcb()));
  if (!mapping || !map()) return 0;
  const xcb_keycode_t* keys = xcb_get_modifier_mapping_keycodes(mapping.get());
  const int count = xcb_get_modifier_mapping_keycodes_length(mapping.get());
  std::uint16_t modifiers = 0;
  for (int i = 0; i < count; ++i) {
    if (keys[i] != 0 && givesUnshifted(keys[i], symbol)) {
      modifiers |= static_cast<std::uint16_t>(1U << (i / mapping->keycodes_per_modifier));
    }
  }
  modifiers_[symbol] = modifiers;
  return modifiers;
}

X11Keyboard::Stroke X11Keyboard::lookUp(xcb_keycode_t key, std::uint16_t state,
                                        std::uint16_t modifiers) {
  if (!map()) return {};
  const std::unique_ptr<xkb_state, Unref<xkb_state_unref>> at(xkb_state_new(map()));
  xkb_state_update_mask(at.get(), state & modifiers, 0, 0, 0, 0,
                        (state & kGroupBits) >> kGroupShift);
  Stroke stroke;
  stroke.symbol = xkb_state_key_get_one_sym(at.get(), key);
  const int size = xkb_state_key_get_utf8(at.get(), key, nullptr, 0);
  stroke.text.resize(static_cast<std::size_t>(size) + 1);
  xkb_state_key_get_utf8(at.get(), key, stroke.text.data(), stroke.text.size());
  stroke.text.resize(static_cast<std::size_t>(size));
  return stroke;
}

Subscription X11Keyboard::addChangeHandler(std::function<void()> onChange) {
  return changeHandlers_.add(std::move(onChange));
}

void X11Keyboard::handle(const xcb_generic_event_t& event) {
  const std::uint8_t type = event.response_type & 0x7F;
  if (type != x11_.xkbFirstEvent() && type != XCB_MAPPING_NOTIFY) return;
  const std::uint8_t kind = event.pad0;  // every event of the extension has its kind there
  if (type == x11_.xkbFirstEvent() && kind == XCB_XKB_STATE_NOTIFY) {
    const auto& change = reinterpret_cast<const xcb_xkb_state_notify_event_t&>(event);
    if (group_ == change.group) return;
    group_ = change.group;
  } else {
    map_.reset();
    group_.reset();
    modifiers_.clear();
  }
  changed_->start(0);
}

xkb_keymap* X11Keyboard::map() {
  if (map_ || !isReadable() || !context_) return map_.get();
  const int device = xkb_x11_get_core_keyboard_device_id(x11_.xcb());
  if (device >= 0) {
    map_.reset(xkb_x11_keymap_new_from_device(context_.get(), x11_.xcb(), device,
                                              XKB_KEYMAP_COMPILE_NO_FLAGS));
  }
  x11_.flush();
  return map_.get();
}

bool X11Keyboard::givesUnshifted(xcb_keycode_t key, xkb_keysym_t symbol) {
  for (xkb_layout_index_t group = 0; group < xkb_keymap_num_layouts_for_key(map(), key); ++group) {
    const xkb_keysym_t* symbols = nullptr;
    if (xkb_keymap_key_get_syms_by_level(map(), key, group, 0, &symbols) == 1 &&
        symbols[0] == symbol) {
      return true;
    }
  }
  return false;
}

}  // namespace brimlo
