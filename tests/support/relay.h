#pragma once

#include <atomic>
#include <cstddef>
#include <optional>
#include <thread>

namespace brimlo::test {

/// Stands between a client and a server on this machine, on a thread of its own, and fails on
/// demand.
class Relay {
 public:
  /// `server`: its TCP port.
  explicit Relay(int server);
  ~Relay();

  int port() const { return port_; }

  enum class Behavior { kForward, kSilent };
  /// Silent: bytes are taken and not passed on.
  void setBehavior(Behavior behavior) { behavior_ = behavior; }

  /// Cuts every connection now.
  void cutAll() {
    cutting_ = true;
    waitForTurn();
  }

  /// Cuts each connection once this many further bytes have passed, in either direction, and takes
  /// no new one; with none, goes on for ever.
  void cutAfter(std::optional<std::size_t> bytes);

 private:
  void run();
  void waitForTurn();

  int server_;
  int listener_ = -1;
  int port_ = 0;
  std::atomic<Behavior> behavior_ = Behavior::kForward;
  std::atomic<bool> cutting_ = false;
  std::atomic<long> left_ = -1;  // bytes before the cut; -1: no cut
  std::atomic<unsigned> turns_ = 0;
  std::atomic<bool> ending_ = false;
  std::thread thread_;
};

}  // namespace brimlo::test
