#include "platform/x11/x11_keyable_panel.h"

#include <QCoreApplication>
#include <QInputMethodEvent>
#include <utility>

#include "platform/qt/qt_screens.h"

namespace brimlo {

QtKeyablePanel::QtKeyablePanel(std::unique_ptr<QWidget> content,
                               std::function<QRegion()> opaqueShape, WindowServer& server)
    : content_(std::move(content)), opaqueShape_(std::move(opaqueShape)), server_(server) {
  content_->setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::X11BypassWindowManagerHint |
                           Qt::NoDropShadowWindowHint);
  content_->setAttribute(Qt::WA_TranslucentBackground);
  // Whether it gets the keyboard is between it and the window server.
  content_->setAttribute(Qt::WA_ShowWithoutActivating);
  QCoreApplication::instance()->installEventFilter(this);
}

QtKeyablePanel::~QtKeyablePanel() {
  orderOut();
}

void QtKeyablePanel::prepare() {
  content_->adjustSize();
  content_->winId();
  content_->grab();
}

Size QtKeyablePanel::fittingSize() const {
  content_->ensurePolished();
  const QSize hint = content_->sizeHint();
  return {static_cast<double>(hint.width()), static_cast<double>(hint.height())};
}

void QtKeyablePanel::setContentSize(Size size) {
  content_->resize(QSizeF(size.width, size.height).toSize());
}

void QtKeyablePanel::setOnFittingSizeChange(std::function<void()> onChange) {
  onFittingSizeChange_ = std::move(onChange);
}

Rect QtKeyablePanel::frame() const {
  return fromQt(content_->geometry());
}

void QtKeyablePanel::setFrameOrigin(Point origin) {
  content_->move(topLeftInQt(origin, content_->height()));
}

void QtKeyablePanel::makeKeyAndOrderFront() {
  if (server_.isCompositing()) {
    content_->clearMask();
  } else {
    content_->setMask(opaqueShape_());
  }
  content_->show();
  content_->raise();
  takeKeyboard();
}

void QtKeyablePanel::orderOut() {
  if (!isVisible()) return;
  composing_ = false;
  server_.giveKeyboardBack(content_->winId());
  content_->hide();
}

bool QtKeyablePanel::isVisible() const {
  return content_->isVisible();
}

bool QtKeyablePanel::isComposing() const {
  return composing_;
}

std::uint64_t QtKeyablePanel::windowNumber() const {
  return content_->testAttribute(Qt::WA_WState_Created) ? content_->winId() : 0;
}

void QtKeyablePanel::setOnResignKey(std::function<void()> onResignKey) {
  onResignKey_ = std::move(onResignKey);
}

bool QtKeyablePanel::eventFilter(QObject* receiver, QEvent* event) {
  const auto* widget = qobject_cast<QWidget*>(receiver);
  if (!widget || widget->window() != content_.get()) return false;
  if (event->type() == QEvent::LayoutRequest && widget == content_.get()) {
    // Once the layouts within have been told too.
    QMetaObject::invokeMethod(
        this,
        [this] {
          if (onFittingSizeChange_ && isVisible()) onFittingSizeChange_();
        },
        Qt::QueuedConnection);
  } else if (event->type() == QEvent::InputMethod) {
    composing_ = !static_cast<QInputMethodEvent*>(event)->preeditString().isEmpty();
  } else if (event->type() == QEvent::MouseButtonPress) {
    // No window manager does it for this window.
    takeKeyboard();
  }
  return false;
}

void QtKeyablePanel::takeKeyboard() {
  server_.takeKeyboard(content_->winId(), [this] {
    composing_ = false;
    if (onResignKey_) onResignKey_();
  });
}

}  // namespace brimlo
