#pragma once

#include <functional>
#include <optional>

#include "base/geometry.h"

namespace brimlo {

/// A window of fixed size, as the desktop frames it: it can be moved, by its background too, and
/// closed, and it survives being closed. Main thread.
class TitledWindow {
 public:
  virtual ~TitledWindow() = default;

  /// The size of its content.
  virtual Size contentSize() const = 0;
  /// Where its content is; the frame that the desktop adds is not counted. None where the session
  /// does not tell programs where their windows are.
  virtual std::optional<Rect> frame() const = 0;
  /// Puts the bottom left corner of its content at `origin`, where the session lets programs place
  /// their windows.
  virtual void setFrameOrigin(Point origin) = 0;
  /// Puts it in the middle of the screen that the person is working on, where the session lets
  /// programs place their windows.
  virtual void center() = 0;

  enum class Level { kNormal, kFloating };
  /// A floating one stays above other windows. For a window that is not on screen.
  virtual void setLevel(Level level) = 0;

  /// Puts it on screen before all windows, whatever application was in front, and has the keyboard
  /// go to it.
  virtual void makeKeyAndOrderFront() = 0;
  /// Hides it, which is not closing.
  virtual void orderOut() = 0;

  /// Called when the person closes it.
  virtual void setOnWillClose(std::function<void()> onWillClose) = 0;
};

}  // namespace brimlo
