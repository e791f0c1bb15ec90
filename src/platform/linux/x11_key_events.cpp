#include "platform/linux/x11_key_events.h"

#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon-x11.h>
#include <xkbcommon/xkbcommon.h>

#include <memory>
#include <utility>

#include "platform/linux/xcb_xkb.h"

namespace brimlo {
namespace {

using Steady = std::chrono::steady_clock;

template <auto release>
struct Unref {
  template <typename T>
  void operator()(T* object) const {
    release(object);
  }
};

/// The keyboard's layouts, as they are at this moment.
class Keymap {
 public:
  explicit Keymap(xcb_connection_t* xcb) : context_(xkb_context_new(XKB_CONTEXT_NO_FLAGS)) {
    const int device = xkb_x11_get_core_keyboard_device_id(xcb);
    if (!context_ || device < 0) return;
    map_.reset(
        xkb_x11_keymap_new_from_device(context_.get(), xcb, device, XKB_KEYMAP_COMPILE_NO_FLAGS));
    if (map_) state_.reset(xkb_x11_state_new_from_device(map_.get(), xcb, device));
  }

  explicit operator bool() const { return state_ != nullptr; }

  std::uint32_t group() const {
    return xkb_state_serialize_layout(state_.get(), XKB_STATE_LAYOUT_EFFECTIVE);
  }

  struct Place {
    xcb_keycode_t key;
    std::uint32_t group;
  };
  /// The key that gives `symbol` unshifted, in the current group or else in another.
  std::optional<Place> find(xkb_keysym_t symbol) const {
    const xkb_layout_index_t groups = xkb_keymap_num_layouts(map_.get());
    for (xkb_layout_index_t i = 0; i < groups; ++i) {
      const xkb_layout_index_t at = (group() + i) % groups;
      for (auto key = xkb_keymap_min_keycode(map_.get()); key <= xkb_keymap_max_keycode(map_.get());
           ++key) {
        const xkb_keysym_t* symbols = nullptr;
        const xkb_layout_index_t groupsOfKey = xkb_keymap_num_layouts_for_key(map_.get(), key);
        // A key with fewer groups than the keyboard has the same symbols in all of them.
        const xkb_layout_index_t own = groupsOfKey == 1 ? 0 : at;
        if (own >= groupsOfKey) continue;
        const int count = xkb_keymap_key_get_syms_by_level(map_.get(), key, own, 0, &symbols);
        if (count == 1 && symbols[0] == symbol) {
          return Place{static_cast<xcb_keycode_t>(key), groupsOfKey == 1 ? group() : at};
        }
      }
    }
    return std::nullopt;
  }

 private:
  std::unique_ptr<xkb_context, Unref<xkb_context_unref>> context_;
  std::unique_ptr<xkb_keymap, Unref<xkb_keymap_unref>> map_;
  std::unique_ptr<xkb_state, Unref<xkb_state_unref>> state_;
};

bool hasXtest(xcb_connection_t* xcb) {
  const xcb_query_extension_reply_t* xtest = xcb_get_extension_data(xcb, &xcb_test_id);
  return xtest && xtest->present;
}

bool hasXkb(xcb_connection_t* xcb) {
  return xkb_x11_setup_xkb_extension(
             xcb, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
             XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, nullptr, nullptr) != 0;
}

}  // namespace

X11KeyEvents::X11KeyEvents(X11Connection& x11, X11Workspace& workspace, X11Pasteboard& pasteboard,
                           MainQueue& queue, UserNotifications& notifications,
                           const LocalizedStrings& strings)
    : x11_(x11),
      workspace_(workspace),
      pasteboard_(pasteboard),
      queue_(queue),
      notifications_(notifications),
      strings_(strings),
      usable_(hasXtest(x11.xcb()) && hasXkb(x11.xcb())) {}

void X11KeyEvents::promptForTrust() {
  notifications_.deliver(strings_.text("accessibility.unavailable.title"),
                         strings_.text("accessibility.unavailable.body"));
}

void X11KeyEvents::post(const KeyEvent& down, const KeyEvent& up,
                        std::function<void(Result)> then) {
  const KeyEvent commandV{KeyEvent::kVirtualKeyV, true, KeyEvent::kCommandFlag};
  const KeyEvent released{KeyEvent::kVirtualKeyV, false, KeyEvent::kCommandFlag};
  if (!usable_ || down != commandV || up != released) return then(Result::kFailed);
  constexpr auto kPatience = std::chrono::milliseconds(500);
  postPaste(Steady::now() + kPatience, std::move(then));
}

void X11KeyEvents::postPaste(Steady::time_point until, std::function<void(Result)> then) {
  if (workspace_.ownWindowInFront()) {
    if (Steady::now() >= until) return then(Result::kFailed);
    constexpr auto kStep = std::chrono::milliseconds(10);
    queue_.asyncAfter(kStep, [this, until, then = std::move(then)] { postPaste(until, then); });
    return;
  }
  const auto front = workspace_.frontmostApplication();
  PasteChord chord = pasteChordFor(front ? front->bundleIdentifier : std::string());
  auto strokes = strokesFor(chord);
  if (!strokes) {
    // No layout has a V. Shift+Insert is on every keyboard and pastes nearly everywhere, in
    // terminals the PRIMARY selection.
    chord = PasteChord::kShiftInsert;
    strokes = strokesFor(chord);
  }
  if (!strokes) return then(Result::kFailed);
  if (chord != PasteChord::kShiftInsert) {
    type(*strokes);
    return then(Result::kPosted);
  }
  pasteboard_.offerAsPrimary([this, strokes = *strokes, then = std::move(then)] {
    type(strokes);
    then(Result::kPosted);
  });
}

std::optional<X11KeyEvents::Strokes> X11KeyEvents::strokesFor(PasteChord chord) const {
  const Keymap keymap(x11_.xcb());
  if (!keymap) return std::nullopt;
  std::vector<xkb_keysym_t> symbols;
  if (chord != PasteChord::kShiftInsert) symbols.push_back(XKB_KEY_Control_L);
  if (chord != PasteChord::kControlV) symbols.push_back(XKB_KEY_Shift_L);
  symbols.push_back(chord == PasteChord::kShiftInsert ? XKB_KEY_Insert : XKB_KEY_v);
  Strokes strokes;
  for (const xkb_keysym_t symbol : symbols) {
    const auto place = keymap.find(symbol);
    if (!place) return std::nullopt;
    strokes.keys.push_back(place->key);
    if (place->group != keymap.group()) strokes.group = place->group;
  }
  return strokes;
}

void X11KeyEvents::type(const Strokes& strokes) {
  releaseHeldKeys();
  std::optional<std::uint32_t> previous;
  if (strokes.group) {
    const auto state = x11_.waitFor(xcb_xkb_get_state_reply,
                                    xcb_xkb_get_state(x11_.xcb(), XCB_XKB_ID_USE_CORE_KBD));
    if (state) previous = state->lockedGroup;
    lockGroup(*strokes.group);
  }
  for (const xcb_keycode_t key : strokes.keys) fake(XCB_KEY_PRESS, key);
  for (auto key = strokes.keys.rbegin(); key != strokes.keys.rend(); ++key) {
    fake(XCB_KEY_RELEASE, *key);
  }
  if (previous) lockGroup(*previous);
  x11_.flush();
}

void X11KeyEvents::releaseHeldKeys() {
  const auto held = x11_.waitFor(xcb_query_keymap_reply, xcb_query_keymap(x11_.xcb()));
  if (!held) return;
  constexpr int kFirstKey = 8;
  for (int key = kFirstKey; key < 256; ++key) {
    if ((held->keys[key / 8] >> (key % 8) & 1) != 0) {
      fake(XCB_KEY_RELEASE, static_cast<xcb_keycode_t>(key));
    }
  }
}

void X11KeyEvents::fake(std::uint8_t type, xcb_keycode_t key) {
  xcb_test_fake_input(x11_.xcb(), type, key, XCB_CURRENT_TIME, x11_.root(), 0, 0, 0);
}

void X11KeyEvents::lockGroup(std::uint32_t group) {
  xcb_xkb_latch_lock_state(x11_.xcb(), XCB_XKB_ID_USE_CORE_KBD, 0, 0, 1,
                           static_cast<std::uint8_t>(group), 0, 0, 0);
}

}  // namespace brimlo
