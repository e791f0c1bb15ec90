#pragma once

#include <memory>
#include <string>
#include <vector>

#include "app/app_model.h"
#include "app/command_line.h"
#include "app/tray_item.h"
#include "base/weak_anchor.h"
#include "menu/menu_bar_controller.h"
#include "platform/cloud/account_database.h"
#include "platform/freedesktop/running_instance.h"
#include "platform/posix/process_environment.h"
#include "platform/posix/system_clock.h"
#include "platform/posix/unix_signals.h"
#include "platform/posix/worker_thread.h"
#include "platform/qt/ini_user_defaults.h"
#include "platform/qt/qt_entitlements.h"
#include "platform/qt/qt_session.h"
#include "platform/qt/qt_update_feed.h"
#include "platform/qt/qt_url_opener.h"
#include "updates/updater_model.h"

namespace brimlo {

/// The running program: what it is made of, and how the parts are joined. Main thread.
class Program {
 public:
  /// What exists before a session is opened, and outlives the program.
  struct Surroundings {
    SystemLog& log;
    FileSystem& files;
    UserNotifications& notifications;
    std::string dataFolder;
    std::string activationToken;  ///< what the desktop started the program with; may be empty
  };

  /// Starts everything, in `session`.
  Program(std::unique_ptr<QtSession> session, const Surroundings& surroundings, Start start);

  /// Serves the person until the program is told to quit or the session ends. Returns the exit
  /// status: 0, or 1 when the display server went away.
  int run();

 private:
  Services services();
  std::unique_ptr<KeyablePanel> makePalettePanel(QuickPasteViewState& state);
  std::unique_ptr<KeyablePanel> makeMenuPanel(MenuContentModel& content);
  std::unique_ptr<TitledWindow> makeMenuPreview(MenuContentModel& content);
  std::unique_ptr<TitledWindow> makeOnboardingWindow(OnboardingViewState& state);
  std::unique_ptr<TitledWindow> makeUpdatesWindow(UpdatesViewState& state);
  void answer(const InstanceRequest& request);
  void sessionEnded(Session::End how);

  // The order of these members is the order of their lifetimes: each uses only those before it, and
  // is gone before they are.
  Surroundings surroundings_;
  std::string settingsFolder_;
  std::unique_ptr<QtSession> session_;
  const ProcessEnvironment environment_;
  const SystemClock clock_;
  const QtEntitlements entitlements_;
  IniUserDefaults defaults_;
  UnixSignals signals_;
  AccountDatabase cloud_;
  WorkerThread worker_;
  AppModel model_;
  QtUpdateFeed feed_;
  QtUrlOpener urls_;
  UpdaterModel updater_;
  MenuBarController menuBar_;
  TrayItem tray_;
  RunningInstance instance_;
  std::vector<std::unique_ptr<SignalSource>> quitting_;
  bool serverLost_ = false;
  WeakAnchor anchor_;
};

}  // namespace brimlo
