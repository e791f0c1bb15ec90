#include "ui/row_list.h"

#include <QAccessible>
#include <QCursor>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <utility>

#include "ui/shapes.h"

namespace brimlo::ui {
namespace {

constexpr int kScrollingMs = 120;
constexpr double kIndicatorWidth = 4;
constexpr double kIndicatorMargin = 1;  // from the right edge
constexpr double kGripWidth = 12;       // of the strip in which a press grips the indicator
constexpr double kRingRadius = 5;

}  // namespace

RowList::RowList(RowSource& source, const Options& options)
    : source_(source),
      options_(options),
      scroll_({.height = [this] { return height(); },
               .rowHeight =
                   [this](std::size_t row) {
                     return source_.height(row, width() - 2 * options_.padding);
                   },
               .spacing = options.spacing,
               .padding = options.padding}) {
  setMouseTracking(true);
  setFocusPolicy(takesKeyboard() ? Qt::StrongFocus : Qt::NoFocus);
  if (options_.maximumHeight > 0) setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
  scrolling_.setDuration(kScrollingMs);
  connect(&scrolling_, &QVariantAnimation::valueChanged, this,
          [this](const QVariant& value) { scrollTo(value.toDouble()); });
}

void RowList::setRows(std::size_t count) {
  scrolling_.stop();
  hovered_.reset();
  pressed_.reset();
  scroll_.setRowCount(count);
  if (takesKeyboard()) selected_ = count == 0 ? 0 : std::min(selected_, count - 1);
  if (options_.maximumHeight > 0) updateGeometry();
  QAccessibleTableModelChangeEvent event(this, QAccessibleTableModelChangeEvent::ModelReset);
  QAccessible::updateAccessibility(&event);
  update();
}

void RowList::setSelectedRow(std::size_t row) {
  selected_ = row;
  update();
  if (row >= rowCount() || !QAccessible::isActive()) return;
  for (const auto type : {QAccessible::Selection, QAccessible::ActiveDescendantChanged}) {
    QAccessibleEvent event(this, type);
    event.setChild(static_cast<int>(row));
    QAccessible::updateAccessibility(&event);
  }
}

void RowList::scrollToCenter(std::size_t row) {
  scrolling_.stop();
  if (row >= rowCount()) return;
  const double target = scroll_.centeredPosition(row);
  if (target == scroll_.position()) return;
  hovered_.reset();
  if (!isVisible()) return scrollTo(target);
  scrolling_.setStartValue(scroll_.position());
  scrolling_.setEndValue(target);
  scrolling_.start();
}

void RowList::scrollToTop() {
  scrolling_.stop();
  scrollTo(0);
}

void RowList::setOnClick(std::function<void(std::size_t)> onClick) {
  onClick_ = std::move(onClick);
}

void RowList::setOnHover(std::function<void(std::size_t)> onHover) {
  onHover_ = std::move(onHover);
}

std::optional<QRectF> RowList::rowRect(std::size_t row) {
  for (const RowScroll::PlacedRow& each : scroll_.rowsInSight()) {
    if (each.row == row) return rectOf(each);
  }
  return std::nullopt;
}

std::optional<std::size_t> RowList::rowAt(const QPointF& point) {
  for (const RowScroll::PlacedRow& each : scroll_.rowsInSight()) {
    if (rectOf(each).contains(point)) return each.row;
  }
  return std::nullopt;
}

void RowList::click(std::size_t row) {
  if (onClick_ && row < rowCount()) onClick_(row);
}

void RowList::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  for (const RowScroll::PlacedRow& each : scroll_.rowsInSight()) {
    const QRectF rect = rectOf(each);
    source_.paint(painter, each.row, rect);
    if (ringed_ && each.row == selected_) {
      strokeRounded(painter, rect, kRingRadius, options_.ring, 1.5);
    }
  }
  const QRectF indicator = indicatorRect();
  if (!indicator.isEmpty()) fillRounded(painter, indicator, kCapsule, options_.indicator);
}

void RowList::resizeEvent(QResizeEvent*) {
  scroll_.remeasure();
  update();
}

void RowList::changeEvent(QEvent* event) {
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
    scroll_.remeasure();
    update();
  }
  QWidget::changeEvent(event);
}

void RowList::showEvent(QShowEvent*) {
  pointer_ = QCursor::pos();
  hovered_.reset();
}

QSize RowList::sizeHint() const {
  if (options_.maximumHeight == 0) return QWidget::sizeHint();
  int height = 2 * options_.padding;
  for (std::size_t row = 0; row < rowCount() && height < options_.maximumHeight; ++row) {
    height += source_.height(row, width()) + (row == 0 ? 0 : options_.spacing);
  }
  return {0, std::min(height, options_.maximumHeight)};
}

QSize RowList::minimumSizeHint() const {
  constexpr int kLeastHeight = 80;  // on a low screen
  return {0, std::min(sizeHint().height(), kLeastHeight)};
}

void RowList::keyPressEvent(QKeyEvent* event) {
  const std::size_t count = rowCount();
  const std::size_t page =
      count == 0 ? 1 : std::max<std::size_t>(1, height() / std::max(1, scroll_.rowHeight(0)));
  const auto up = [&](std::size_t by) { return selected_ > by ? selected_ - by : 0; };
  const auto handled = [&](std::size_t row) {
    // The first key only shows where the keyboard is.
    moveTo(std::exchange(ringed_, true) ? row : selected_);
    return true;
  };
  const bool seen = ringed_ && selected_ < count;
  const auto handle = [&] {
    if (count == 0) return false;
    switch (event->key()) {
      case Qt::Key_Up:
        return (!seen || selected_ > 0) && handled(up(1));
      case Qt::Key_Down:
        return (!seen || selected_ + 1 < count) && handled(selected_ + 1);
      case Qt::Key_PageUp:
        return handled(up(page));
      case Qt::Key_PageDown:
        return handled(selected_ + page);
      case Qt::Key_Home:
        return handled(0);
      case Qt::Key_End:
        return handled(count - 1);
      case Qt::Key_Return:
      case Qt::Key_Enter:
      case Qt::Key_Space:
        if (seen && !event->isAutoRepeat()) click(selected_);
        return seen;
      default:
        return false;
    }
  };
  if (event->modifiers() & ~Qt::KeypadModifier || !handle()) QWidget::keyPressEvent(event);
}

void RowList::focusInEvent(QFocusEvent* event) {
  ringed_ = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
  if (ringed_) moveTo(event->reason() == Qt::TabFocusReason ? 0 : rowCount() - 1);
  QWidget::focusInEvent(event);
  update();
}

void RowList::focusOutEvent(QFocusEvent* event) {
  ringed_ = false;
  QWidget::focusOutEvent(event);
  update();
}

void RowList::moveTo(std::size_t row) {
  if (rowCount() == 0) return;
  row = std::min(row, rowCount() - 1);
  setSelectedRow(row);
  const auto rect = rowRect(row);
  if (!rect || rect->top() < 0 || rect->bottom() > height()) scrollToCenter(row);
}

void RowList::scrollTo(double position) {
  scroll_.setPosition(position);
  update();
}

void RowList::mouseMoveEvent(QMouseEvent* event) {
  if (grip_) return dragIndicator(event->position().y());
  // The toolkit also reports a move when the window appears or scrolls under a pointer at rest.
  if (event->globalPosition() == pointer_) return;
  pointer_ = event->globalPosition();
  hover(event->position());
}

void RowList::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  const QRectF indicator = indicatorRect();
  if (!indicator.isEmpty() && event->position().x() >= width() - kGripWidth) {
    const double y = event->position().y();
    const bool onIt = y >= indicator.top() && y < indicator.bottom();
    grip_ = onIt ? y - indicator.top() : indicator.height() / 2;
    return dragIndicator(y);
  }
  pressed_ = rowAt(event->position());
}

void RowList::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  grip_.reset();
  const auto pressed = std::exchange(pressed_, std::nullopt);
  if (pressed && rowAt(event->position()) == pressed) click(*pressed);
}

void RowList::wheelEvent(QWheelEvent* event) {
  constexpr double kPixelsANotch = 60, kUnitsANotch = 120;
  const double pixels = event->pixelDelta().isNull()
                            ? event->angleDelta().y() / kUnitsANotch * kPixelsANotch
                            : event->pixelDelta().y();
  scrolling_.stop();
  scroll_.scrollBy(-pixels);
  update();
  hover(event->position());
  event->accept();
}

void RowList::leaveEvent(QEvent*) {
  hovered_.reset();
}

QRectF RowList::rectOf(const RowScroll::PlacedRow& placed) const {
  return QRectF(options_.padding, placed.top, width() - 2 * options_.padding, placed.height);
}

QRectF RowList::indicatorRect() {
  const auto indicator = scroll_.indicator();
  if (!indicator) return {};
  return {width() - kIndicatorMargin - kIndicatorWidth, indicator->top, kIndicatorWidth,
          indicator->length};
}

void RowList::dragIndicator(double y) {
  scrolling_.stop();
  scroll_.moveIndicator(y - *grip_);
  update();
}

void RowList::hover(const QPointF& point) {
  const auto row = rowAt(point);
  if (row == hovered_) return;
  hovered_ = row;
  if (row && onHover_) onHover_(*row);
}

}  // namespace brimlo::ui
