#pragma once

#include <xcb/xcb.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "platform/freedesktop/paste_chord.h"
#include "platform/key_events.h"
#include "platform/main_queue.h"
#include "platform/x11/primary_selection.h"
#include "platform/x11/x11_accessibility.h"
#include "platform/x11/x11_connection.h"
#include "platform/x11/x11_keyboard.h"
#include "platform/x11/x11_workspace.h"

namespace brimlo {

/// Types through the XTEST extension. Only ⌘V can be posted. Applications differ in the keys that
/// paste, so it becomes the keys that paste in the application in front, found in the keyboard
/// layout in use.
class X11KeyEvents : public KeyEventPoster {
 public:
  /// All of it outlives the object.
  X11KeyEvents(X11Connection& x11, X11Keyboard& keyboard, X11Workspace& workspace,
               PrimarySelection& primary, MainQueue& queue);

  /// Whether the server has XTEST and XKB; without them, every `post` fails.
  X11Accessibility::Typing typing() const { return typing_; }

  void post(const KeyEvent& down, const KeyEvent& up, std::function<void(Result)> then) override;

 private:
  /// Keys to press, in order, and the group that has to be locked for them.
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
  PrimarySelection& primary_;
  MainQueue& queue_;
  X11Accessibility::Typing typing_;
};

}  // namespace brimlo
