#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/accessibility.h"
#include "platform/signal_sources.h"
#include "platform/system_log.h"
#include "store/clip_store.h"

namespace brimlo {

/// Lets a shell drive the running program: SIGUSR1 opens the palette, SIGUSR2 pastes the newest
/// clip, SIGWINCH shows a preview of the menu window. Main thread.
class DebugSignals {
 public:
  struct Actions {
    std::function<void()> showPalette;
    std::function<void(const std::string& text, const std::string& source)> pasteText;
    std::function<void()> showMenuPanel;
  };

  /// Installs the signal sources, for its own life. The services outlive it.
  DebugSignals(SignalSources& signals, const Accessibility& accessibility, SystemLog& log,
               const ClipStore& store, Actions actions);

 private:
  void debugShowPalette();
  void debugExercisePaste();

  const Accessibility& accessibility_;
  SystemLog& log_;
  const ClipStore& store_;
  Actions actions_;
  std::unique_ptr<SignalSource> debugSignalSource_;
  std::unique_ptr<SignalSource> debugPasteSignalSource_;
  std::unique_ptr<SignalSource> debugMenuSignalSource_;
};

}  // namespace brimlo
