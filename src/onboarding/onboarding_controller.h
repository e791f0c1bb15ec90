#pragma once

#include <functional>
#include <memory>
#include <string>

#include "base/canonical_text.h"
#include "base/published.h"
#include "base/weak_anchor.h"
#include "onboarding/onboarding_view_state.h"
#include "platform/accessibility.h"
#include "platform/environment.h"
#include "platform/localized_strings.h"
#include "platform/pasteboard.h"
#include "platform/screens.h"
#include "platform/system_log.h"
#include "platform/timers.h"
#include "platform/titled_window.h"
#include "platform/user_defaults.h"

namespace brimlo {

/// The onboarding: a window of four steps that explains the program, asks for the right to type,
/// and has the person practise a copy and a paste. The window is made at its first presentation and
/// kept. Whoever finishes or closes it has seen it. Main thread.
class OnboardingController {
 public:
  /// Makes the window over a state that outlives it.
  using WindowFactory = std::function<std::unique_ptr<TitledWindow>(OnboardingViewState&)>;

  /// All of it outlives the controller.
  struct Services {
    Accessibility& accessibility;
    const Environment& environment;
    UserDefaults& defaults;
    SystemLog& log;
    Pasteboard& pasteboard;
    const Screens& screens;
    const LocalizedStrings& strings;
    Timers& timers;
    WindowFactory makeWindow;
  };

  explicit OnboardingController(const Services& services);

  OnboardingViewState& state() { return state_; }

  /// Whether the person has been through it.
  bool isDone() const;

  /// Shows the window at its first step, in front.
  void present();

  /// To be called with the text of each clip that was captured into the history.
  void checkCapturedText(const CanonicalText& text);

 private:
  void finish();
  void end();
  void makeWindowIfNeeded();
  void place(bool forDebugging);
  void startAccessibilityPoll();
  void requestAccessibility();
  void copyPracticeSample();
  std::string practiceSample() const;

  Services services_;
  OnboardingViewState state_;
  std::unique_ptr<TitledWindow> window_;
  std::unique_ptr<RepeatingTimer> axTimer_;
  bool debugForceUntrusted_;
  Subscription pasteWatch_;
  WeakAnchor anchor_;
};

}  // namespace brimlo
