#pragma once

#include <QPixmap>
#include <QVariantAnimation>
#include <QWidget>
#include <functional>

namespace brimlo::ui {

/// Lies over a widget and lets its former look fade into the new one (ease-in-out).
class CrossFade : public QWidget {
 public:
  /// `over` becomes its parent.
  CrossFade(QWidget* over, int milliseconds);

  /// Runs `change`, which gives the widget its new look at once, and fades from the former one.
  void run(const std::function<void()>& change);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QVariantAnimation animation_;
  QPixmap before_;
};

}  // namespace brimlo::ui
