#include "platform/x11/x11_key_events.h"

#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include <utility>

#include "platform/x11/xcb_xkb.h"

namespace brimlo {
namespace {

using Steady = std::chrono::steady_clock;

bool hasXtest(xcb_connection_t* xcb) {
  const xcb_query_extension_reply_t* xtest = xcb_get_extension_data(xcb, &xcb_test_id);
  return xtest && xtest->present;
}

}  // namespace

X11KeyEvents::X11KeyEvents(X11Connection& x11, X11Keyboard& keyboard, X11Workspace& workspace,
                           PrimarySelection& primary, MainQueue& queue)
    : x11_(x11),
      keyboard_(keyboard),
      workspace_(workspace),
      primary_(primary),
      queue_(queue),
      typing_(hasXtest(x11.xcb()) && keyboard.isReadable()
                  ? X11Accessibility::Typing::kPossible
                  : X11Accessibility::Typing::kImpossible) {}

void X11KeyEvents::post(const KeyEvent& down, const KeyEvent& up,
                        std::function<void(Result)> then) {
  const KeyEvent commandV{key_code::kV, true, modifier_flag::kCommand};
  const KeyEvent released{key_code::kV, false, modifier_flag::kCommand};
  const bool possible = typing_ == X11Accessibility::Typing::kPossible;
  if (!possible || down != commandV || up != released) return then(Result::kFailed);
  constexpr auto kPatience = std::chrono::milliseconds(500);
  postPaste(Steady::now() + kPatience, std::move(then));
}

void X11KeyEvents::postPaste(Steady::time_point until, std::function<void(Result)> then) {
  if (workspace_.ownPanelInFront()) {
    if (Steady::now() >= until) return then(Result::kFailed);
    constexpr auto kStep = std::chrono::milliseconds(10);
    queue_.asyncAfter(kStep, [this, until, then = std::move(then)] { postPaste(until, then); });
    return;
  }
  const auto front = workspace_.frontmostApplication();
  PasteChord chord = pasteChordFor(front ? front->bundleIdentifier : std::string());
  auto strokes = strokesFor(chord);
  if (!strokes) {
    // No layout has a V. Shift+Insert is on every keyboard and pastes nearly everywhere; terminals
    // paste the PRIMARY selection with it.
    chord = PasteChord::kShiftInsert;
    strokes = strokesFor(chord);
  }
  if (!strokes) return then(Result::kFailed);
  if (chord != PasteChord::kShiftInsert) {
    type(*strokes);
    return then(Result::kPosted);
  }
  primary_.offerAsPrimary([this, strokes = *strokes, then = std::move(then)] {
    type(strokes);
    then(Result::kPosted);
  });
}

std::optional<X11KeyEvents::Strokes> X11KeyEvents::strokesFor(PasteChord chord) {
  std::vector<xkb_keysym_t> symbols;
  if (chord != PasteChord::kShiftInsert) symbols.push_back(XKB_KEY_Control_L);
  if (chord != PasteChord::kControlV) symbols.push_back(XKB_KEY_Shift_L);
  symbols.push_back(chord == PasteChord::kShiftInsert ? XKB_KEY_Insert : XKB_KEY_v);
  Strokes strokes;
  for (const xkb_keysym_t symbol : symbols) {
    const auto place = keyboard_.find(symbol);
    if (!place) return std::nullopt;
    strokes.keys.push_back(place->key);
    if (place->group != keyboard_.group()) strokes.group = place->group;
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
