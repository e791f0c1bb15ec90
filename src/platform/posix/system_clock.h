#pragma once

#include <chrono>

#include "platform/clock.h"

namespace brimlo {

class SystemClock : public Clock {
 public:
  double nowMs() const override {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration<double, std::milli>(now).count();
  }
};

}  // namespace brimlo
