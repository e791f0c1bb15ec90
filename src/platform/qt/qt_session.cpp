#include "platform/qt/qt_session.h"

#include <QEvent>
#include <utility>

namespace brimlo {
namespace {

/// Qt reads which platform it is to run on when the application object is made.
int& withPlatform(const char* platform, int& argc) {
  qputenv("QT_QPA_PLATFORM", platform);
  return argc;
}

}  // namespace

QtSession::QtSession(const char* platform, int& argc, char** argv)
    : application_(withPlatform(platform, argc), argv) {
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication::setDesktopFileName("org.brimlo.Brimlo");
  application_.installEventFilter(this);
}

void QtSession::end(End how) {
  if (const auto onEnd = std::exchange(onEnd_, nullptr)) onEnd(how);
}

bool QtSession::eventFilter(QObject* receiver, QEvent* event) {
  if (receiver != &application_ || event->type() != QEvent::Quit) return false;
  // The session manager's way to end the program. Qt's answer would be to close all windows, as if
  // the person had closed them.
  end(End::kSessionManager);
  return true;
}

}  // namespace brimlo
