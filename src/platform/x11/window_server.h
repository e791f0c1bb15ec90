#pragma once

#include <cstdint>
#include <functional>

namespace brimlo {

/// What a floating panel needs of the display server and a toolkit does not give it. Windows go by
/// the server's own numbers. Main thread.
class WindowServer {
 public:
  virtual ~WindowServer() = default;

  /// Has the keyboard go to `window`, one of this program's, from when it is on screen on: at once,
  /// whatever a window manager thinks of that. `onLost` is called, from the run loop, once it goes
  /// elsewhere by anybody's doing but `giveKeyboardBack`, and from within this where another of
  /// this program's windows takes it; a hotkey that is pressed meanwhile does not count. For a
  /// window that has the keyboard already, only `onLost` is replaced.
  virtual void takeKeyboard(std::uint64_t window, std::function<void()> onLost) = 0;

  /// Has the keyboard go to where `window` took it from, if `window` still has it; in any case
  /// `window` no longer waits for it. Returns when it has happened, so the window may be hidden.
  /// Somebody whom the person has meanwhile chosen wins.
  virtual void giveKeyboardBack(std::uint64_t window) = 0;

  /// Whether the translucent parts of a window show what is behind it now.
  virtual bool isCompositing() = 0;
};

}  // namespace brimlo
