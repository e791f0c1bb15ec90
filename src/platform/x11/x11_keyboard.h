#pragma once

#include <xcb/xcb.h>
#include <xkbcommon/xkbcommon.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "base/observer_list.h"
#include "platform/x11/x11_connection.h"

class QTimer;

namespace brimlo {

/// The keyboard's layouts, as the server has them now. Read when first asked for, and again after
/// a change. Main thread.
class X11Keyboard {
 public:
  explicit X11Keyboard(X11Connection& x11);
  ~X11Keyboard();

  /// Whether the server has the XKB extension, which describes its layouts. Without it, no key is
  /// found.
  bool isReadable() const { return x11_.xkbFirstEvent() != 0; }

  /// The group in use: which of the keyboard's layouts.
  std::uint32_t group();

  struct Place {
    xcb_keycode_t key;
    std::uint32_t group;
  };
  /// The key that gives `symbol` unshifted, in the group in use or else in another.
  std::optional<Place> find(xkb_keysym_t symbol);

  /// The key at the place that XKB calls `name`: "AB04" is the fourth in the lowest row of letters.
  std::optional<xcb_keycode_t> keyNamed(const char* name);

  /// The modifier bits that are bound to keys with `symbol`; 0 when there are none.
  std::uint16_t modifiersOf(xkb_keysym_t symbol);

  struct Stroke {
    xkb_keysym_t symbol = XKB_KEY_NoSymbol;
    std::string text;  ///< what it types, UTF-8
  };
  /// What a key gives in an event with that `state`. Only the modifiers in `modifiers` count.
  Stroke lookUp(xcb_keycode_t key, std::uint16_t state, std::uint16_t modifiers);

  /// Calls `onChange`, from the run loop, when the layouts or the group in use have changed.
  Subscription addChangeHandler(std::function<void()> onChange);

 private:
  template <auto release>
  struct Unref {
    template <typename T>
    void operator()(T* object) const {
      release(object);
    }
  };

  void handle(const xcb_generic_event_t& event);
  xkb_keymap* map();
  bool givesUnshifted(xcb_keycode_t key, xkb_keysym_t symbol);

  X11Connection& x11_;
  std::unique_ptr<xkb_context, Unref<xkb_context_unref>> context_;
  std::unique_ptr<xkb_keymap, Unref<xkb_keymap_unref>> map_;  // null: to be read
  std::optional<std::uint32_t> group_;
  std::map<xkb_keysym_t, std::uint16_t> modifiers_;  // by the symbols asked for so far
  ObserverList<> changeHandlers_;
  std::unique_ptr<QTimer> changed_;  // a change comes as many events, and is told once
  Subscription events_;
};

}  // namespace brimlo
