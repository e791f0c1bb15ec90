#pragma once

#include <QObject>
#include <QPoint>
#include <QRect>

#include "base/observer_list.h"
#include "platform/screens.h"

class QScreen;

namespace brimlo {

/// Converts from Qt's coordinates, which grow downwards from the desktop's top left corner, to the
/// program's, which grow upwards from the primary screen's bottom left corner.
Point fromQt(const QPoint& point);
Rect fromQt(const QRect& rect);
/// The top left corner, in Qt's coordinates, of a window of this height whose bottom left corner is
/// at `origin`.
QPoint topLeftInQt(Point origin, double height);

/// Qt's screens.
class QtScreens : public Screens, private QObject {
 public:
  /// Needs the running `QGuiApplication`.
  QtScreens();

  std::vector<Screen> screens() const override;
  std::optional<Screen> mainScreen() const override;
  std::optional<Point> pointerLocation() const override;
  Subscription observeChanges(std::function<void()> onChange) override;

 private:
  void watch(QScreen* screen);

  ObserverList<> changeHandlers_;
};

}  // namespace brimlo
