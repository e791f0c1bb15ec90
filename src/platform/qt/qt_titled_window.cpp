#include "platform/qt/qt_titled_window.h"

#include <QCursor>
#include <QEvent>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QScreen>
#include <QWindow>
#include <utility>

#include "platform/qt/qt_screens.h"

namespace brimlo {

QtTitledWindow::QtTitledWindow(std::unique_ptr<QWidget> content, const std::string& title,
                               Activate activate)
    : content_(std::move(content)), activate_(std::move(activate)) {
  content_->setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                           Qt::WindowCloseButtonHint);
  content_->setWindowTitle(QString::fromStdString(title));
  content_->winId();
  content_->installEventFilter(this);
  content_->windowHandle()->installEventFilter(this);
}

QtTitledWindow::~QtTitledWindow() {
  // The content's destructor sends events too, which must not reach a half-destroyed object.
  content_->windowHandle()->removeEventFilter(this);
  content_->removeEventFilter(this);
}

Size QtTitledWindow::contentSize() const {
  return {static_cast<double>(content_->width()), static_cast<double>(content_->height())};
}

std::optional<Rect> QtTitledWindow::frame() const {
  return fromQt(content_->geometry());
}

void QtTitledWindow::setFrameOrigin(Point origin) {
  content_->move(topLeftInQt(origin, content_->height()));
}

void QtTitledWindow::center() {
  const QScreen* screen = QGuiApplication::screenAt(QCursor::pos());
  if (!screen) screen = QGuiApplication::primaryScreen();
  if (!screen) return;
  const QRect visible = screen->availableGeometry();
  content_->move(visible.center() - content_->rect().center());
}

void QtTitledWindow::setLevel(Level level) {
  content_->windowHandle()->setFlag(Qt::WindowStaysOnTopHint, level == Level::kFloating);
}

void QtTitledWindow::makeKeyAndOrderFront() {
  comingUp_ = !content_->isVisible();
  content_->showNormal();
  content_->raise();
  if (!comingUp_) activate_(*content_->windowHandle());
}

void QtTitledWindow::orderOut() {
  content_->hide();
}

void QtTitledWindow::setOnWillClose(std::function<void()> onWillClose) {
  onWillClose_ = std::move(onWillClose);
}

bool QtTitledWindow::eventFilter(QObject* receiver, QEvent* event) {
  if (receiver == content_->windowHandle()) {
    // A window manager may keep a new window from taking the focus. It can be asked for the focus
    // only once it manages the window.
    if (event->type() == QEvent::Expose && content_->windowHandle()->isExposed() &&
        std::exchange(comingUp_, false)) {
      activate_(*content_->windowHandle());
    }
  } else if (event->type() == QEvent::Close) {
    if (onWillClose_) onWillClose_();
  } else if (event->type() == QEvent::MouseButtonPress &&
             static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
    // No widget in the content has accepted it, so it drags the window.
    content_->windowHandle()->startSystemMove();
  }
  return false;
}

}  // namespace brimlo
