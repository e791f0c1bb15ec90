#pragma once

#include <memory>
#include <string>

#include "platform/freedesktop/desktop_appearance.h"
#include "platform/qt/qt_screens.h"
#include "platform/qt/qt_session.h"
#include "platform/system_log.h"
#include "platform/user_notifications.h"
#include "platform/x11/x11_accessibility.h"
#include "platform/x11/x11_connection.h"
#include "platform/x11/x11_event_monitors.h"
#include "platform/x11/x11_hot_keys.h"
#include "platform/x11/x11_key_events.h"
#include "platform/x11/x11_keyboard.h"
#include "platform/x11/x11_pasteboard.h"
#include "platform/x11/x11_raw_input.h"
#include "platform/x11/x11_theme_name.h"
#include "platform/x11/x11_time.h"
#include "platform/x11/x11_window_server.h"
#include "platform/x11/x11_workspace.h"

namespace brimlo {

/// A session on an X server, which the program talks to over a connection of its own, beside the
/// toolkit's.
class X11Session : public QtSession {
 public:
  struct OpenResult {
    std::unique_ptr<X11Session> session;  ///< null on failure
    std::string fault;                    ///< then, what is wrong
  };
  /// Opens the session on the display that the environment names. All arguments outlive it.
  static OpenResult open(int& argc, char** argv, SystemLog& log, UserNotifications& notifications);

  Accessibility& accessibility() override { return accessibility_; }
  KeyEventPoster& keyEvents() override { return keyEvents_; }
  EventMonitors& eventMonitors() override { return eventMonitors_; }
  HotKeys& hotKeys() override { return hotKeys_; }
  Pasteboard& pasteboard() override { return pasteboard_; }
  Screens& screens() override { return screens_; }
  Workspace& workspace() override { return workspace_; }
  const Published<Appearance>& appearance() const override { return appearance_.value(); }

  std::unique_ptr<KeyablePanel> makePanel(std::unique_ptr<QWidget> content,
                                          std::function<QRegion()> opaqueShape) override;
  std::unique_ptr<TitledWindow> makeWindow(std::unique_ptr<QWidget> content,
                                           const std::string& title) override;
  void useActivationToken(const std::string& token) override;
  void handOver(std::chrono::milliseconds patience) override { pasteboard_.handOver(patience); }

 private:
  X11Session(std::unique_ptr<X11Connection> x11, int& argc, char** argv, SystemLog& log,
             UserNotifications& notifications);

  // Each uses only those before it.
  std::unique_ptr<X11Connection> x11_;
  X11Time time_;
  X11Pasteboard pasteboard_;
  X11Keyboard keyboard_;
  X11RawInput rawInput_;
  X11Workspace workspace_;
  X11WindowServer windowServer_;
  X11EventMonitors eventMonitors_;
  X11HotKeys hotKeys_;
  X11KeyEvents keyEvents_;
  X11Accessibility accessibility_;
  QtScreens screens_;
  X11ThemeName themeName_;
  DesktopAppearance appearance_;
  Subscription lost_;
};

}  // namespace brimlo
