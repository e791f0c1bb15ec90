#include "platform/x11/x11_keyable_panel.h"

#include <QCoreApplication>
#include <QInputMethodEvent>
#include <utility>

#include "platform/qt/qt_screens.h"
#include "platform/x11/x11_window_id.h"

namespace brimlo {

X11KeyablePanel::X11KeyablePanel(std::unique_ptr<QWidget> content,
                                 std::function<QRegion()> opaqueShape, X11WindowServer& server)
    : content_(std::move(content)), opaqueShape_(std::move(opaqueShape)), server_(server) {
  content_->setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::X11BypassWindowManagerHint |
                           Qt::NoDropShadowWindowHint);
  content_->setAttribute(Qt::WA_TranslucentBackground);
  // The window server gives it the focus, not Qt.
  content_->setAttribute(Qt::WA_ShowWithoutActivating);
  QCoreApplication::instance()->installEventFilter(this);
}

X11KeyablePanel::~X11KeyablePanel() {
  orderOut();
}

void X11KeyablePanel::prepare() {
  content_->adjustSize();
  content_->winId();
  content_->grab();
}

Size X11KeyablePanel::fittingSize() const {
  content_->ensurePolished();
  const QSize hint = content_->sizeHint();
  return {static_cast<double>(hint.width()), static_cast<double>(hint.height())};
}

void X11KeyablePanel::setContentSize(Size size) {
  content_->resize(QSizeF(size.width, size.height).toSize());
}

void X11KeyablePanel::setOnFittingSizeChange(std::function<void()> onChange) {
  onFittingSizeChange_ = std::move(onChange);
}

Size X11KeyablePanel::contentSize() const {
  return {static_cast<double>(content_->width()), static_cast<double>(content_->height())};
}

std::optional<Rect> X11KeyablePanel::frame() const {
  return fromQt(content_->geometry());
}

void X11KeyablePanel::setFrameOrigin(Point origin) {
  content_->move(topLeftInQt(origin, content_->height()));
}

void X11KeyablePanel::makeKeyAndOrderFront() {
  if (server_.isCompositing()) {
    content_->clearMask();
  } else {
    content_->setMask(opaqueShape_());
  }
  content_->show();
  content_->raise();
  takeKeyboard();
}

void X11KeyablePanel::orderOut() {
  if (!isVisible()) return;
  composing_ = false;
  server_.giveKeyboardBack(number());
  content_->hide();
}

bool X11KeyablePanel::isVisible() const {
  return content_->isVisible();
}

bool X11KeyablePanel::isComposing() const {
  return composing_;
}

WindowId X11KeyablePanel::windowId() const {
  return content_->testAttribute(Qt::WA_WState_Created) ? brimlo::windowId(number())
                                                        : WindowId::kNone;
}

void X11KeyablePanel::setOnResignKey(std::function<void()> onResignKey) {
  onResignKey_ = std::move(onResignKey);
}

bool X11KeyablePanel::eventFilter(QObject* receiver, QEvent* event) {
  const auto* widget = qobject_cast<QWidget*>(receiver);
  if (!widget || widget->window() != content_.get()) return false;
  if (event->type() == QEvent::LayoutRequest && widget == content_.get()) {
    // Queued, so that the layouts inside have handled the request before.
    QMetaObject::invokeMethod(
        this,
        [this] {
          if (onFittingSizeChange_ && isVisible()) onFittingSizeChange_();
        },
        Qt::QueuedConnection);
  } else if (event->type() == QEvent::InputMethod) {
    composing_ = !static_cast<QInputMethodEvent*>(event)->preeditString().isEmpty();
  } else if (event->type() == QEvent::MouseButtonPress) {
    // No window manager focuses an override-redirect window that is clicked.
    takeKeyboard();
  }
  return false;
}

xcb_window_t X11KeyablePanel::number() const {
  return static_cast<xcb_window_t>(content_->winId());
}

void X11KeyablePanel::takeKeyboard() {
  server_.takeKeyboard(number(), [this] {
    composing_ = false;
    if (onResignKey_) onResignKey_();
  });
}

}  // namespace brimlo
