#pragma once

namespace brimlo {

/// Whether this program may type into other applications. The right may be granted and revoked
/// while the program runs. Main thread.
class Accessibility {
 public:
  virtual ~Accessibility() = default;

  /// Whether the program has the right at this moment. Does not wait.
  virtual bool isProcessTrusted() const = 0;

  /// Shows the person the desktop's own way to permit it, or why there is none here. Does not wait.
  virtual void promptForTrust() = 0;
};

}  // namespace brimlo
