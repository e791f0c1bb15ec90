#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <memory>
#include <set>
#include <vector>

#include "base/observer_list.h"
#include "platform/hot_keys.h"
#include "platform/system_log.h"
#include "platform/x11/x11_connection.h"
#include "platform/x11/x11_keyboard.h"
#include "platform/x11/x11_raw_input.h"

namespace brimlo {

/// Hotkeys as passive grabs on the root window. Only the key code of V is supported: the key that
/// gives a V in the group in use or else in another one, or the key at its place on a US keyboard.
/// The status of a failed registration is the X error's code.
class X11HotKeys : public HotKeys {
 public:
  /// All of it outlives the object.
  X11HotKeys(X11Connection& x11, X11Keyboard& keyboard, X11RawInput& rawInput, SystemLog& log);

  std::unique_ptr<EventHandler> installEventHandler(Handler handler) override;
  std::unique_ptr<EventHotKey> registerEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                                   EventHotKeyID id,
                                                   std::function<void(Status)> answered) override;

 private:
  class Grab;

  struct Keys {
    xcb_keycode_t key = 0;
    std::uint16_t modifiers = 0;
    std::uint16_t locks = 0;  // the modifiers of lock keys, which may be on or off

    bool operator==(const Keys&) const = default;
  };
  Keys keysFor(std::uint32_t modifiers);
  Status tryGrab(const Keys& keys);
  std::uint8_t grab(const Keys& keys);
  void ungrab(const Keys& keys);
  void regrab();
  void onPress(const xcb_key_press_event_t& press);
  void watchForRelease(xcb_keycode_t key);
  void forgetHeldKey();

  X11Connection& x11_;
  X11Keyboard& keyboard_;
  X11RawInput& rawInput_;
  SystemLog& log_;
  ObserverList<const EventHotKeyID&> handlers_;
  std::set<Grab*> grabs_;
  xcb_keycode_t held_ = 0;  // pressed and not released yet, so that repeats do not count
  Subscription keyReleases_;
  Subscription events_;
  Subscription layoutChanges_;
};

}  // namespace brimlo
