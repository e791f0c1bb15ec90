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

constexpr std::uint16_t kPageUp = 116;
constexpr std::uint16_t kPageDown = 121;

bool isPageKey(const KeyDownEvent& press) {
  return press.keyCode == kPageUp || press.keyCode == kPageDown;
}

/// The virtual key code of what a key gives.
std::uint16_t keyCodeOf(xkb_keysym_t symbol) {
  switch (symbol) {
    case XKB_KEY_Return:
      return 36;
    case XKB_KEY_Tab:
    case XKB_KEY_ISO_Left_Tab:
      return 48;
    case XKB_KEY_Escape:
      return 53;
    case XKB_KEY_KP_Enter:
      return 76;
    case XKB_KEY_Prior:
    case XKB_KEY_KP_Prior:
      return kPageUp;
    case XKB_KEY_Next:
    case XKB_KEY_KP_Next:
      return kPageDown;
    case XKB_KEY_Left:
    case XKB_KEY_KP_Left:
      return 123;
    case XKB_KEY_Right:
    case XKB_KEY_KP_Right:
      return 124;
    case XKB_KEY_Down:
    case XKB_KEY_KP_Down:
      return 125;
    case XKB_KEY_Up:
    case XKB_KEY_KP_Up:
      return 126;
    default:
      return KeyDownEvent::kOtherKey;
  }
}

/// Calls each handler that is still there when its turn comes.
template <typename Monitors, typename Call>
void forEach(const Monitors& monitors, Call call) {
  for (auto* const monitor : Monitors(monitors)) {
    if (monitors.count(monitor) == 0) continue;
    const auto handler = monitor->handler();
    call(handler);
  }
}

}  // namespace

template <typename Handler>
class X11EventMonitors::Monitor : public EventMonitor {
 public:
  Monitor(std::set<Monitor*>& all, Handler handler, std::function<void()> onEnd = nullptr)
      : all_(all), handler_(std::move(handler)), onEnd_(std::move(onEnd)) {
    all_.insert(this);
  }
  ~Monitor() override {
    all_.erase(this);
    if (onEnd_) onEnd_();
  }

  const Handler& handler() const { return handler_; }

 private:
  std::set<Monitor*>& all_;
  Handler handler_;
  std::function<void()> onEnd_;
};

X11EventMonitors::X11EventMonitors(X11Connection& x11, X11Keyboard& keyboard, X11RawInput& rawInput)
    : x11_(x11), keyboard_(keyboard), rawInput_(rawInput) {
  QCoreApplication::instance()->installNativeEventFilter(this);
  QCoreApplication::instance()->installEventFilter(this);
}

X11EventMonitors::~X11EventMonitors() = default;

std::unique_ptr<EventMonitor> X11EventMonitors::addLocalKeyDownMonitor(
    std::function<bool(const KeyDownEvent&)> handler) {
  return std::make_unique<KeyDownMonitor>(keyDownMonitors_, std::move(handler));
}

std::unique_ptr<EventMonitor> X11EventMonitors::addGlobalMouseDownMonitor(
    std::function<void()> handler) {
  if (!rawInput_.isAvailable()) return nullptr;
  auto monitor = std::make_unique<GlobalMouseDownMonitor>(
      globalMouseDownMonitors_, std::move(handler), [this] { watchButtons(); });
  watchButtons();
  return monitor;
}

std::unique_ptr<EventMonitor> X11EventMonitors::addLocalMouseDownMonitor(
    std::function<void(WindowId)> handler) {
  return std::make_unique<LocalMouseDownMonitor>(localMouseDownMonitors_, std::move(handler));
}

bool X11EventMonitors::nativeEventFilter(const QByteArray& type, void* message, qintptr*) {
  if (keyDownMonitors_.empty() || type != "xcb_generic_event_t") return false;
  const auto& event = *static_cast<const xcb_generic_event_t*>(message);
  if ((event.response_type & 0x7F) != XCB_KEY_PRESS) return false;
  const auto& press = reinterpret_cast<const xcb_key_press_event_t&>(event);
  // The toolkit queues the keys before this one; here, others would overtake what was typed.
  const KeyDownEvent down = translated(press.detail, press.state);
  return isPageKey(down) && isConsumed(down);
}

bool X11EventMonitors::eventFilter(QObject* receiver, QEvent* event) {
  if (!receiver->isWindowType()) return false;
  if (event->type() == QEvent::MouseButtonPress) {
    const auto window = static_cast<WindowId>(static_cast<QWindow*>(receiver)->winId());
    forEach(localMouseDownMonitors_, [&](const auto& handler) { handler(window); });
  } else if (event->type() == QEvent::KeyPress && !keyDownMonitors_.empty()) {
    const auto& press = *static_cast<const QKeyEvent*>(event);
    const KeyDownEvent down = translated(static_cast<xcb_keycode_t>(press.nativeScanCode()),
                                         static_cast<std::uint16_t>(press.nativeModifiers()));
    return !isPageKey(down) && isConsumed(down);
  }
  return false;
}

bool X11EventMonitors::isConsumed(const KeyDownEvent& press) {
  bool consumed = false;
  forEach(keyDownMonitors_, [&](const auto& handler) { consumed = consumed || handler(press); });
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
  if ((state & XCB_MOD_MASK_SHIFT) != 0) event.modifierFlags |= KeyDownEvent::kShiftFlag;
  if ((state & XCB_MOD_MASK_CONTROL) != 0) event.modifierFlags |= KeyDownEvent::kControlFlag;
  if (held(XKB_KEY_Alt_L)) event.modifierFlags |= KeyDownEvent::kOptionFlag;
  if (held(XKB_KEY_Super_L)) event.modifierFlags |= KeyDownEvent::kCommandFlag;
  return event;
}

void X11EventMonitors::onButtonPress(std::uint32_t button) {
  constexpr std::uint32_t kWheelFirst = 4, kWheelLast = 7;
  if ((button >= kWheelFirst && button <= kWheelLast) || pointerOverOwnWindow()) return;
  forEach(globalMouseDownMonitors_, [](const auto& handler) { handler(); });
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

void X11EventMonitors::watchButtons() {
  if (globalMouseDownMonitors_.empty()) {
    buttonPresses_.reset();
  } else {
    buttonPresses_ =
        rawInput_.addButtonPressHandler([this](std::uint32_t button) { onButtonPress(button); });
  }
}

}  // namespace brimlo
