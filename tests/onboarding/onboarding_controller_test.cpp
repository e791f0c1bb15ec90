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
    return std::make_unique<OnboardingController>(
        OnboardingController::Services{.accessibility = desktop,
                                       .environment = surroundings,
                                       .defaults = defaults,
                                       .log = log,
                                       .pasteboard = pasteboard,
                                       .screens = surroundings,
                                       .strings = strings,
                                       .timers = loop,
                                       .makeWindow = [this](OnboardingViewState&) {
                                         return std::make_unique<test::FakeWindow>(window);
                                       }});
  }

  test::FakeDefaults defaults;
  test::FakeDesktop desktop;
  test::FakeLog log;
  test::FakePasteboard pasteboard;
  test::FakeRunLoop loop;
  test::FakeStrings strings;
  test::FakeSurroundings surroundings;
  test::WindowRecord window;
};

TEST_F(OnboardingControllerTest, TheVariableChoosesTheStepAndHasTheWindowFloatOnThePrimaryScreen) {
  using Level = TitledWindow::Level;
  surroundings.all = {{{{-800, 0}, {800, 600}}, {{-800, 0}, {800, 600}}},
                      {{{0, 0}, {1280, 800}}, {{0, 0}, {1280, 776}}}};
  struct Case {
    std::optional<std::string> value;
    std::int64_t step;
    Level level;
  };
  const Case cases[] = {
      {{}, 0, Level::kNormal},
      {"2", 2, Level::kFloating},
      {"+3", 3, Level::kFloating},
      {"7", 3, Level::kFloating},
      {"-1", 0, Level::kFloating},
      {"abc", 0, Level::kFloating},
      {"", 0, Level::kFloating},
      {" 2", 0, Level::kFloating},
      {"+-2", 0, Level::kFloating},
      {"2x", 0, Level::kFloating},
      {"1.0", 0, Level::kFloating},
      {"+", 0, Level::kFloating},
      {"99999999999999999999", 0, Level::kFloating},
  };
  for (const auto& [value, step, level] : cases) {
    surroundings.variables.clear();
    if (value) surroundings.variables["BRIMLO_OB_STEP"] = *value;
    window = {};
    const auto controller = make();
    controller->state().step.set(1);
    controller->present();
    EXPECT_EQ(controller->state().step.value(), step) << value.value_or("unset");
    EXPECT_EQ(window.level, level);
    EXPECT_EQ(window.centered > 1, level == Level::kNormal);
    EXPECT_TRUE(window.visible);
    EXPECT_EQ(window.frame.origin, (level == Level::kNormal ? Point{5, 6} : Point{400, 108}));
  }
  surroundings.variables = {{"BRIMLO_OB_STEP", "2"}};
  make()->present();
  EXPECT_EQ(log.lines.back(),
            "onboarding presented (step=2, axTrusted=true) frame={{400, 108}, {480, 560}}");
  surroundings.all.clear();
  surroundings.main.reset();
  make()->present();
  EXPECT_EQ(log.lines.back(),
            "onboarding presented (step=2, axTrusted=true) frame={{5, 6}, {480, 560}}");
}

TEST_F(OnboardingControllerTest, ThePermissionIsPolledFromPresentationToTheEnd) {
  desktop.trusted = false;
  const auto controller = make();
  controller->present();
  log.lines.clear();
  loop.advance(2s);
  EXPECT_TRUE(log.lines.empty());
  desktop.trusted = true;
  loop.advance(700ms);
  EXPECT_TRUE(controller->state().axTrusted.value());
  loop.advance(2s);
  EXPECT_EQ(log.lines, std::vector<std::string>{"onboarding AX poll -> trusted=true"});
  controller->present();
  EXPECT_EQ(loop.runningTimers(), 1u);
  desktop.trusted = false;
  loop.advance(700ms);
  EXPECT_EQ(log.lines.back(), "onboarding AX poll -> trusted=false");
  controller->state().onFinish();
  EXPECT_EQ(loop.runningTimers(), 0u);
  controller->present();
  window.close();
  EXPECT_EQ(loop.runningTimers(), 0u);
}

TEST_F(OnboardingControllerTest, ForcedUntrustedItStaysSo) {
  for (const auto& [value, forced] : {std::pair("1", true), {"true", false}, {"", false}}) {
    surroundings.variables["BRIMLO_OB_FORCE_UNTRUSTED"] = value;
    const auto controller = make();
    controller->present();
    EXPECT_EQ(controller->state().axTrusted.value(), !forced) << value;
    EXPECT_EQ(loop.runningTimers(), forced ? 0u : 1u);
    controller->state().onRequestAccessibility();
    EXPECT_EQ(desktop.asked.back(), "prompt");
    EXPECT_EQ(log.lines.back(), "onboarding requested accessibility permission");
  }
}

TEST_F(OnboardingControllerTest, FinishingAndClosingBothCountAsSeen) {
  auto controller = make();
  controller->present();
  EXPECT_FALSE(controller->isDone());
  log.lines.clear();
  controller->state().onFinish();
  EXPECT_TRUE(controller->isDone());
  EXPECT_FALSE(window.visible);
  EXPECT_EQ(log.lines, std::vector<std::string>{"onboarding finished"});
  controller->present();
  EXPECT_TRUE(window.visible);
  EXPECT_EQ(window.made, 1);

  defaults.values.clear();
  log.lines.clear();
  window.close();
  EXPECT_TRUE(controller->isDone());
  EXPECT_TRUE(log.lines.empty());
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
  controller->checkCapturedText(kSample);
  controller->checkCapturedText(kSample);
  EXPECT_TRUE(state.practiceCopied.value());
  EXPECT_EQ(log.lines,
            (std::vector<std::string>{"onboarding practice: sample copied to pasteboard",
                                      "onboarding practice: sample captured into history"}));
  state.practicePasteText.set(kSample.substr(1));
  EXPECT_FALSE(state.practicePasted.value());
  state.practicePasteText.set("<" + kSample + ">");
  EXPECT_TRUE(state.practicePasted.value());
  state.practicePasteText.set("");
  controller->present();
  EXPECT_TRUE(state.practicePasted.value() && state.practiceCopied.value());
}

}  // namespace
}  // namespace brimlo
