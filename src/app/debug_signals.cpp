#include "app/debug_signals.h"

#include <csignal>
#include <utility>

namespace brimlo {

DebugSignals::DebugSignals(SignalSources& signals, const Accessibility& accessibility,
                           SystemLog& log, const ClipStore& store, ShowPalette showPalette,
                           PasteText pasteText)
    : accessibility_(accessibility),
      log_(log),
      store_(store),
      showPalette_(std::move(showPalette)),
      pasteText_(std::move(pasteText)),
      debugSignalSource_(signals.make(SIGUSR1, [this] { debugShowPalette(); })),
      debugPasteSignalSource_(signals.make(SIGUSR2, [this] { debugExercisePaste(); })) {}

void DebugSignals::debugShowPalette() {
  log_.write("SIGUSR1 -> show palette (debug)");
  showPalette_();
}

void DebugSignals::debugExercisePaste() {
  if (store_.clips().value().empty()) return;
  const ClipPtr clip = store_.clips().value()[0];
  log_.write(std::string("SIGUSR2 -> exercise paste path, AXIsProcessTrusted=") +
             (accessibility_.isProcessTrusted() ? "true" : "false"));
  pasteText_(clip->text, clip->source);
}

}  // namespace brimlo
