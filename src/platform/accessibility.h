#pragma once

namespace brimlo {

/// Whether this program may type into other applications. Main thread.
class Accessibility {
 public:
  virtual ~Accessibility() = default;

  virtual bool isProcessTrusted() const = 0;

  /// Shows the person the desktop's own way to permit it, or why there is none here. Does not wait.
  virtual void promptForTrust() = 0;
};

}  // namespace brimlo
