#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "base/geometry.h"
#include "base/published.h"

namespace brimlo {

struct Screen {
  Rect frame;
  Rect visibleFrame;  ///< without what panels and docks keep for themselves
};

/// The screens and the pointer. Main thread.
class Screens {
 public:
  virtual ~Screens() = default;

  /// All of them; the primary one has its origin at (0, 0). Empty while none is connected.
  virtual std::vector<Screen> screens() const = 0;

  /// The screen that a window appears on when nothing else decides.
  virtual std::optional<Screen> mainScreen() const = 0;

  /// The top left corner of the pixel that the pointer is on; none where the session tells that
  /// only while the pointer is over a window of this program.
  virtual std::optional<Point> pointerLocation() const = 0;

  /// Calls `onChange` whenever a screen comes, goes, or is another size or elsewhere.
  virtual Subscription observeChanges(std::function<void()> onChange) = 0;
};

/// The screen that `point` is on; none without a point.
inline std::optional<Screen> screenAt(std::optional<Point> point, const Screens& screens) {
  if (!point) return std::nullopt;
  for (const Screen& each : screens.screens()) {
    if (each.frame.contains(*point)) return each;
  }
  return std::nullopt;
}

/// The primary screen; where none has its origin at (0, 0), the main one.
inline std::optional<Screen> primaryScreen(const Screens& screens) {
  for (const Screen& each : screens.screens()) {
    if (each.frame.origin == Point{}) return each;
  }
  return screens.mainScreen();
}

}  // namespace brimlo
