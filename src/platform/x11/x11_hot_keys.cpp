#include "platform/x11/x11_hot_keys.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <string>
#include <utility>

#include "platform/key_codes.h"
#include "platform/x11/xcb_xkb.h"

namespace brimlo {
namespace {

/// Every combination of the bits of `mask`.
std::vector<std::uint16_t> subsetsOf(std::uint16_t mask) {
  std::vector<std::uint16_t> subsets;
  std::uint16_t subset = mask;
  for (;; subset = (subset - 1) & mask) {
    subsets.push_back(subset);
    if (subset == 0) return subsets;
  }
}

class InstalledHandler : public EventHandler {
 public:
  explicit InstalledHandler(Subscription subscription) : subscription_(std::move(subscription)) {}

 private:
  Subscription subscription_;
};

}  // namespace

class X11HotKeys::Grab : public EventHotKey {
 public:
  Grab(X11HotKeys& owner, std::uint32_t wanted, const Keys& grabbed, EventHotKeyID id)
      : wantedModifiers(wanted), keys(grabbed), hotKeyID(id), owner_(owner) {
    owner_.grabs_.insert(this);
  }
  ~Grab() override {
    owner_.grabs_.erase(this);
    owner_.ungrab(keys);
    if (owner_.grabs_.empty()) owner_.forgetHeldKey();
  }

  const std::uint32_t wantedModifiers;
  Keys keys;
  const EventHotKeyID hotKeyID;

 private:
  X11HotKeys& owner_;
};

X11HotKeys::X11HotKeys(X11Connection& x11, X11Keyboard& keyboard, X11RawInput& rawInput,
                       SystemLog& log)
    : x11_(x11), keyboard_(keyboard), rawInput_(rawInput), log_(log) {
  events_ = x11_.addEventHandler([this](const xcb_generic_event_t& event) {
    const std::uint8_t type = event.response_type & 0x7F;
    const auto& key = reinterpret_cast<const xcb_key_press_event_t&>(event);
    if (type == XCB_KEY_PRESS) onPress(key);
    if (type == XCB_KEY_RELEASE && key.detail == held_) forgetHeldKey();
  });
  layoutChanges_ = keyboard_.addChangeHandler([this] { regrab(); });
  if (!keyboard_.isReadable()) return;
  // Otherwise every automatic repeat is reported as a release and a press.
  constexpr std::uint32_t kFlag = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
  x11_.waitFor(
      xcb_xkb_per_client_flags_reply,
      xcb_xkb_per_client_flags(x11_.xcb(), XCB_XKB_ID_USE_CORE_KBD, kFlag, kFlag, 0, 0, 0));
}

std::unique_ptr<EventHandler> X11HotKeys::installEventHandler(Handler handler) {
  return std::make_unique<InstalledHandler>(handlers_.add(std::move(handler)));
}

std::unique_ptr<EventHotKey> X11HotKeys::registerEventHotKey(std::uint32_t keyCode,
                                                             std::uint32_t modifiers,
                                                             EventHotKeyID id,
                                                             std::function<void(Status)> answered) {
  const Keys keys = keyCode == key_code::kV ? keysFor(modifiers) : Keys();
  const Status status = tryGrab(keys);
  std::unique_ptr<EventHotKey> hotKey = std::make_unique<EventHotKey>();
  if (status == 0) hotKey = std::make_unique<Grab>(*this, modifiers, keys, id);
  answered(status);
  return hotKey;
}

HotKeys::Status X11HotKeys::tryGrab(const Keys& keys) {
  constexpr Status kBadValue = 2, kBadAccess = 10;
  if (keys.key == 0) return kBadValue;
  // The server lets a client grab a key twice, but one ungrab then ends both.
  for (const Grab* const each : grabs_) {
    if (each->keys == keys) return kBadAccess;
  }
  return grab(keys);
}

X11HotKeys::Keys X11HotKeys::keysFor(std::uint32_t modifiers) {
  Keys keys;
  const auto place = keyboard_.find(XKB_KEY_v);
  keys.key = place ? place->key : keyboard_.keyNamed("AB04").value_or(0);
  if ((modifiers & hot_key_modifier::kShift) != 0) keys.modifiers |= XCB_MOD_MASK_SHIFT;
  if ((modifiers & hot_key_modifier::kCommand) != 0) {
    const std::uint16_t super = keyboard_.modifiersOf(XKB_KEY_Super_L);
    keys.modifiers |= super != 0 ? super : static_cast<std::uint16_t>(XCB_MOD_MASK_4);
  }
  keys.locks = (XCB_MOD_MASK_LOCK | keyboard_.modifiersOf(XKB_KEY_Num_Lock) |
                keyboard_.modifiersOf(XKB_KEY_Scroll_Lock)) &
               ~keys.modifiers;
  return keys;
}

std::uint8_t X11HotKeys::grab(const Keys& keys) {
  std::vector<xcb_void_cookie_t> requests;
  for (const std::uint16_t locks : subsetsOf(keys.locks)) {
    requests.push_back(xcb_grab_key_checked(x11_.xcb(), 0, x11_.root(), keys.modifiers | locks,
                                            keys.key, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
  }
  std::uint8_t fault = 0;
  for (const xcb_void_cookie_t& request : requests) {
    const std::uint8_t error = x11_.check(request);
    if (fault == 0) fault = error;
  }
  if (fault != 0) ungrab(keys);
  return fault;
}

void X11HotKeys::ungrab(const Keys& keys) {
  if (keys.key == 0) return;
  for (const std::uint16_t locks : subsetsOf(keys.locks)) {
    xcb_ungrab_key(x11_.xcb(), keys.key, x11_.root(), keys.modifiers | locks);
  }
  x11_.flush();
}

void X11HotKeys::regrab() {
  for (Grab* const each : grabs_) {
    const Keys keys = keysFor(each->wantedModifiers);
    if (keys == each->keys) continue;
    ungrab(each->keys);
    const std::uint8_t error = keys.key == 0 ? 0 : grab(keys);
    each->keys = error == 0 ? keys : Keys();
    if (error != 0) {
      log_.write(
          "the hotkey is out of use: another program has it in the new keyboard layout "
          "(X error " +
          std::to_string(error) + ")");
    }
  }
}

void X11HotKeys::onPress(const xcb_key_press_event_t& press) {
  if (press.event != x11_.root()) return;
  for (Grab* const each : grabs_) {
    const auto modifiers = static_cast<std::uint16_t>(press.state & 0xFF & ~each->keys.locks);
    if (press.detail != each->keys.key || modifiers != each->keys.modifiers) continue;
    // While the grab is active it gets the release; afterwards the raw input does.
    const bool repeated = held_ == press.detail;
    if (!repeated) watchForRelease(press.detail);
    // End the active grab: what is typed next, even before the key is released, is for the window
    // that has the focus by then.
    xcb_ungrab_keyboard(x11_.xcb(), XCB_CURRENT_TIME);
    x11_.flush();
    if (repeated) return;
    handlers_.notify(EventHotKeyID(each->hotKeyID));  // a copy: a handler may end the grab
    return;
  }
}

void X11HotKeys::watchForRelease(xcb_keycode_t key) {
  if (!rawInput_.isAvailable()) return;
  held_ = key;
  keyReleases_ = rawInput_.addKeyReleaseHandler([this, key](xcb_keycode_t released) {
    if (released == key) forgetHeldKey();
  });
}

void X11HotKeys::forgetHeldKey() {
  held_ = 0;
  keyReleases_.reset();
}

}  // namespace brimlo
