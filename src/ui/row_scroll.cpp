#include "ui/row_scroll.h"

#include <algorithm>
#include <cmath>

namespace brimlo::ui {
namespace {

constexpr double kIndicatorMargin = 1;  // above and below the indicator
constexpr double kShortestIndicator = 28;

}  // namespace

void RowScroll::setRowCount(std::size_t count) {
  count_ = count;
  remeasure();
}

void RowScroll::remeasure() {
  heights_.clear();
  setPosition(position_);
}

int RowScroll::rowHeight(std::size_t row) {
  const auto [found, isNew] = heights_.try_emplace(row, 0);
  if (isNew) found->second = view_.rowHeight(row);
  return found->second;
}

void RowScroll::setPosition(double position) {
  position_ = std::clamp(position, 0.0, lastPosition());
  // Scrolling through a long list would collect the heights of all its rows.
  constexpr std::size_t kMostMeasured = 1000;
  if (heights_.size() > kMostMeasured) heights_.clear();
}

void RowScroll::scrollBy(double pixels) {
  if (count_ == 0) return;
  auto row = static_cast<std::size_t>(position_);
  double y = (position_ - static_cast<double>(row)) * slotHeight(row) + pixels;
  while (y < 0 && row > 0) y += slotHeight(--row);
  while (row + 1 < count_ && y >= slotHeight(row)) y -= slotHeight(row++);
  setPosition(static_cast<double>(row) + y / slotHeight(row));
}

double RowScroll::lastPosition() {
  double left = view_.height();
  for (std::size_t row = count_; row-- > 0;) {
    const double slot = slotHeight(row);
    if (slot >= left) return static_cast<double>(row) + (slot - left) / slot;
    left -= slot;
  }
  return 0;
}

double RowScroll::centeredPosition(std::size_t row) {
  double left = view_.height() / 2.0 - above(row) - rowHeight(row) / 2.0;
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

std::vector<RowScroll::PlacedRow> RowScroll::rowsInSight() {
  std::vector<PlacedRow> rows;
  auto row = static_cast<std::size_t>(position_);
  if (row >= count_) return rows;
  double y = std::round(-(position_ - static_cast<double>(row)) * slotHeight(row));
  for (; row < count_ && y < view_.height(); ++row) {
    rows.push_back({row, y + above(row), rowHeight(row)});
    y += slotHeight(row);
  }
  return rows;
}

std::optional<RowScroll::Indicator> RowScroll::indicator() {
  const double last = lastPosition();
  if (last <= 0) return std::nullopt;
  const double track = view_.height() - 2 * kIndicatorMargin;
  const double length =
      std::max(kShortestIndicator, track * (1 - last / static_cast<double>(count_)));
  return Indicator{kIndicatorMargin + (track - length) * position_ / last, length};
}

void RowScroll::moveIndicator(double top) {
  const auto shown = indicator();
  if (!shown) return;
  const double track = view_.height() - 2 * kIndicatorMargin - shown->length;
  setPosition((top - kIndicatorMargin) / std::max(track, 1.0) * lastPosition());
}

/// The room above `row` that is scrolled along with it.
double RowScroll::above(std::size_t row) const {
  return row == 0 ? view_.padding : 0;
}

/// The height of `row` with the room that is scrolled along with it.
double RowScroll::slotHeight(std::size_t row) {
  return above(row) + rowHeight(row) + (row + 1 == count_ ? view_.padding : view_.spacing);
}

}  // namespace brimlo::ui
