#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "base/canonical_text.h"
#include "base/weak_anchor.h"
#include "platform/main_queue.h"
#include "platform/pasteboard.h"
#include "platform/timers.h"

namespace brimlo {

/// Watches the pasteboard, which tells nobody of its changes, by asking for its count twice a
/// second, and reports each newly copied text once. It is also the one place through which the
/// program writes text there, so that its own writes are never reported. Main thread.
class ClipboardMonitor {
 public:
  /// What is on the pasteboard now is never reported. Stopped until `start`.
  ClipboardMonitor(Pasteboard& pasteboard, Timers& timers, MainQueue& queue);

  /// Receives each newly copied text, untrimmed. Not called for blank text.
  void setOnNewText(std::function<void(const CanonicalText&)> onNewText);

  /// Polls every half second from now on; called while running, it starts the interval anew.
  void start();
  void stop();

  /// One look at the pasteboard.
  void poll();

  /// Puts `text` on the pasteboard as the program's own.
  void writeOwnText(const std::string& text);

 private:
  Pasteboard& pasteboard_;
  Timers& timers_;
  MainQueue& queue_;
  std::unique_ptr<RepeatingTimer> timer_;
  std::int64_t lastChangeCount_;
  // The text last written by the program itself. Some clients take a text over from its owner and
  // offer it again, which moves the count once more with the same text.
  std::optional<std::string> suppressedText_;
  std::function<void(const CanonicalText&)> onNewText_;
  WeakAnchor anchor_;
};

}  // namespace brimlo
