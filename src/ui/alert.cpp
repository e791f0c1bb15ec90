#include "ui/alert.h"

#include <QAccessible>
#include <QMouseEvent>
#include <QPainter>
#include <utility>

#include "ui/button.h"
#include "ui/label.h"
#include "ui/paragraph.h"
#include "ui/shape_box.h"
#include "ui/shapes.h"
#include "ui/stack.h"

namespace brimlo::ui {
namespace {

constexpr int kTextWidth = 228;
constexpr double kDimming = 0.28;
constexpr double kDimmingRadius = 10;  // of the popover that it may cover

Button* answer(const QString& label, const QColor& text, const QColor& fill,
               std::function<void()> onClick) {
  auto* button = new Button(label, {.style = kCallout.semibold(),
                                    .text = text,
                                    .fill = fill,
                                    .horizontalPadding = 14,
                                    .verticalPadding = 6,
                                    .radius = 7});
  QObject::connect(button, &QAbstractButton::clicked, button, std::move(onClick));
  return button;
}

}  // namespace

Alert::Alert(QWidget* over, const Texts& texts, const WindowColors& colors,
             std::function<void()> onConfirm, std::function<void()> onCancel)
    : QWidget(over),
      // White stands out from the red of a light window only.
      confirm_(answer(texts.confirm, Qt::white, windowColors(Appearance::kLight).destructive,
                      std::move(onConfirm))),
      cancel_(answer(texts.cancel, colors.text, colors.control, std::move(onCancel))) {
  constexpr double kRadius = 10;
  setAccessibleName(texts.title);
  setAccessibleDescription(texts.message);
  auto* card = new ShapeBox(kRadius, colors.surface);
  card->setBorder(colors.border);
  layOutColumn(
      *card, {.spacing = 8, .padding = padding(16, 16)},
      {centered(new Paragraph(texts.title, kHeadline, colors.text, {.width = kTextWidth})),
       centered(new Paragraph(texts.message, kCallout, colors.secondary, {.width = kTextWidth})),
       row({.spacing = 8, .padding = {0, 6, 0, 0}}, {Spacer(), cancel_, confirm_, Spacer()})});
  layOutColumn(*this, {}, {Spacer(), centered(card), Spacer()});
  over->installEventFilter(this);
  setGeometry(over->rect());
  show();
  raise();
  cancel_->setFocus(Qt::TabFocusReason);
  QAccessibleEvent shown(this, QAccessible::Alert);
  QAccessible::updateAccessibility(&shown);
}

bool Alert::eventFilter(QObject*, QEvent* event) {
  if (event->type() == QEvent::Resize) setGeometry(parentWidget()->rect());
  return false;
}

bool Alert::focusNextPrevChild(bool) {
  (confirm_->hasFocus() ? cancel_ : confirm_)->setFocus(Qt::TabFocusReason);
  return true;
}

void Alert::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  QColor dimming(Qt::black);
  dimming.setAlphaF(static_cast<float>(kDimming));
  fillRounded(painter, rect(), kDimmingRadius, dimming);
}

void Alert::mousePressEvent(QMouseEvent* event) {
  event->accept();  // or the widget below would get it
}

}  // namespace brimlo::ui
