#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "base/published.h"

namespace brimlo {

/// What the onboarding window shows. The controller keeps it, the view observes it, writes only
/// `step` and `practicePasteText`, and reports through the callbacks. Main thread.
struct OnboardingViewState {
  static constexpr std::int64_t kLastStep = 3;

  Published<std::int64_t> step{0};               ///< 0 to kLastStep
  Published<bool> axTrusted{false};              ///< whether the program may type for the person
  Published<bool> practiceCopied{false};         ///< the history has seen the sample
  Published<std::string> practicePasteText{""};  ///< what stands in the practice field
  Published<bool> practicePasted{false};         ///< the field has held the sample

  std::function<void()> onRequestAccessibility;
  std::function<void()> onPracticeCopy;
  std::function<void()> onFinish;
};

}  // namespace brimlo
