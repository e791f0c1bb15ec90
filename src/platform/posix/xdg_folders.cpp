#include "platform/posix/xdg_folders.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>

namespace brimlo {
namespace {

std::optional<std::string> absolute(const char* path) {
  return path && *path == '/' ? std::optional<std::string>(path) : std::nullopt;
}

std::optional<std::string> inHome(const char* folder) {
  auto home = absolute(std::getenv("HOME"));
  if (!home) {
    const passwd* user = getpwuid(geteuid());
    home = absolute(user ? user->pw_dir : nullptr);
  }
  return home ? std::optional(*home + folder) : std::nullopt;
}

}  // namespace

std::optional<std::string> xdgDataHome() {
  const auto set = absolute(std::getenv("XDG_DATA_HOME"));
  return set ? set : inHome("/.local/share");
}

std::optional<std::string> xdgConfigHome() {
  const auto set = absolute(std::getenv("XDG_CONFIG_HOME"));
  return set ? set : inHome("/.config");
}

}  // namespace brimlo
