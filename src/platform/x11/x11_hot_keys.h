#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <vector>

#include "platform/hot_keys.h"
#include "platform/system_log.h"
#include "platform/x11/x11_connection.h"
#include "platform/x11/x11_keyboard.h"
#include "platform/x11/x11_raw_input.h"

namespace brimlo {

/// Hotkeys as passive grabs of the root window. The one key code that can be taken is that of V:
/// the key that gives a V in the layout in use, else the one at its place. The status of a failed
/// registration is the X error's code.
class X11HotKeys : public HotKeys {
 public:
  /// All of it outlives the object; `x11` serves it from now on.
  X11HotKeys(X11Connection& x11, X11Keyboard& keyboard, X11RawInput& rawInput, SystemLog& log);

  std::unique_ptr<EventHandler> installEventHandler(Handler handler) override;
  std::unique_ptr<EventHotKey> registerEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                                   EventHotKeyID id,
                                                   std::function<void(Status)> answered) override;

 private:
  class InstalledHandler;
  class Grab;

  struct Keys {
    xcb_keycode_t key = 0;
    std::uint16_t modifiers = 0;
    std::uint16_t locks = 0;  // modifiers that are on or off all the same

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
  std::set<InstalledHandler*> handlers_;
  std::set<Grab*> grabs_;
  xcb_keycode_t held_ = 0;  // pressed and not let go yet; its repeats are no presses
  Subscription keyReleases_;
  Subscription events_;
  Subscription layoutChanges_;
};

}  // namespace brimlo
