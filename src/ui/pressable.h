#pragma once

#include <QAbstractButton>

namespace brimlo::ui {

/// What is pressed by a click, by Space or by Return.
class Pressable : public QAbstractButton {
 public:
  Pressable();

 protected:
  /// Whether the keyboard is on it, and it should be seen that it is.
  bool isRinged() const { return ringed_; }

  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  bool ringed_ = false;
};

}  // namespace brimlo::ui
