#include "ui/pressable.h"

#include <QFocusEvent>
#include <QKeyEvent>

namespace brimlo::ui {

Pressable::Pressable() {
  setFocusPolicy(Qt::StrongFocus);
}

void Pressable::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) return click();
  QAbstractButton::keyPressEvent(event);
}

void Pressable::focusInEvent(QFocusEvent* event) {
  ringed_ = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
  QAbstractButton::focusInEvent(event);
}

void Pressable::focusOutEvent(QFocusEvent* event) {
  ringed_ = false;
  QAbstractButton::focusOutEvent(event);
}

}  // namespace brimlo::ui
