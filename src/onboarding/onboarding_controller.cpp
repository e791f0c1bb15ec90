#include "onboarding/onboarding_controller.h"

#include <algorithm>
#include <chrono>
#include <optional>

#include "base/decimal_integer.h"

namespace brimlo {
namespace {

constexpr const char* kDoneKey = "macOnboardingDone";
constexpr const char* kStepVariable = "BRIMLO_OB_STEP";
constexpr const char* kForceUntrustedVariable = "BRIMLO_OB_FORCE_UNTRUSTED";
constexpr std::chrono::milliseconds kPollInterval{700};

const char* yesOrNo(bool value) {
  return value ? "true" : "false";
}

}  // namespace

OnboardingController::OnboardingController(const Services& services)
    : services_(services),
      debugForceUntrusted_(services.environment.value(kForceUntrustedVariable) == "1") {
  state_.onRequestAccessibility = anchor_.guard([this] { requestAccessibility(); });
  state_.onPracticeCopy = anchor_.guard([this] { copyPracticeSample(); });
  state_.onFinish = anchor_.guard([this] { finish(); });
  pasteWatch_ = state_.practicePasteText.observeChanges([this](const std::string& text) {
    if (!state_.practicePasted.value() && text.find(practiceSample()) != text.npos) {
      state_.practicePasted.set(true);
    }
  });
}

bool OnboardingController::isDone() const {
  return services_.defaults.boolForKey(kDoneKey).value_or(false);
}

void OnboardingController::present() {
  state_.step.set(0);
  state_.axTrusted.set(!debugForceUntrusted_ && services_.accessibility.isProcessTrusted());
  const auto chosen = services_.environment.value(kStepVariable);
  if (const auto step = chosen ? decimalInteger(*chosen) : std::nullopt) {
    state_.step.set(std::clamp<std::int64_t>(*step, 0, OnboardingViewState::kLastStep));
  }
  makeWindowIfNeeded();
  startAccessibilityPoll();
  place(chosen.has_value());
  window_->makeKeyAndOrderFront();
  const std::optional<Rect> frame = window_->frame();
  services_.log.write("onboarding presented (step=" + std::to_string(state_.step.value()) +
                      ", axTrusted=" + yesOrNo(state_.axTrusted.value()) +
                      ") frame=" + (frame ? toString(*frame) : "?"));
}

void OnboardingController::makeWindowIfNeeded() {
  if (window_) return;
  window_ = services_.makeWindow(state_);
  window_->center();
  window_->setOnWillClose(anchor_.guard([this] { end(); }));
}

void OnboardingController::place(bool forDebugging) {
  if (!forDebugging) return window_->center();
  window_->setLevel(TitledWindow::Level::kFloating);
  const auto screen = primaryScreen(services_.screens);
  if (!screen) return;
  window_->setFrameOrigin(originCentered(window_->contentSize(), screen->visibleFrame));
}

void OnboardingController::startAccessibilityPoll() {
  if (debugForceUntrusted_) return;
  axTimer_ = services_.timers.scheduleRepeating(kPollInterval, anchor_.guard([this] {
    const bool trusted = services_.accessibility.isProcessTrusted();
    if (trusted == state_.axTrusted.value()) return;
    state_.axTrusted.set(trusted);
    services_.log.write(std::string("onboarding AX poll -> trusted=") + yesOrNo(trusted));
  }));
}

void OnboardingController::requestAccessibility() {
  services_.accessibility.promptForTrust();
  services_.log.write("onboarding requested accessibility permission");
}

void OnboardingController::copyPracticeSample() {
  // As any other program would copy it, so that the monitor captures it.
  services_.pasteboard.clearContents();
  services_.pasteboard.setString(practiceSample());
  services_.log.write("onboarding practice: sample copied to pasteboard");
}

void OnboardingController::checkCapturedText(const CanonicalText& text) {
  if (state_.practiceCopied.value() || !text.equals(practiceSample())) return;
  state_.practiceCopied.set(true);
  services_.log.write("onboarding practice: sample captured into history");
}

void OnboardingController::finish() {
  end();
  if (window_) window_->orderOut();
  services_.log.write("onboarding finished");
}

void OnboardingController::end() {
  services_.defaults.setBool(kDoneKey, true);
  axTimer_.reset();
}

std::string OnboardingController::practiceSample() const {
  return services_.strings.text("onboarding.practice.sample");
}

}  // namespace brimlo
