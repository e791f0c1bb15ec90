#include "onboarding/onboarding_controller.h"

#include <gtest/gtest.h>

#include "support/fake_panel.h"
#include "support/fakes.h"

namespace brimlo {
namespace {

using namespace std::chrono_literals;

const std::string kSample = "onboarding.practice.sample";

class OnboardingControllerTest : public testing::Test {
 protected:
  std::unique_ptr<OnboardingController> make() {
    return std::make_unique<OnboardingController>(OnboardingController::Services{
        .accessibility = desktop,
        .environment = surroundings,
        .defaults = defaults,
        .log = log,
        .pasteboard = pasteboard,
        .screens = surroundings,
        .strings = strings,
        .timers = loop,
        .makeWindow = [this](auto&) { return std::make_unique<test::FakeWindow>(window); }});
  }

  test::FakeDefaults defaults;
  test::FakeDesktop desktop;
  test::FakeLog log;
  test::FakeRunLoop loop;
  test::FakePasteboard pasteboard{loop};
  test::FakeStrings strings;
  test::FakeSurroundings surroundings;
  test::WindowRecord window;
};

TEST_F(OnboardingControllerTest, TheVariableChoosesTheStepAndHasTheWindowFloatOnThePrimaryScreen) {
  surroundings.all = {{{{-800, 0}, {800, 600}}, {{-800, 0}, {800, 600}}},
                      {{{0, 0}, {1280, 800}}, {{0, 0}, {1280, 776}}}};
  const struct {
    std::optional<std::string> value;
    const char* logged;
  } cases[] = {
      {{}, "(step=0, axTrusted=true) frame={{5, 6}, {480, 560}}"},
      {"7", "(step=3, axTrusted=true) frame={{400, 108}, {480, 560}}"},
      {"-1", "(step=0, axTrusted=true) frame={{400, 108}, {480, 560}}"},
  };
  for (const auto& [value, logged] : cases) {
    surroundings.variables.clear();
    if (value) surroundings.variables["BRIMLO_OB_STEP"] = *value;
    window = {};
    const auto controller = make();
    controller->state().step.set(1);
    controller->present();
    EXPECT_EQ(log.lines.back(), std::string("onboarding presented ") + logged);
    EXPECT_EQ(window.level == TitledWindow::Level::kFloating, value.has_value());
    EXPECT_TRUE(window.visible);
  }
  surroundings.all.clear();
  surroundings.main.reset();
  make()->present();
  EXPECT_EQ(window.frame.origin, (Point{5, 6})) << "without a screen, where the desktop puts it";
}

TEST_F(OnboardingControllerTest, ThePermissionIsPolledFromPresentationToTheEnd) {
  desktop.trusted = false;
  const auto controller = make();
  for (int i = 0; i < 2; ++i) controller->present();
  EXPECT_EQ(loop.runningTimers(), 1u);
  for (const bool trusted : {true, false}) {
    loop.advance(2100ms);
    desktop.trusted = trusted;
    loop.advance(699ms);
    EXPECT_EQ(controller->state().axTrusted.value(), !trusted);
    loop.advance(1ms);
    EXPECT_EQ(controller->state().axTrusted.value(), trusted);
    EXPECT_EQ(log.lines.back(),
              std::string("onboarding AX poll -> trusted=") + (trusted ? "true" : "false"));
  }
  EXPECT_EQ(log.lines.size(), 4u);
}

TEST_F(OnboardingControllerTest, ForcedUntrustedItStaysSo) {
  for (const bool forced : {true, false}) {
    surroundings.variables["BRIMLO_OB_FORCE_UNTRUSTED"] = forced ? "1" : "true";
    const auto controller = make();
    controller->present();
    EXPECT_EQ(controller->state().axTrusted.value(), !forced);
    EXPECT_EQ(loop.runningTimers(), forced ? 0u : 1u);
    desktop.asked.clear();
    controller->state().onRequestAccessibility();
    EXPECT_EQ(desktop.asked, std::vector<std::string>{"prompt"});
    EXPECT_EQ(log.lines.back(), "onboarding requested accessibility permission");
  }
}

TEST_F(OnboardingControllerTest, FinishingAndClosingBothCountAsSeen) {
  auto controller = make();
  for (const bool closes : {false, true}) {
    defaults.values.clear();
    EXPECT_FALSE(controller->isDone());
    window.frame.origin = {7, 7};
    controller->present();
    EXPECT_EQ(window.frame.origin, (Point{5, 6})) << "in the middle, each time";
    closes ? window.close() : controller->state().onFinish();
    EXPECT_TRUE(controller->isDone());
    EXPECT_FALSE(window.visible);
    EXPECT_EQ(loop.runningTimers(), 0u);
    EXPECT_EQ(log.lines.back() == "onboarding finished", !closes) << "closing is not logged";
  }
  EXPECT_EQ(window.made, 1);
  const auto finish = controller->state().onFinish;
  controller.reset();
  finish();
}

TEST_F(OnboardingControllerTest, ThePracticeNoticesTheSampleHoweverItCame) {
  const auto controller = make();
  OnboardingViewState& state = controller->state();
  const std::int64_t before = pasteboard.changeCount();
  state.onPracticeCopy();
  EXPECT_EQ(pasteboard.string(), kSample);
  EXPECT_EQ(pasteboard.changeCount(), before + 1) << "as any other program copies";
  controller->checkCapturedText(kSample + ".");
  EXPECT_FALSE(state.practiceCopied.value());
  for (int i = 0; i < 2; ++i) controller->checkCapturedText(kSample);
  EXPECT_TRUE(state.practiceCopied.value());
  EXPECT_EQ(log.lines.size(), 2u) << "each is logged once";
  state.practicePasteText.set(kSample.substr(1));
  EXPECT_FALSE(state.practicePasted.value());
  for (const std::string& text : {"<" + kSample + ">", std::string()}) {
    state.practicePasteText.set(text);
    controller->present();
    EXPECT_TRUE(state.practicePasted.value() && state.practiceCopied.value());
  }
}

}  // namespace
}  // namespace brimlo
