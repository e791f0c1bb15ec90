#include "platform/x11/x11_event_monitors.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <QEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QWindow>
#include <utility>

#include "platform/x11/x11_properties.h"

namespace brimlo {
namespace {

bool isPageKey(const KeyDownEvent& press) {
  return press.keyCode == key_code::kPageUp || press.keyCode == key_code::kPageDown;
}

/// The virtual key code of the key that gives `symbol`.
std::uint16_t keyCodeOf(xkb_keysym_t symbol) {
  switch (symbol) {
    case XKB_KEY_Return:
      return key_code::kReturn;
    case XKB_KEY_Tab:
    case XKB_KEY_ISO_Left_Tab:
      return key_code::kTab;
    case XKB_KEY_Escape:
      return key_code::kEscape;
    case XKB_KEY_KP_Enter:
      return key_code::kKeypadEnter;
    case XKB_KEY_Prior:
    case XKB_KEY_KP_Prior:
      return key_code::kPageUp;
    case XKB_KEY_Next:
    case XKB_KEY_KP_Next:
      return key_code::kPageDown;
    case XKB_KEY_Left:
    case XKB_KEY_KP_Left:
      return key_code::kLeftArrow;
    case XKB_KEY_Right:
    case XKB_KEY_KP_Right:
      return key_code::kRightArrow;
    case XKB_KEY_Down:
    case XKB_KEY_KP_Down:
      return key_code::kDownArrow;
    case XKB_KEY_Up:
    case XKB_KEY_KP_Up:
      return key_code::kUpArrow;
    default:
      return key_code::kOther;
  }
}

class Monitor : public EventMonitor {
 public:
  explicit Monitor(Subscription subscription) : subscription_(std::move(subscription)) {}

 private:
  Subscription subscription_;
};

}  // namespace

X11EventMonitors::X11EventMonitors(X11Connection& x11, X11Keyboard& keyboard, X11RawInput& rawInput)
    : x11_(x11), keyboard_(keyboard), rawInput_(rawInput) {
  QCoreApplication::instance()->installNativeEventFilter(this);
  QCoreApplication::instance()->installEventFilter(this);
}

std::unique_ptr<EventMonitor> X11EventMonitors::addLocalKeyDownMonitor(
    std::function<bool(const KeyDownEvent&)> handler) {
  return std::make_unique<Monitor>(keyDownHandlers_.add(
      [handler = std::move(handler)](const KeyDownEvent& press, bool& consumed) {
        consumed = consumed || handler(press);
      }));
}

std::unique_ptr<EventMonitor> X11EventMonitors::addGlobalMouseDownMonitor(
    std::function<void()> handler) {
  if (!rawInput_.isAvailable()) return nullptr;
  return std::make_unique<Monitor>(
      rawInput_.addButtonPressHandler([this, handler = std::move(handler)](std::uint32_t button) {
        constexpr std::uint32_t kWheelFirst = 4, kWheelLast = 7;
        const bool isWheel = button >= kWheelFirst && button <= kWheelLast;
        if (!isWheel && !pointerOverOwnWindow()) handler();
      }));
}

std::unique_ptr<EventMonitor> X11EventMonitors::addLocalMouseDownMonitor(
    std::function<void(WindowId)> handler) {
  return std::make_unique<Monitor>(mouseDownHandlers_.add(std::move(handler)));
}

bool X11EventMonitors::nativeEventFilter(const QByteArray& type, void* message, qintptr*) {
  if (keyDownHandlers_.empty() || type != "xcb_generic_event_t") return false;
  const auto& event = *static_cast<const xcb_generic_event_t*>(message);
  if ((event.response_type & 0x7F) != XCB_KEY_PRESS) return false;
  const auto& press = reinterpret_cast<const xcb_key_press_event_t&>(event);
  // The toolkit still has earlier keys in its queue, which this one overtakes. For the page keys
  // that does not matter; all others wait for `eventFilter`.
  const KeyDownEvent down = translated(press.detail, press.state);
  return isPageKey(down) && isConsumed(down);
}

bool X11EventMonitors::eventFilter(QObject* receiver, QEvent* event) {
  if (!receiver->isWindowType()) return false;
  if (event->type() == QEvent::MouseButtonPress) {
    const auto window = static_cast<WindowId>(static_cast<QWindow*>(receiver)->winId());
    mouseDownHandlers_.notify(window);
  } else if (event->type() == QEvent::KeyPress && !keyDownHandlers_.empty()) {
    const auto& press = *static_cast<const QKeyEvent*>(event);
    const KeyDownEvent down = translated(static_cast<xcb_keycode_t>(press.nativeScanCode()),
                                         static_cast<std::uint16_t>(press.nativeModifiers()));
    return !isPageKey(down) && isConsumed(down);
  }
  return false;
}

bool X11EventMonitors::isConsumed(const KeyDownEvent& press) {
  bool consumed = false;
  keyDownHandlers_.notify(press, consumed);
  return consumed;
}

KeyDownEvent X11EventMonitors::translated(xcb_keycode_t key, std::uint16_t state) {
  const std::uint16_t numLock = keyboard_.modifiersOf(XKB_KEY_Num_Lock);
  const X11Keyboard::Stroke stroke =
      keyboard_.lookUp(key, state, XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_LOCK | numLock);
  KeyDownEvent event;
  event.keyCode = keyCodeOf(stroke.symbol);
  event.charactersIgnoringModifiers = stroke.text;
  const auto held = [&](xkb_keysym_t symbol) {
    return (state & keyboard_.modifiersOf(symbol)) != 0;
  };
  if ((state & XCB_MOD_MASK_SHIFT) != 0) event.modifierFlags |= modifier_flag::kShift;
  if ((state & XCB_MOD_MASK_CONTROL) != 0) event.modifierFlags |= modifier_flag::kControl;
  if (held(XKB_KEY_Alt_L)) event.modifierFlags |= modifier_flag::kOption;
  if (held(XKB_KEY_Super_L)) event.modifierFlags |= modifier_flag::kCommand;
  return event;
}

bool X11EventMonitors::pointerOverOwnWindow() {
  for (xcb_window_t window = x11_.root(); window != XCB_NONE;) {
    if (window != x11_.root() && isOwnWindow(x11_, window)) return true;
    const auto pointer =
        x11_.waitFor(xcb_query_pointer_reply, xcb_query_pointer(x11_.xcb(), window));
    window = pointer ? pointer->child : static_cast<xcb_window_t>(XCB_NONE);
  }
  return false;
}

}  // namespace brimlo
