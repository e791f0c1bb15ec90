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
constexpr double kIndicatorMargin = 1;
constexpr double kShortestIndicator = 28;
constexpr double kGripWidth = 12;
constexpr double kRingRadius = 5;

}  // namespace

RowList::RowList(RowSource& source, const Options& options) : source_(source), options_(options) {
  setMouseTracking(true);
  setFocusPolicy(takesKeyboard() ? Qt::StrongFocus : Qt::NoFocus);
  if (options_.maximumHeight > 0) setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
  scrolling_.setDuration(kScrollingMs);
  connect(&scrolling_, &QVariantAnimation::valueChanged, this,
          [this](const QVariant& value) { setPosition(value.toDouble()); });
}

void RowList::setRows(std::size_t count) {
  scrolling_.stop();
  heights_.clear();
  hovered_.reset();
  pressed_.reset();
  count_ = count;
  if (takesKeyboard()) selected_ = count == 0 ? 0 : std::min(selected_, count - 1);
  if (options_.maximumHeight > 0) updateGeometry();
  setPosition(position_);
  QAccessibleTableModelChangeEvent event(this, QAccessibleTableModelChangeEvent::ModelReset);
  QAccessible::updateAccessibility(&event);
  update();
}

void RowList::setSelectedRow(std::size_t row) {
  selected_ = row;
  update();
  if (row >= count_ || !QAccessible::isActive()) return;
  for (const auto type : {QAccessible::Selection, QAccessible::ActiveDescendantChanged}) {
    QAccessibleEvent event(this, type);
    event.setChild(static_cast<int>(row));
    QAccessible::updateAccessibility(&event);
  }
}

void RowList::scrollToCenter(std::size_t row) {
  scrolling_.stop();
  if (row >= count_) return;
  const double target = centeredPosition(row);
  if (target == position_) return;
  hovered_.reset();
  if (!isVisible()) return setPosition(target);
  scrolling_.setStartValue(position_);
  scrolling_.setEndValue(target);
  scrolling_.start();
}

void RowList::scrollToTop() {
  scrolling_.stop();
  setPosition(0);
}

void RowList::setOnClick(std::function<void(std::size_t)> onClick) {
  onClick_ = std::move(onClick);
}

void RowList::setOnHover(std::function<void(std::size_t)> onHover) {
  onHover_ = std::move(onHover);
}

std::optional<QRectF> RowList::rowRect(std::size_t row) {
  std::optional<QRectF> found;
  forEachInSight([&](std::size_t each, const QRectF& rect) {
    if (each == row) found = rect;
    return !found;
  });
  return found;
}

std::optional<std::size_t> RowList::rowAt(const QPointF& point) {
  std::optional<std::size_t> found;
  forEachInSight([&](std::size_t row, const QRectF& rect) {
    if (rect.contains(point)) found = row;
    return !found;
  });
  return found;
}

void RowList::click(std::size_t row) {
  if (onClick_ && row < count_) onClick_(row);
}

void RowList::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  forEachInSight([&](std::size_t row, const QRectF& rect) {
    source_.paint(painter, row, rect);
    if (ringed_ && row == selected_) strokeRounded(painter, rect, kRingRadius, options_.ring, 1.5);
    return true;
  });
  const QRectF indicator = indicatorRect();
  if (!indicator.isEmpty()) fillRounded(painter, indicator, kCapsule, options_.indicator);
}

void RowList::resizeEvent(QResizeEvent*) {
  heights_.clear();
  setPosition(position_);
}

void RowList::changeEvent(QEvent* event) {
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
    heights_.clear();
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
  for (std::size_t row = 0; row < count_ && height < options_.maximumHeight; ++row) {
    height += source_.height(row, width()) + (row == 0 ? 0 : options_.spacing);
  }
  return {0, std::min(height, options_.maximumHeight)};
}

QSize RowList::minimumSizeHint() const {
  constexpr int kLeastHeight = 80;  // where the screen is low
  return {0, std::min(sizeHint().height(), kLeastHeight)};
}

void RowList::keyPressEvent(QKeyEvent* event) {
  const std::size_t page =
      count_ == 0 ? 1 : std::max<std::size_t>(1, height() / std::max(1, rowHeight(0)));
  const auto up = [&](std::size_t by) { return selected_ > by ? selected_ - by : 0; };
  const auto handled = [&](std::size_t row) {
    // The first key only shows where the keyboard is.
    moveTo(std::exchange(ringed_, true) ? row : selected_);
    return true;
  };
  const bool seen = ringed_ && selected_ < count_;
  const auto handle = [&] {
    if (count_ == 0) return false;
    switch (event->key()) {
      case Qt::Key_Up:
        return (!seen || selected_ > 0) && handled(up(1));
      case Qt::Key_Down:
        return (!seen || selected_ + 1 < count_) && handled(selected_ + 1);
      case Qt::Key_PageUp:
        return handled(up(page));
      case Qt::Key_PageDown:
        return handled(selected_ + page);
      case Qt::Key_Home:
        return handled(0);
      case Qt::Key_End:
        return handled(count_ - 1);
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
  if (ringed_) moveTo(event->reason() == Qt::TabFocusReason ? 0 : count_ - 1);
  QWidget::focusInEvent(event);
  update();
}

void RowList::focusOutEvent(QFocusEvent* event) {
  ringed_ = false;
  QWidget::focusOutEvent(event);
  update();
}

void RowList::moveTo(std::size_t row) {
  if (count_ == 0) return;
  row = std::min(row, count_ - 1);
  setSelectedRow(row);
  const auto rect = rowRect(row);
  if (!rect || rect->top() < 0 || rect->bottom() > height()) scrollToCenter(row);
}

void RowList::mouseMoveEvent(QMouseEvent* event) {
  if (grip_) return dragIndicator(event->position().y());
  // A window that appears or scrolls under a pointer at rest is no doing of the person's.
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
  scrollBy(-pixels);
  hover(event->position());
  event->accept();
}

void RowList::leaveEvent(QEvent*) {
  hovered_.reset();
}

int RowList::rowHeight(std::size_t row) {
  const auto [found, isNew] = heights_.try_emplace(row, 0);
  if (isNew) found->second = source_.height(row, width() - 2 * options_.padding);
  return found->second;
}

/// The room above `row` that is scrolled along with it.
double RowList::above(std::size_t row) const {
  return row == 0 ? options_.padding : 0;
}

/// The height of `row` with the room that is scrolled along with it.
double RowList::slotHeight(std::size_t row) {
  return above(row) + rowHeight(row) + (row + 1 == count_ ? options_.padding : options_.spacing);
}

/// The position at which the end of the last row is at the bottom.
double RowList::lastPosition() {
  double left = height();
  for (std::size_t row = count_; row-- > 0;) {
    const double slot = slotHeight(row);
    if (slot >= left) return static_cast<double>(row) + (slot - left) / slot;
    left -= slot;
  }
  return 0;
}

double RowList::centeredPosition(std::size_t row) {
  double left = height() / 2.0 - above(row) - rowHeight(row) / 2.0;
  if (left <= 0) return static_cast<double>(row) - left / slotHeight(row);
  while (row-- > 0) {
    const double slot = slotHeight(row);
    if (slot >= left) {
      return std::min(static_cast<double>(row) + (slot - left) / slot, lastPosition());
    }
    left -= slot;
  }
  return 0;
}

void RowList::scrollBy(double pixels) {
  if (count_ == 0) return;
  auto row = static_cast<std::size_t>(position_);
  double y = (position_ - static_cast<double>(row)) * slotHeight(row) + pixels;
  while (y < 0 && row > 0) y += slotHeight(--row);
  while (row + 1 < count_ && y >= slotHeight(row)) y -= slotHeight(row++);
  setPosition(static_cast<double>(row) + std::max(y, 0.0) / slotHeight(row));
}

void RowList::setPosition(double position) {
  position_ = std::clamp(position, 0.0, lastPosition());
  // Rows that were passed are measured again when they come back.
  constexpr std::size_t kMostMeasured = 1000;
  if (heights_.size() > kMostMeasured) heights_.clear();
  update();
}

void RowList::forEachInSight(const std::function<bool(std::size_t, const QRectF&)>& visit) {
  auto row = static_cast<std::size_t>(position_);
  if (row >= count_) return;
  double y = std::round(-(position_ - static_cast<double>(row)) * slotHeight(row));
  for (; row < count_ && y < height(); ++row) {
    const QRectF rect(options_.padding, y + above(row), width() - 2 * options_.padding,
                      rowHeight(row));
    if (!visit(row, rect)) return;
    y += slotHeight(row);
  }
}

QRectF RowList::indicatorRect() {
  const double last = lastPosition();
  if (last <= 0) return {};
  const double track = height() - 2 * kIndicatorMargin;
  const double length =
      std::max(kShortestIndicator, track * (1 - last / static_cast<double>(count_)));
  const double y = kIndicatorMargin + (track - length) * position_ / last;
  return {width() - kIndicatorMargin - kIndicatorWidth, y, kIndicatorWidth, length};
}

void RowList::dragIndicator(double y) {
  const QRectF indicator = indicatorRect();
  const double track = height() - 2 * kIndicatorMargin - indicator.height();
  scrolling_.stop();
  setPosition((y - *grip_ - kIndicatorMargin) / std::max(track, 1.0) * lastPosition());
}

void RowList::hover(const QPointF& point) {
  const auto row = rowAt(point);
  if (row == hovered_) return;
  hovered_ = row;
  if (row && onHover_) onHover_(*row);
}

}  // namespace brimlo::ui
