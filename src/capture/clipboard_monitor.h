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

/// Watches the pasteboard, which does not announce its changes, by polling its count twice a
/// second, and reports each newly copied text once. The program writes its own texts to the
/// pasteboard through the monitor alone, so that they are never reported. Main thread.
class ClipboardMonitor {
 public:
  /// Does not poll until `start`. What is on the pasteboard now is never reported.
  ClipboardMonitor(Pasteboard& pasteboard, Timers& timers, MainQueue& queue);

  /// Receives each newly copied text, untrimmed. Not called for blank text.
  void setOnNewText(std::function<void(const CanonicalText&)> onNewText);

  /// Polls every half second from now on. While running, restarts the interval.
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
  // The text last written by the program itself. Some clients take over a text and offer it again
  // themselves, which moves the count once more.
  std::optional<std::string> suppressedText_;
  std::function<void(const CanonicalText&)> onNewText_;
  WeakAnchor anchor_;
};

}  // namespace brimlo
