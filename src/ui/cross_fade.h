#pragma once

#include <QPixmap>
#include <QVariantAnimation>
#include <QWidget>
#include <functional>

namespace brimlo::ui {

/// Lies over a widget and lets its former look fade into the new one (ease-in-out).
class CrossFade : public QWidget {
 public:
  /// `over`: the widget, which it belongs to and covers.
  CrossFade(QWidget* over, int milliseconds);

  /// Runs `change`, which changes the look at once, and shows it as a transition.
  void run(const std::function<void()>& change);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QVariantAnimation animation_;
  QPixmap before_;
};

}  // namespace brimlo::ui
