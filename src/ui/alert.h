#pragma once

#include <QWidget>
#include <functional>

#include "ui/window_colors.h"

namespace brimlo::ui {

/// A question that covers a window until it is answered.
class Alert : public QWidget {
 public:
  struct Texts {
    QString title;
    QString message;
    QString confirm;
    QString cancel;
  };
  /// Covers `over`, which becomes its parent, and takes the keyboard.
  Alert(QWidget* over, const Texts& texts, const WindowColors& colors,
        std::function<void()> onConfirm, std::function<void()> onCancel);

 protected:
  bool eventFilter(QObject* receiver, QEvent* event) override;
  bool focusNextPrevChild(bool next) override;
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  QWidget* confirm_;
  QWidget* cancel_;
};

}  // namespace brimlo::ui
