#pragma once

#include <chrono>
#include <functional>
#include <string>

#include "base/published.h"
#include "platform/appearance.h"

namespace brimlo {

class Accessibility;
class EventMonitors;
class HotKeys;
class KeyEventPoster;
class Pasteboard;
class Screens;
class Workspace;

/// The desktop session that the program runs in: everything that one kind of session (X11, Wayland)
/// does in its own way. It is opened whole, and lives as long as all that uses it. Main thread.
class Session {
 public:
  virtual ~Session() = default;

  /// Whether the program may type into other applications, and the typing.
  virtual Accessibility& accessibility() = 0;
  virtual KeyEventPoster& keyEvents() = 0;

  virtual EventMonitors& eventMonitors() = 0;
  virtual HotKeys& hotKeys() = 0;
  virtual Pasteboard& pasteboard() = 0;
  virtual Screens& screens() = 0;
  virtual Workspace& workspace() = 0;

  /// Whether the desktop is light or dark now.
  virtual const Published<Appearance>& appearance() const = 0;

  /// Tells the desktop that the program acts on a request of the person's: the one that came with
  /// `token`, an activation token (XDG Activation) or a startup-notification id. What the program
  /// shows next may then take the keyboard, and the launcher no longer shows that it is waiting.
  /// An empty token is no request.
  virtual void useActivationToken(const std::string& token) = 0;

  enum class End {
    kServerLost,      ///< the display server went away
    kSessionManager,  ///< the person logs out
  };
  /// Called once, from the run loop, when the session has ended; the program is to end too.
  virtual void setOnEnd(std::function<void(End)> onEnd) = 0;

  /// Has the desktop take over the text that this program offers on the pasteboard, so that it
  /// outlives the program, where the desktop has a service for that. Waits for it as long as the
  /// transfer goes on and `patience` lasts. To be called after the run loop has ended.
  virtual void handOver(std::chrono::milliseconds patience) = 0;
};

}  // namespace brimlo
