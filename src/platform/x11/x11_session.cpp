#include "platform/x11/x11_session.h"

#include <QWindow>
#include <utility>

#include "platform/qt/qt_titled_window.h"
#include "platform/x11/x11_keyable_panel.h"
#include "platform/x11/x11_startup_notification.h"
#include "platform/x11/x11_window_id.h"

namespace brimlo {

X11Session::OpenResult X11Session::open(int& argc, char** argv, SystemLog& log,
                                        UserNotifications& notifications) {
  // First, because Qt ends the process where it finds no server.
  X11Connection::OpenResult x11 = X11Connection::open();
  if (!x11.connection) return {nullptr, x11.fault};
  // OpenGL's libraries would take more memory than everything else.
  qputenv("QT_XCB_GL_INTEGRATION", "none");
  return {std::unique_ptr<X11Session>(
              new X11Session(std::move(x11.connection), argc, argv, log, notifications)),
          {}};
}

X11Session::X11Session(std::unique_ptr<X11Connection> x11, int& argc, char** argv, SystemLog& log,
                       UserNotifications& notifications)
    : QtSession("xcb", argc, argv),
      x11_(std::move(x11)),
      time_(*x11_),
      pasteboard_(*x11_, time_, log),
      keyboard_(*x11_),
      rawInput_(*x11_),
      workspace_(*x11_, time_),
      windowServer_(*x11_, time_, workspace_),
      eventMonitors_(*x11_, keyboard_, rawInput_),
      hotKeys_(*x11_, keyboard_, rawInput_, log),
      keyEvents_(*x11_, keyboard_, workspace_, pasteboard_, runLoop()),
      accessibility_(keyEvents_.typing(), notifications, strings()),
      themeName_(*x11_),
      appearance_(themeName_.value()) {
  x11_->serve();
  lost_ = x11_->addLostHandler([this, &log] {
    log.write("lost the connection to the X server");
    end(End::kServerLost);
  });
}

std::unique_ptr<KeyablePanel> X11Session::makePanel(std::unique_ptr<QWidget> content,
                                                    std::function<QRegion()> opaqueShape) {
  return std::make_unique<X11KeyablePanel>(std::move(content), std::move(opaqueShape),
                                           windowServer_);
}

std::unique_ptr<TitledWindow> X11Session::makeWindow(std::unique_ptr<QWidget> content,
                                                     const std::string& title) {
  return std::make_unique<QtTitledWindow>(std::move(content), title, [this](QWindow& window) {
    const WindowId id = windowId(static_cast<xcb_window_t>(window.winId()));
    workspace_.activate({.bundleIdentifier = "", .window = id});
  });
}

void X11Session::useActivationToken(const std::string& token) {
  // The windows that follow are brought to the front with the server's own time, which needs no
  // permission; so there is only the launcher to tell.
  if (!token.empty()) completeStartup(*x11_, token);
}

}  // namespace brimlo
