#pragma once

#include <QBasicTimer>
#include <QColor>
#include <QLineEdit>

#include "platform/pasteboard.h"
#include "ui/text_style.h"

namespace brimlo::ui {

/// A single-line text field without a frame, whose caret and selection are tinted.
///
/// It pastes from `pasteboard`. Reading the toolkit's clipboard waits for the clipboard's owner,
/// which may be this very process: then nobody would ever answer.
class TextField : public QLineEdit {
 public:
  struct Colors {
    QColor text;
    QColor placeholder;
    QColor tint;
  };
  /// `pasteboard` outlives the field.
  TextField(const TextStyle& style, const Colors& colors, const Pasteboard& pasteboard);

  /// Room around the text that belongs to the field, so that a click there puts the caret into it.
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
  const Pasteboard& pasteboard_;
  int verticalPadding_ = 0;
  QBasicTimer blink_;
  bool caretShown_ = false;
};

}  // namespace brimlo::ui
