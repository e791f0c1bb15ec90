#pragma once

#include <optional>
#include <string>

#include "platform/window_id.h"

namespace brimlo {

/// An application that runs, or ran, with a window on this desktop; a value.
struct RunningApplication {
  std::string bundleIdentifier;  ///< what it calls itself to the desktop; empty when it does not
  WindowId window = WindowId::kNone;  ///< which of its windows was in front
};

/// The applications of the desktop. Main thread.
class Workspace {
 public:
  virtual ~Workspace() = default;

  /// The application that the keyboard goes to. None when no window has it, when one of this
  /// program's own does, and where the session does not tell.
  virtual std::optional<RunningApplication> frontmostApplication() = 0;

  enum class Activation {
    kAsked,  ///< the desktop was asked to bring it to the front; it does so in its own time
    kGone,   ///< its window is there no more; nothing was done
  };
  /// Brings the window that was in front to the front again: from another desktop, from being
  /// minimised, and against the desktop's care not to let windows steal the focus.
  virtual Activation activate(const RunningApplication& application) = 0;
};

}  // namespace brimlo
