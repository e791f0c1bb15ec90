#pragma once

#include <string>

#include "platform/environment.h"

namespace brimlo {

/// The POSIX name of the locale that the user's dates and letters follow, "C" without any.
inline std::string userLocale(const Environment& environment) {
  for (const char* name : {"LC_ALL", "LC_TIME", "LANG"}) {
    const auto value = environment.value(name);
    if (value && !value->empty()) return *value;
  }
  return "C";
}

}  // namespace brimlo
