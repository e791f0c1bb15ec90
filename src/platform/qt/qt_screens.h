#pragma once

#include <QPoint>
#include <QRect>

#include "platform/screens.h"

namespace brimlo {

/// Qt's coordinates, which grow downwards from wherever the desktop begins, as the program's.
Point fromQt(const QPoint& point);
Rect fromQt(const QRect& rect);
/// The top left corner, in Qt's coordinates, of a window that is `height` high and has its bottom
/// left corner at `origin`.
QPoint topLeftInQt(Point origin, double height);

/// Qt's screens.
class QtScreens : public Screens {
 public:
  /// Needs the running `QGuiApplication`.
  QtScreens();

  std::vector<Screen> screens() const override;
  std::optional<Screen> mainScreen() const override;
  std::optional<Point> pointerLocation() const override;
  Subscription observeChanges(std::function<void()> onChange) override;

 private:
  Published<int> changes_{0};
};

}  // namespace brimlo
