#pragma once

#include <QCoreApplication>
#include <chrono>
#include <functional>
#include <thread>

namespace brimlo::test {

/// Turns the run loop until `holds`, for ten seconds at most. `holds` is not asked again once it
/// has answered true.
inline bool wait(const std::function<bool()>& holds) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  while (!holds()) {
    if (std::chrono::steady_clock::now() > end) return false;
    QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return true;
}

}  // namespace brimlo::test
