#include "capture/clipboard_monitor.h"

#include <chrono>
#include <utility>

#include "base/unicode_text.h"

namespace brimlo {

ClipboardMonitor::ClipboardMonitor(Pasteboard& pasteboard, Timers& timers, MainQueue& queue)
    : pasteboard_(pasteboard),
      timers_(timers),
      queue_(queue),
      lastChangeCount_(pasteboard.changeCount()) {}

void ClipboardMonitor::setOnNewText(std::function<void(const CanonicalText&)> onNewText) {
  onNewText_ = std::move(onNewText);
}

void ClipboardMonitor::start() {
  timer_.reset();
  timer_ = timers_.scheduleRepeating(std::chrono::milliseconds(500), anchor_.guard([this] {
    queue_.async(anchor_.guard([this] { poll(); }));
  }));
}

void ClipboardMonitor::stop() {
  timer_.reset();
}

void ClipboardMonitor::poll() {
  const std::int64_t count = pasteboard_.changeCount();
  if (count == lastChangeCount_) return;
  lastChangeCount_ = count;

  std::optional<std::string> text = pasteboard_.string();
  if (!text || trimmed(*text, WhiteSpace::kWithNewlines).empty()) return;

  if (std::exchange(suppressedText_, std::nullopt) == text) return;
  if (onNewText_) onNewText_(*std::move(text));
}

void ClipboardMonitor::writeOwnText(const std::string& text) {
  suppressedText_ = text;
  pasteboard_.clearContents();
  pasteboard_.setString(text);
  lastChangeCount_ = pasteboard_.changeCount();
}

}  // namespace brimlo
