#include "ui/capsule_tab.h"

#include <QAccessible>
#include <QLayout>
#include <QPainter>

#include "ui/shapes.h"
#include "ui/stack.h"

namespace brimlo::ui {
namespace {

constexpr float kCountOpacity = 0.75F;

}  // namespace

CapsuleTab::CapsuleTab(const QString& title, const Colors& colors)
    : title_(title),
      colors_(colors),
      titleLabel_(new Label(title, kCaption.semibold(), colors.text)),
      countLabel_(new Label("0", kSmallCaption.withMonospacedDigits(), colors.text)) {
  setFocusPolicy(Qt::NoFocus);
  setAttribute(Qt::WA_Hover, false);
  layOutRow(*this, {.spacing = 5, .padding = padding(10, 4)},
            {titleLabel_->rigid(), countLabel_->rigid()});
  setCheckable(true);
  setTextColor(colors_.text);
  setCount(0);
  connect(this, &QAbstractButton::toggled, this, [this](bool selected) {
    setTextColor(selected ? colors_.selectedText : colors_.text);
    QAccessible::State changed;
    changed.selected = true;
    QAccessibleStateChangeEvent event(this, changed);
    QAccessible::updateAccessibility(&event);
  });
}

void CapsuleTab::setCount(qint64 count) {
  countLabel_->setText(QString::number(count));
  setAccessibleName(title_ + " " + QString::number(count));
}

void CapsuleTab::setTextColor(QColor color) {
  titleLabel_->setColor(color);
  color.setAlphaF(color.alphaF() * kCountOpacity);
  countLabel_->setColor(color);
}

QSize CapsuleTab::sizeHint() const {
  return layout()->sizeHint();
}

void CapsuleTab::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  fillRounded(painter, rect(), kCapsule, isChecked() ? colors_.selectedFill : colors_.fill);
}

}  // namespace brimlo::ui
