#pragma once

#include <xcb/xcb.h>
#include <xkbcommon/xkbcommon.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/x11/x11_connection.h"

class QTimer;

namespace brimlo {

/// The keyboard's layouts, kept in step with the server's. Read when first asked for, and again
/// after a change. Main thread.
class X11Keyboard {
 public:
  /// `x11` serves it from now on.
  explicit X11Keyboard(X11Connection& x11);
  ~X11Keyboard();

  /// Whether the server can tell of its layouts at all.
  bool isReadable() const { return x11_.xkbFirstEvent() != 0; }

  /// The layout in use: its group.
  std::uint32_t group();

  struct Place {
    xcb_keycode_t key;
    std::uint32_t group;
  };
  /// The key that gives `symbol` unshifted, in the current group or else in another.
  std::optional<Place> find(xkb_keysym_t symbol);

  /// The key that `name` gives to a place on the keyboard, "AB04" for the fourth of the lowest row
  /// of letters.
  std::optional<xcb_keycode_t> keyNamed(const char* name);

  /// The modifier bits that keys with `symbol` switch; 0 when there are none.
  std::uint16_t modifiersOf(xkb_keysym_t symbol);

  struct Stroke {
    xkb_keysym_t symbol = XKB_KEY_NoSymbol;
    std::string text;  ///< what it types, UTF-8
  };
  /// What a key means in an event of that `state`, of whose modifiers only those in `modifiers`
  /// count.
  Stroke lookUp(xcb_keycode_t key, std::uint16_t state, std::uint16_t modifiers);

  /// Adds one that is told, from the run loop, that the layouts or the group have changed.
  void addChangeHandler(std::function<void()> onChange);

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
  std::map<xkb_keysym_t, std::uint16_t> modifiers_;  // what has been asked for
  std::vector<std::function<void()>> onChange_;
  std::unique_ptr<QTimer> changed_;  // one change is told by many events
};

}  // namespace brimlo
