#pragma once

#include <QStackedLayout>
#include <QWidget>
#include <vector>

#include "base/published.h"
#include "onboarding/onboarding_view_state.h"
#include "platform/localized_strings.h"
#include "platform/pasteboard.h"
#include "ui/button.h"
#include "ui/cross_fade.h"
#include "ui/shape_box.h"
#include "ui/text_field.h"

namespace brimlo {

/// The onboarding as it is seen: the current step, a row of dots, Back and Next. Light whatever the
/// desktop's colours. It shows what the state says, writes the step and the practice field, and
/// reports what is pressed. Main thread.
class OnboardingView : public QWidget {
 public:
  /// All of it outlives the view; the practice field pastes from `pasteboard`.
  OnboardingView(OnboardingViewState& state, const LocalizedStrings& strings,
                 const Pasteboard& pasteboard);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString text(const char* key) const;
  QWidget* hero(const char* symbol, const char* title, const char* body);
  QWidget* accessibilityCard();
  QWidget* practicePage();
  QWidget* copyCard();
  QWidget* pasteCard();
  QWidget* practiceField();
  QWidget* feedback(const char* key);
  QWidget* dots();
  QWidget* navigationBar();
  void go(std::int64_t by);
  void observe();
  void showStep(std::int64_t step);

  OnboardingViewState& state_;
  const LocalizedStrings& strings_;
  const Pasteboard& pasteboard_;
  QStackedLayout* pages_;
  QWidget* dots_;
  ui::Button* back_;
  ui::Button* next_;
  ui::ShapeBox* accessibilityCard_;
  QWidget* asking_;
  QWidget* granted_;
  ui::ShapeBox* copyCard_;
  QWidget* copyGuide_;
  QWidget* copyFeedback_;
  ui::ShapeBox* pasteCard_;
  QWidget* pasteFeedback_;
  ui::TextField* field_;
  ui::CrossFade* fade_;
  std::vector<Subscription> subscriptions_;
};

}  // namespace brimlo
