#pragma once

#include <xcb/xcb.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "platform/accessibility.h"
#include "platform/freedesktop/paste_chord.h"
#include "platform/key_events.h"
#include "platform/localized_strings.h"
#include "platform/main_queue.h"
#include "platform/user_notifications.h"
#include "platform/x11/x11_connection.h"
#include "platform/x11/x11_keyboard.h"
#include "platform/x11/x11_pasteboard.h"
#include "platform/x11/x11_workspace.h"

namespace brimlo {

/// Types through the XTEST extension; a server without it lets nobody type.
///
/// What pastes differs between applications, so ⌘V becomes the keys that paste in the one in front,
/// found in the keyboard layout of the moment. It is the one key that can be posted.
class X11KeyEvents : public KeyEventPoster, public Accessibility {
 public:
  X11KeyEvents(X11Connection& x11, X11Keyboard& keyboard, X11Workspace& workspace,
               X11Pasteboard& pasteboard, MainQueue& queue, UserNotifications& notifications,
               const LocalizedStrings& strings);

  bool isProcessTrusted() const override { return usable_; }

  /// There is nothing to permit here: a notification says so.
  void promptForTrust() override;

  void post(const KeyEvent& down, const KeyEvent& up, std::function<void(Result)> then) override;

 private:
  /// Keys to press, in order, and the layout group that has to be locked meanwhile.
  struct Strokes {
    std::vector<xcb_keycode_t> keys;
    std::optional<std::uint32_t> group;
  };

  void postPaste(std::chrono::steady_clock::time_point until, std::function<void(Result)> then);
  std::optional<Strokes> strokesFor(PasteChord chord);
  void type(const Strokes& strokes);
  void releaseHeldKeys();
  void fake(std::uint8_t type, xcb_keycode_t key);
  void lockGroup(std::uint32_t group);

  X11Connection& x11_;
  X11Keyboard& keyboard_;
  X11Workspace& workspace_;
  X11Pasteboard& pasteboard_;
  MainQueue& queue_;
  UserNotifications& notifications_;
  const LocalizedStrings& strings_;
  bool usable_;
};

}  // namespace brimlo
