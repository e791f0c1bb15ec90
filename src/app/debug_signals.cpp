#include "app/debug_signals.h"

#include <csignal>
#include <utility>

namespace brimlo {

DebugSignals::DebugSignals(SignalSources& signals, const Accessibility& accessibility,
                           SystemLog& log, const ClipStore& store, Actions actions)
    : accessibility_(accessibility),
      log_(log),
      store_(store),
      actions_(std::move(actions)),
      debugSignalSource_(signals.make(SIGUSR1, [this] { debugShowPalette(); })),
      debugPasteSignalSource_(signals.make(SIGUSR2, [this] { debugExercisePaste(); })),
      debugMenuSignalSource_(signals.make(SIGWINCH, actions_.showMenuPanel)) {}

void DebugSignals::debugShowPalette() {
  log_.write("SIGUSR1 -> show palette (debug)");
  actions_.showPalette();
}

void DebugSignals::debugExercisePaste() {
  if (store_.clips().value().empty()) return;
  const ClipPtr clip = store_.clips().value()[0];
  log_.write(std::string("SIGUSR2 -> exercise paste path, AXIsProcessTrusted=") +
             (accessibility_.isProcessTrusted() ? "true" : "false"));
  actions_.pasteText(clip->text, clip->source);
}

}  // namespace brimlo
