#pragma once

#include <cstdlib>

#include "platform/environment.h"

namespace brimlo {

/// The environment of this process.
class ProcessEnvironment : public Environment {
 public:
  std::optional<std::string> value(const char* name) const override {
    const char* value = std::getenv(name);
    return value ? std::optional<std::string>(value) : std::nullopt;
  }
};

}  // namespace brimlo
