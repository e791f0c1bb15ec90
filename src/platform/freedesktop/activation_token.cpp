#include "platform/freedesktop/activation_token.h"

#include <cstdlib>

namespace brimlo {

std::string takeActivationToken() {
  std::string taken;
  for (const char* name : {"XDG_ACTIVATION_TOKEN", "DESKTOP_STARTUP_ID"}) {
    const char* token = std::getenv(name);
    if (token && taken.empty()) taken = token;
    unsetenv(name);
  }
  if (taken.size() > kLongestActivationToken) taken.clear();
  return taken;
}

}  // namespace brimlo
