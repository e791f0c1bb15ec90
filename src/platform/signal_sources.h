#pragma once

#include <functional>
#include <memory>

namespace brimlo {

/// A source that delivers a Unix signal; destroying it ends the delivery.
class SignalSource {
 public:
  virtual ~SignalSource() = default;
};

/// Unix signals as blocks on the main queue. Main thread.
class SignalSources {
 public:
  virtual ~SignalSources() = default;

  /// Calls `block` for every delivery of `signal` from now on, in place of the signal's default
  /// action; several that arrive at once may be one. A signal that the process was started to
  /// ignore, as `nohup` does, stays ignored. One source a signal.
  [[nodiscard]] virtual std::unique_ptr<SignalSource> make(int signal,
                                                           std::function<void()> block) = 0;
};

}  // namespace brimlo
