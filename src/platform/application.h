#pragma once

namespace brimlo {

/// The running process as the desktop sees it. Main thread.
class Application {
 public:
  virtual ~Application() = default;

  /// Ends the run loop once the current block has returned; the process then exits with 0.
  virtual void terminate() = 0;
};

}  // namespace brimlo
