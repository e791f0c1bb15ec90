#include "app/program.h"

#include <QApplication>
#include <QJsonObject>
#include <QLayout>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <utility>

#include "menu/menu_content_view.h"
#include "menu/menu_popover.h"
#include "onboarding/onboarding_view.h"
#include "palette/quick_paste_view.h"
#include "platform/posix/posix_file_system.h"
#include "platform/posix/release_memory.h"
#include "platform/posix/user_locale.h"
#include "platform/posix/xdg_folders.h"
#include "platform/qt/qt_bundle.h"
#include "sync/local_templates.h"
#include "ui/screen_reader.h"
#include "updates/updates_view.h"

namespace brimlo {
namespace {

/// How long a sync run in the background may hold up the end of the program.
constexpr std::chrono::seconds kLastRun{1};
/// How long the desktop's clipboard manager may be silent when it is to take over the clipboard.
constexpr std::chrono::seconds kHandOver{2};
/// When the palette is made: after the start, before anybody is likely to ask for it.
constexpr std::chrono::milliseconds kUntilPalette{500};
/// When the memory that only the start needed is given back.
constexpr std::chrono::seconds kUntilStarted{2};

std::string prepareSettingsFolder(FileSystem& files, SystemLog& log) {
  std::string folder = xdgConfigHome().value_or(files.temporaryFolder()) + "/BrimloMac";
  if (const std::error_code error = files.createPrivateFolder(folder)) {
    log.write("cannot use the settings folder " + folder + ": " + error.message());
  }
  return folder;
}

/// What this build was made to do about updates.
UpdateSettings updateSettings() {
  const QJsonObject bundled = bundledSettings("updates.json");
  return {.feed = bundled["feed"].toString().toStdString(),
          .checksAutomatically = bundled["checksAutomatically"].toBool(),
          .intervalSeconds = bundled["intervalSeconds"].toDouble()};
}

}  // namespace

Program::Program(std::unique_ptr<QtSession> session, const Surroundings& surroundings, Start start)
    : surroundings_(surroundings),
      settingsFolder_(prepareSettingsFolder(surroundings.files, surroundings.log)),
      session_(std::move(session)),
      defaults_(settingsFolder_ + "/defaults.ini", surroundings.log),
      signals_(session_->runLoop()),
      cloud_(
          {.accountFile = settingsFolder_ + "/account",
           .embedded = surroundings.dataFolder + "/sync.sqlite"},
          // Asked for on the worker's thread.
          [dataFolder = surroundings.dataFolder] {
            return localTemplateRecords(PosixFileSystem(), dataFolder);
          },
          PostgresPatience{}, surroundings.log),
      model_(services()),
      feed_(fetchProgram(), "Brimlo/" BRIMLO_VERSION),
      updater_({.clock = clock_,
                .defaults = defaults_,
                .feed = feed_,
                .log = surroundings.log,
                .strings = session_->strings(),
                .timers = session_->runLoop(),
                .urls = urls_,
                .makeWindow = [this](UpdatesViewState& state) { return makeUpdatesWindow(state); },
                .settings = updateSettings(),
                .version = BRIMLO_VERSION}),
      menuBar_(
          {.events = session_->eventMonitors(),
           .queue = session_->runLoop(),
           .screens = session_->screens(),
           .makeContent =
               [this] { return model_.makeMenuContent([this] { updater_.checkForUpdates(); }); },
           .makePanel = [this](MenuContentModel& content) { return makeMenuPanel(content); }}),
      tray_(session_->screens(), surroundings.log),
      instance_(instanceSocketPath(surroundings.dataFolder), session_->runLoop(), surroundings.log,
                [this](const InstanceRequest& request) { answer(request); }) {
  QtRunLoop& runLoop = session_->runLoop();
  QApplication::setWindowIcon(QIcon::fromTheme("brimlo", programIcon()));
  ui::installScreenReaderSupport();
  tray_.show([this](const TrayItem::Click& click) {
    session_->useActivationToken(click.activationToken);
    menuBar_.toggle(click.item);
  });
  session_->useActivationToken(surroundings.activationToken);
  if (start == Start::kQuickPaste) {
    runLoop.async(anchor_.guard([this] { model_.showQuickPaste(); }));
  }
  runLoop.asyncAfter(kUntilPalette, anchor_.guard([this] { model_.quickPaste().prepare(); }));
  runLoop.asyncAfter(kUntilStarted, [] { releaseStartUpMemory(); });
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
    quitting_.push_back(signals_.make(signal, [this] { model_.quit(); }));
  }
  session_->setOnEnd(anchor_.guard([this](Session::End how) { sessionEnded(how); }));
}

int Program::run() {
  int status = session_->run();
  menuBar_.close();
  if (serverLost_) {
    status = 1;
  } else {
    session_->handOver(kHandOver);
  }
  if (worker_.finish(kLastRun) == WorkerThread::Ending::kHanging) {
    // A name service or a disk does not answer. What the run had done so far is kept or not, but
    // whole either way.
    surroundings_.log.write("left a sync run unfinished");
    std::_Exit(status);
  }
  return status;
}

Services Program::services() {
  QtRunLoop& runLoop = session_->runLoop();
  return {
      .session = *session_,
      .application = runLoop,
      .background = worker_,
      .clock = clock_,
      .cloud = cloud_,
      .entitlements = entitlements_,
      .environment = environment_,
      .files = surroundings_.files,
      .dataFolder = surroundings_.dataFolder,
      .locale = userLocale(environment_),
      .makeMenuPreview = [this](MenuContentModel& content) { return makeMenuPreview(content); },
      .makeOnboardingWindow =
          [this](OnboardingViewState& state) { return makeOnboardingWindow(state); },
      .makePalettePanel = [this](QuickPasteViewState& state) { return makePalettePanel(state); },
      .strings = session_->strings(),
      .queue = runLoop,
      .signals = signals_,
      .log = surroundings_.log,
      .timers = runLoop,
      .defaults = defaults_,
      .notifications = surroundings_.notifications};
}

std::unique_ptr<KeyablePanel> Program::makePalettePanel(QuickPasteViewState& state) {
  auto view = std::make_unique<QuickPasteView>(state, session_->strings(), session_->pasteboard());
  const auto opaqueShape = [view = view.get()] { return view->opaqueShape(); };
  return session_->makePanel(std::move(view), opaqueShape);
}

std::unique_ptr<KeyablePanel> Program::makeMenuPanel(MenuContentModel& content) {
  auto popover = std::make_unique<MenuPopover>(content, session_->appearance());
  const auto opaqueShape = [popover = popover.get()] { return popover->opaqueShape(); };
  return session_->makePanel(std::move(popover), opaqueShape);
}

std::unique_ptr<TitledWindow> Program::makeMenuPreview(MenuContentModel& content) {
  auto view = std::make_unique<MenuContentView>(content, session_->appearance());
  view->layout()->setSizeConstraint(QLayout::SetFixedSize);
  view->adjustSize();
  return session_->makeWindow(std::move(view), "Brimlo");
}

std::unique_ptr<TitledWindow> Program::makeOnboardingWindow(OnboardingViewState& state) {
  return session_->makeWindow(
      std::make_unique<OnboardingView>(state, session_->strings(), session_->pasteboard()),
      session_->strings().text("onboarding.window_title"));
}

std::unique_ptr<TitledWindow> Program::makeUpdatesWindow(UpdatesViewState& state) {
  return session_->makeWindow(
      std::make_unique<UpdatesView>(state, session_->appearance(), session_->strings()),
      session_->strings().text("updates.window_title"));
}

void Program::answer(const InstanceRequest& request) {
  session_->useActivationToken(request.activationToken);
  switch (request.action) {
    case InstanceRequest::Action::kQuickPaste:
      return model_.showQuickPaste();
    case InstanceRequest::Action::kOpenMenu:
      return menuBar_.open(tray_.frame());
  }
}

void Program::sessionEnded(Session::End how) {
  serverLost_ = how == Session::End::kServerLost;
  model_.quit();
}

}  // namespace brimlo
