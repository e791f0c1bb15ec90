#pragma once

#include <functional>
#include <optional>

#include "base/geometry.h"
#include "platform/window_id.h"

namespace brimlo {

/// A panel that floats above all windows, those that fill the screen included, on every desktop. It
/// has no border, no title, no shadow and no entry in a taskbar; where its content is clear, what
/// is behind it shows. It takes the keyboard without becoming the application in front. Main
/// thread.
class KeyablePanel {
 public:
  virtual ~KeyablePanel() = default;

  /// Does now what its first showing would otherwise have to do: makes the window and draws the
  /// content once, unseen.
  virtual void prepare() = 0;

  /// The size that its content wants.
  virtual Size fittingSize() const = 0;
  virtual void setContentSize(Size size) = 0;
  /// The size that it was given last.
  virtual Size contentSize() const = 0;
  /// Called, from the run loop, when that size has become another.
  virtual void setOnFittingSizeChange(std::function<void()> onChange) = 0;

  /// Where it is; none where the session does not tell programs where their windows are.
  virtual std::optional<Rect> frame() const = 0;
  /// Puts its bottom left corner at `origin`, where the session lets programs place it.
  virtual void setFrameOrigin(Point origin) = 0;

  /// Puts it on screen above everything else, and has the keyboard go to it. Asked again, does so
  /// again.
  virtual void makeKeyAndOrderFront() = 0;

  /// Hides it; the keyboard goes back to where it came from. Hiding a hidden one does nothing.
  virtual void orderOut() = 0;

  virtual bool isVisible() const = 0;

  /// Whether an input method is composing text in the field that has the keyboard.
  virtual bool isComposing() const = 0;

  /// The window that it is, as events name it; `kNone` before it was first shown.
  virtual WindowId windowId() const = 0;

  /// Called when the keyboard goes elsewhere while it is on screen.
  virtual void setOnResignKey(std::function<void()> onResignKey) = 0;
};

}  // namespace brimlo
