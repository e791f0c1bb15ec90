#include <QCoreApplication>
#include <csignal>

#include "app/app_model.h"
#include "platform/linux/dbus_notifications.h"
#include "platform/linux/folder_lock.h"
#include "platform/linux/ini_user_defaults.h"
#include "platform/linux/posix_file_system.h"
#include "platform/linux/syslog_log.h"
#include "platform/linux/system_clock.h"
#include "platform/linux/unix_signals.h"
#include "platform/linux/x11_connection.h"
#include "platform/linux/x11_key_events.h"
#include "platform/linux/x11_pasteboard.h"
#include "platform/linux/x11_workspace.h"
#include "platform/linux/xdg_folders.h"
#include "platform/qt/qt_run_loop.h"
#include "platform/qt/qt_strings.h"
#include "store/guarded_file.h"

using namespace brimlo;

int main(int argc, char** argv) {
  // Writing to a server or a terminal that has gone away is an error to deal with, not an end.
  std::signal(SIGPIPE, SIG_IGN);

  QCoreApplication application(argc, argv);
  SyslogLog log;
  PosixFileSystem files;

  const std::string dataFolder = prepareDataFolder(files, log);
  const FolderLock lock(dataFolder);
  if (lock.state() == FolderLock::State::kHeldByAnother) {
    log.write("already running for " + dataFolder);
    return 0;
  }

  const X11Connection::OpenResult x11 = X11Connection::open();
  if (!x11.connection) {
    log.write(x11.fault);
    return 1;
  }

  const std::string settingsFolder =
      xdgConfigHome().value_or(files.temporaryFolder()) + "/BrimloMac";
  if (const std::error_code error = files.createPrivateFolder(settingsFolder)) {
    log.write("cannot use the settings folder " + settingsFolder + ": " + error.message());
  }
  IniUserDefaults defaults(settingsFolder + "/defaults.ini", log);
  X11Pasteboard pasteboard(*x11.connection, log);
  QtRunLoop runLoop;
  const QtStrings strings;
  const SystemClock clock;
  DbusNotifications notifications;
  X11Workspace workspace(*x11.connection);
  X11KeyEvents keys(*x11.connection, workspace, pasteboard, runLoop, notifications, strings);
  UnixSignals signals;

  AppModel model({.accessibility = keys,
                  .application = runLoop,
                  .clock = clock,
                  .files = files,
                  .dataFolder = dataFolder,
                  .keys = keys,
                  .strings = strings,
                  .queue = runLoop,
                  .pasteboard = pasteboard,
                  .signals = signals,
                  .log = log,
                  .timers = runLoop,
                  .defaults = defaults,
                  .notifications = notifications,
                  .workspace = workspace});

  std::vector<std::unique_ptr<SignalSource>> quitting;
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
    quitting.push_back(signals.make(signal, [&model] { model.quit(); }));
  }
  bool serverLost = false;
  x11.connection->setLostHandler([&] {
    log.write("lost the connection to the X server");
    serverLost = true;
    model.quit();
  });

  const int status = application.exec();
  return serverLost ? 1 : status;
}
