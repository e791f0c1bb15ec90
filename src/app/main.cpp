#include <chrono>
#include <csignal>
#include <iostream>
#include <string>
#include <utility>

#include "app/command_line.h"
#include "app/program.h"
#include "platform/freedesktop/activation_token.h"
#include "platform/freedesktop/dbus_notifications.h"
#include "platform/freedesktop/running_instance.h"
#include "platform/posix/folder_lock.h"
#include "platform/posix/posix_file_system.h"
#include "platform/posix/syslog_log.h"
#include "platform/x11/x11_session.h"
#include "store/data_folder.h"

using namespace brimlo;

namespace {

/// How long a second start waits for the running program to answer.
constexpr std::chrono::seconds kAnswer{3};

/// Has the program that runs in `dataFolder` do what this start is for. Returns the exit status.
int askRunningProgram(Start start, const std::string& dataFolder, SystemLog& log) {
  const std::string running = "already running for " + dataFolder;
  if (start == Start::kBackground) {
    log.write(running);
    return 0;
  }
  using Action = InstanceRequest::Action;
  const InstanceRequest request{
      .action = start == Start::kQuickPaste ? Action::kQuickPaste : Action::kOpenMenu,
      .activationToken = takeActivationToken()};
  const bool answered = askRunningInstance(instanceSocketPath(dataFolder), request, kAnswer);
  log.write(running + (answered ? std::string() : std::string(", but it does not answer")));
  return answered ? 0 : 1;
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
  if (lock.state() == FolderLock::State::kHeldByAnother)
    return askRunningProgram(*start, dataFolder, log);

  const std::string token = takeActivationToken();
  DbusNotifications notifications;
  X11Session::OpenResult opened = X11Session::open(argc, argv, log, notifications);
  if (!opened.session) {
    log.write(opened.fault);
    return 1;
  }
  Program program(std::move(opened.session),
                  {.log = log,
                   .files = files,
                   .notifications = notifications,
                   .dataFolder = dataFolder,
                   .activationToken = token},
                  *start);
  return program.run();
}
