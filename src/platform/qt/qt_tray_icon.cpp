#include "platform/qt/qt_tray_icon.h"

#include <utility>

#include "platform/qt/qt_screens.h"

namespace brimlo {

QtTrayIcon::QtTrayIcon(const std::string& title, QIcon icon)
    : title_(QString::fromStdString(title)), icon_(std::move(icon)) {}

void QtTrayIcon::setShown(bool shown) {
  if (shown == (tray_ != nullptr)) return;
  if (!shown) return tray_.reset();
  tray_ = std::make_unique<QSystemTrayIcon>(icon_);
  tray_->setToolTip(title_);
  QObject::connect(tray_.get(), &QSystemTrayIcon::activated, tray_.get(),
                   [this](QSystemTrayIcon::ActivationReason reason) {
                     // The first click of a double click has been reported as a click.
                     if (reason != QSystemTrayIcon::DoubleClick && onActivate_) onActivate_();
                   });
  tray_->show();
}

std::optional<Rect> QtTrayIcon::frame() const {
  if (!tray_ || tray_->geometry().isEmpty()) return std::nullopt;
  return fromQt(tray_->geometry());
}

void QtTrayIcon::setOnActivate(std::function<void()> onActivate) {
  onActivate_ = std::move(onActivate);
}

}  // namespace brimlo
