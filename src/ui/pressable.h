#pragma once

#include <QAbstractButton>

namespace brimlo::ui {

/// A button that a click, Space or Return presses.
class Pressable : public QAbstractButton {
 public:
  Pressable();

 protected:
  /// Whether a ring should show that it has the keyboard: after Tab brought it there, not after a
  /// click.
  bool isRinged() const { return ringed_; }

  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  bool ringed_ = false;
};

}  // namespace brimlo::ui
