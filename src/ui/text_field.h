#pragma once

#include <QBasicTimer>
#include <QColor>
#include <QLineEdit>
#include <functional>
#include <string>

#include "ui/text_style.h"

namespace brimlo::ui {

/// A single-line text field without a frame, whose caret and selection are tinted.
///
/// It pastes what `clipboard` gives, not the toolkit's clipboard: that waits for the clipboard's
/// owner, and where that is this very process, the wait would be in vain.
class TextField : public QLineEdit {
 public:
  struct Colors {
    QColor text;
    QColor placeholder;
    QColor tint;
  };
  TextField(const TextStyle& style, const Colors& colors, std::function<std::string()> clipboard);

  /// Room around the text that belongs to the field: a click there goes into it.
  void setPadding(int horizontal, int vertical);

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void timerEvent(QTimerEvent* event) override;

 private:
  void showCaret();

  QColor tint_;
  std::function<std::string()> clipboard_;
  int verticalPadding_ = 0;
  QBasicTimer blink_;
  bool caretShown_ = false;
};

}  // namespace brimlo::ui
