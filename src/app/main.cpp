#include <QApplication>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <iostream>

#include "app/app_model.h"
#include "app/command_line.h"
#include "app/tray_item.h"
#include "menu/menu_bar_controller.h"
#include "menu/menu_content_view.h"
#include "menu/menu_popover.h"
#include "onboarding/onboarding_view.h"
#include "palette/quick_paste_view.h"
#include "platform/cloud/account_database.h"
#include "platform/freedesktop/dbus_notifications.h"
#include "platform/freedesktop/desktop_appearance.h"
#include "platform/freedesktop/running_instance.h"
#include "platform/posix/folder_lock.h"
#include "platform/posix/posix_file_system.h"
#include "platform/posix/process_environment.h"
#include "platform/posix/syslog_log.h"
#include "platform/posix/system_clock.h"
#include "platform/posix/unix_signals.h"
#include "platform/posix/user_locale.h"
#include "platform/posix/worker_thread.h"
#include "platform/posix/working_set.h"
#include "platform/posix/xdg_folders.h"
#include "platform/qt/ini_user_defaults.h"
#include "platform/qt/qt_bundle.h"
#include "platform/qt/qt_entitlements.h"
#include "platform/qt/qt_run_loop.h"
#include "platform/qt/qt_screens.h"
#include "platform/qt/qt_strings.h"
#include "platform/qt/qt_titled_window.h"
#include "platform/qt/qt_update_feed.h"
#include "platform/qt/qt_url_opener.h"
#include "platform/x11/x11_connection.h"
#include "platform/x11/x11_event_monitors.h"
#include "platform/x11/x11_hot_keys.h"
#include "platform/x11/x11_key_events.h"
#include "platform/x11/x11_keyable_panel.h"
#include "platform/x11/x11_keyboard.h"
#include "platform/x11/x11_pasteboard.h"
#include "platform/x11/x11_raw_input.h"
#include "platform/x11/x11_theme_name.h"
#include "platform/x11/x11_window_id.h"
#include "platform/x11/x11_window_server.h"
#include "platform/x11/x11_workspace.h"
#include "store/data_folder.h"
#include "sync/local_templates.h"
#include "ui/screen_reader.h"
#include "updates/updater_model.h"
#include "updates/updates_view.h"

using namespace brimlo;

namespace {

/// How long a sync run in the background may hold up the end of the program.
constexpr std::chrono::seconds kLastRun{1};
/// How long the desktop's clipboard manager may be silent when it is to take over the clipboard.
constexpr std::chrono::seconds kHandOver{2};
/// How long a second start waits for the one that runs.
constexpr std::chrono::seconds kAnswer{3};

/// Has the program that runs in `dataFolder` do what this start is for. Returns the exit status.
int handOver(Start start, const std::string& dataFolder, SystemLog& log) {
  const std::string running = "already running for " + dataFolder;
  if (start == Start::kBackground) {
    log.write(running);
    return 0;
  }
  const auto request =
      start == Start::kQuickPaste ? InstanceRequest::kQuickPaste : InstanceRequest::kOpenMenu;
  const bool answered = askRunningInstance(instanceSocketPath(dataFolder), request, kAnswer);
  log.write(running + (answered ? std::string() : std::string(", but it does not answer")));
  return answered ? 0 : 1;
}

/// What this build was made to do about updates.
UpdateSettings updateSettings() {
  const QJsonObject bundled = bundledSettings("updates.json");
  return {.feed = bundled["feed"].toString().toStdString(),
          .checksAutomatically = bundled["checksAutomatically"].toBool(),
          .intervalSeconds = bundled["intervalSeconds"].toDouble()};
}

}  // namespace

int main(int argc, char** argv) {
  // Writing to a server or a terminal that has gone away is an error to deal with, not an end.
  std::signal(SIGPIPE, SIG_IGN);

  const auto start = parseCommandLine({argv + 1, argv + argc});
  if (!start) {
    std::cerr << usage();
    return 2;
  }
  if (start == Start::kHelp || start == Start::kVersion) {
    std::cout << (start == Start::kHelp ? usage() : "brimlo " BRIMLO_VERSION "\n");
    return 0;
  }

  SyslogLog log;
  PosixFileSystem files;

  const std::string dataFolder = prepareDataFolder(files, log);
  const FolderLock lock(dataFolder);
  if (lock.state() == FolderLock::State::kHeldByAnother) {
    return handOver(*start, dataFolder, log);
  }

  const X11Connection::OpenResult x11 = X11Connection::open();
  if (!x11.connection) {
    log.write(x11.fault);
    return 1;
  }

  // The windows are windows of that X server. They are drawn without OpenGL, whose libraries would
  // take more memory than everything else.
  qputenv("QT_QPA_PLATFORM", "xcb");
  qputenv("QT_XCB_GL_INTEGRATION", "none");
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication::setDesktopFileName("org.brimlo.Brimlo");
  QApplication::setWindowIcon(QIcon::fromTheme("brimlo", programIcon()));
  ui::installScreenReaderSupport();
  x11.connection->serve();

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
  const ProcessEnvironment environment;
  X11Keyboard keyboard(*x11.connection);
  X11RawInput rawInput(*x11.connection);
  X11Workspace workspace(*x11.connection);
  X11WindowServer windowServer(*x11.connection, workspace);
  X11EventMonitors events(*x11.connection, keyboard, rawInput);
  X11HotKeys hotKeys(*x11.connection, keyboard, rawInput, log);
  X11KeyEvents keys(*x11.connection, keyboard, workspace, pasteboard, runLoop, notifications,
                    strings);
  QtScreens screens;
  UnixSignals signals(runLoop);
  const QtEntitlements entitlements;
  AccountDatabase cloud(
      {.accountFile = settingsFolder + "/account", .embedded = dataFolder + "/sync.sqlite"},
      [dataFolder] { return localTemplateRecords(PosixFileSystem(), dataFolder); },
      PostgresPatience{}, log);
  WorkerThread worker;

  // The palette's first showing must take no longer than the others, but fonts, symbols and the
  // window take their time: so they are made while nobody waits.
  std::unique_ptr<X11KeyablePanel> prepared;
  bool paletteMade = false;
  const auto makePanel = [&](QuickPasteViewState& state) {
    paletteMade = true;
    auto view = std::make_unique<QuickPasteView>(state, strings, pasteboard);
    const auto opaqueShape = [view = view.get()] { return view->opaqueShape(); };
    return std::make_unique<X11KeyablePanel>(std::move(view), opaqueShape, windowServer);
  };
  const auto makePalettePanel = [&](QuickPasteViewState& state) {
    return prepared ? std::move(prepared) : makePanel(state);
  };

  const X11ThemeName themeName(*x11.connection);
  const DesktopAppearance appearance(themeName.value());
  const auto makeMenuPanel = [&](MenuContentModel& content) -> std::unique_ptr<KeyablePanel> {
    auto popover = std::make_unique<MenuPopover>(content, appearance.value());
    const auto opaqueShape = [popover = popover.get()] { return popover->opaqueShape(); };
    return std::make_unique<X11KeyablePanel>(std::move(popover), opaqueShape, windowServer);
  };
  const auto activate = [&](QWindow& window) {
    workspace.activate(
        {.bundleIdentifier = "", .window = windowId(static_cast<xcb_window_t>(window.winId()))});
  };
  const auto makeMenuPreview = [&](MenuContentModel& content) {
    auto view = std::make_unique<MenuContentView>(content, appearance.value());
    view->layout()->setSizeConstraint(QLayout::SetFixedSize);
    view->adjustSize();
    return std::make_unique<QtTitledWindow>(std::move(view), "Brimlo", activate);
  };
  const auto makeOnboardingWindow = [&](OnboardingViewState& state) {
    return std::make_unique<QtTitledWindow>(
        std::make_unique<OnboardingView>(state, strings, pasteboard),
        strings.text("onboarding.window_title"), activate);
  };

  AppModel model({.accessibility = keys,
                  .application = runLoop,
                  .background = worker,
                  .clock = clock,
                  .cloud = cloud,
                  .entitlements = entitlements,
                  .environment = environment,
                  .events = events,
                  .files = files,
                  .dataFolder = dataFolder,
                  .hotKeys = hotKeys,
                  .keys = keys,
                  .locale = userLocale(environment),
                  .makeMenuPreview = makeMenuPreview,
                  .makeOnboardingWindow = makeOnboardingWindow,
                  .makePalettePanel = makePalettePanel,
                  .strings = strings,
                  .queue = runLoop,
                  .pasteboard = pasteboard,
                  .screens = screens,
                  .signals = signals,
                  .log = log,
                  .timers = runLoop,
                  .defaults = defaults,
                  .notifications = notifications,
                  .workspace = workspace});

  QtUpdateFeed feed(fetchProgram(), "Brimlo/" BRIMLO_VERSION);
  QtUrlOpener urls;
  const auto makeUpdatesWindow = [&](UpdatesViewState& state) {
    return std::make_unique<QtTitledWindow>(
        std::make_unique<UpdatesView>(state, appearance.value(), strings),
        strings.text("updates.window_title"), activate);
  };
  UpdaterModel updater({.clock = clock,
                        .defaults = defaults,
                        .feed = feed,
                        .log = log,
                        .strings = strings,
                        .timers = runLoop,
                        .urls = urls,
                        .makeWindow = makeUpdatesWindow,
                        .settings = updateSettings(),
                        .version = BRIMLO_VERSION});
  MenuBarController menuBar(
      {.events = events,
       .queue = runLoop,
       .screens = screens,
       .makeContent =
           [&] { return model.makeMenuContent([&updater] { updater.checkForUpdates(); }); },
       .makePanel = makeMenuPanel});
  TrayItem tray(screens, log);
  tray.show([&](const std::optional<Rect>& item) { menuBar.toggle(item); });
  const RunningInstance instance(instanceSocketPath(dataFolder), runLoop, log,
                                 [&](InstanceRequest request) {
                                   if (request == InstanceRequest::kQuickPaste)
                                     return model.showQuickPaste();
                                   menuBar.open(tray.frame());
                                 });
  if (start == Start::kQuickPaste) runLoop.async([&] { model.showQuickPaste(); });

  runLoop.asyncAfter(std::chrono::milliseconds(500), [&] {
    if (paletteMade) return;
    prepared = makePanel(model.quickPaste().state());
    prepared->prepare();
  });
  // Reading the history and the first sync run take memory that nobody needs again.
  runLoop.asyncAfter(std::chrono::seconds(2), [] { releaseStartUpMemory(); });

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

  int status = application.exec();
  menuBar.close();
  if (serverLost) {
    status = 1;
  } else {
    pasteboard.handOver(kHandOver);
  }
  if (worker.finish(kLastRun) == WorkerThread::Ending::kHanging) {
    // A name service or a disk that does not answer; what the run had done so far is kept or not,
    // but whole either way.
    log.write("left a sync run unfinished");
    std::_Exit(status);
  }
  return status;
}
