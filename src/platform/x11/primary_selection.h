#pragma once

#include <functional>

namespace brimlo {

/// The PRIMARY selection, from which some applications paste. Main thread.
class PrimarySelection {
 public:
  virtual ~PrimarySelection() = default;

  /// Takes the selection, with the pasteboard's current text, and then calls `then`. The server
  /// carries out requests made in `then` after that.
  virtual void offerAsPrimary(std::function<void()> then) = 0;
};

}  // namespace brimlo
