#include "platform/qt/qt_screens.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>
#include <utility>

namespace brimlo {
namespace {

/// The bottom left corner of the primary screen, in Qt's coordinates.
QPoint bottomLeft() {
  const QScreen* primary = QGuiApplication::primaryScreen();
  if (!primary) return {};
  const QRect frame = primary->geometry();
  return {frame.x(), frame.y() + frame.height()};
}

Screen screenOf(const QScreen& screen) {
  return {fromQt(screen.geometry()), fromQt(screen.availableGeometry())};
}

}  // namespace

Point fromQt(const QPoint& point) {
  const QPoint origin = bottomLeft();
  return {static_cast<double>(point.x() - origin.x()), static_cast<double>(origin.y() - point.y())};
}

Rect fromQt(const QRect& rect) {
  return {fromQt(QPoint(rect.x(), rect.y() + rect.height())),
          {static_cast<double>(rect.width()), static_cast<double>(rect.height())}};
}

QPoint topLeftInQt(Point origin, double height) {
  const QPoint corner = bottomLeft();
  return QPointF(corner.x() + origin.x, corner.y() - origin.y - height).toPoint();
}

QtScreens::QtScreens() {
  for (QScreen* screen : QGuiApplication::screens()) watch(screen);
  connect(qGuiApp, &QGuiApplication::screenAdded, this, [this](QScreen* screen) {
    watch(screen);
    changeHandlers_.notify();
  });
  connect(qGuiApp, &QGuiApplication::screenRemoved, this, [this] { changeHandlers_.notify(); });
}

void QtScreens::watch(QScreen* screen) {
  const auto changed = [this] { changeHandlers_.notify(); };
  connect(screen, &QScreen::geometryChanged, this, changed);
  connect(screen, &QScreen::availableGeometryChanged, this, changed);
}

std::vector<Screen> QtScreens::screens() const {
  std::vector<Screen> all;
  for (const QScreen* screen : QGuiApplication::screens()) all.push_back(screenOf(*screen));
  return all;
}

std::optional<Screen> QtScreens::mainScreen() const {
  const QScreen* primary = QGuiApplication::primaryScreen();
  return primary ? std::optional(screenOf(*primary)) : std::nullopt;
}

std::optional<Point> QtScreens::pointerLocation() const {
  return fromQt(QCursor::pos());
}

Subscription QtScreens::observeChanges(std::function<void()> onChange) {
  return changeHandlers_.add(std::move(onChange));
}

}  // namespace brimlo
