#include "app/tray_item.h"

#include <QGuiApplication>
#include <QStandardPaths>
#include <utility>

#include "platform/qt/qt_screens.h"
#include "ui/color.h"
#include "ui/symbol.h"

namespace brimlo {
namespace {

constexpr const char* kTitle = "Brimlo";
constexpr const char* kThemeIcon = "brimlo-symbolic";

/// The name of the icon in the desktop's theme, if it was installed there.
std::string themeIcon() {
  const QString file = QString("icons/hicolor/symbolic/apps/%1.svg").arg(kThemeIcon);
  const bool installed =
      !QStandardPaths::locate(QStandardPaths::GenericDataLocation, file).isEmpty();
  return installed ? kThemeIcon : "";
}

}  // namespace

QIcon programIcon() {
  return ui::symbolIcon("square.stack.3d.up.fill", ui::moss());
}

TrayItem::TrayItem(const Screens& screens, SystemLog& log)
    : screens_(screens),
      notifier_(kTitle, themeIcon(), programIcon(), log),
      embedded_(kTitle, programIcon()) {}

void TrayItem::show(std::function<void(const Click&)> onActivate) {
  notifier_.setOnActivate([this, onActivate](const StatusNotifierItem::Click& click) {
    onActivate({place(click.x, click.y), click.activationToken});
  });
  embedded_.setOnActivate([this, onActivate] {
    const std::optional<Rect> item = frame();
    onActivate({item ? item : pointerPlace()});
  });
  notifier_.watchHosted([this](bool hosted) { embedded_.setShown(!hosted); });
}

/// Where a tray means by (x, y). Trays differ in whether they count in the screen's pixels; on
/// scaled screens, and from those that say nothing, the pointer knows better.
std::optional<Rect> TrayItem::place(int x, int y) const {
  const Point point = fromQt(QPoint(x, y));
  const bool silent = x == 0 && y == 0;
  if (silent || qGuiApp->devicePixelRatio() != 1.0 || !screenAt(point, screens_)) {
    return pointerPlace();
  }
  return Rect{point, {}};
}

std::optional<Rect> TrayItem::pointerPlace() const {
  const std::optional<Point> pointer = screens_.pointerLocation();
  return pointer ? std::optional(Rect{*pointer, {}}) : std::nullopt;
}

}  // namespace brimlo
