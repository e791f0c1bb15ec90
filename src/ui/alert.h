#pragma once

#include <QColor>
#include <QWidget>
#include <functional>

namespace brimlo::ui {

/// A question over a window, which does nothing else until it is answered.
class Alert : public QWidget {
 public:
  struct Texts {
    QString title;
    QString message;
    QString confirm;
    QString cancel;
  };
  struct Colors {
    QColor surface;
    QColor border;
    QColor text;
    QColor secondary;
    QColor button;       ///< behind the answer that changes nothing
    QColor destructive;  ///< behind the other one
  };
  /// Covers `over`, which it belongs to, and takes the keyboard.
  Alert(QWidget* over, const Texts& texts, const Colors& colors, std::function<void()> onConfirm,
        std::function<void()> onCancel);

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
