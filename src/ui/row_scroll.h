#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

namespace brimlo::ui {

/// How far a column of any number of rows of different heights is scrolled, and which rows are in
/// sight then. Knows no toolkit; lengths are in pixels, y grows downwards from the top of the view.
///
/// The position is counted in rows: at 7.5, the middle of the eighth row is at the top of the view.
/// So only rows that come into sight are ever measured, and the scroll indicator says which part of
/// the rows, not of their heights, is shown.
class RowScroll {
 public:
  struct View {
    std::function<int()> height;  ///< asked at each use
    std::function<int(std::size_t row)> rowHeight;
    int spacing = 0;  ///< between two rows
    int padding = 0;  ///< above the first row and below the last one
  };
  explicit RowScroll(View view) : view_(std::move(view)) {}

  /// The rows are replaced by this many others; the position stays as far as that is possible.
  void setRowCount(std::size_t count);
  /// The view or its rows have another height now.
  void remeasure();

  std::size_t rowCount() const { return count_; }
  int rowHeight(std::size_t row);

  double position() const { return position_; }
  /// Scrolls to `position`, or as far as there are rows.
  void setPosition(double position);
  void scrollBy(double pixels);

  /// The position at which the end of the last row is at the bottom of the view; 0 where all rows
  /// fit into it.
  double lastPosition();
  /// The position at which the middle of `row` is in the middle of the view, as nearly as possible.
  double centeredPosition(std::size_t row);

  struct PlacedRow {
    std::size_t row;
    double top;
    int height;
  };
  /// The rows in sight, from top to bottom, those included that are in sight only in part.
  std::vector<PlacedRow> rowsInSight();

  struct Indicator {
    double top;
    double length;
  };
  /// The scroll indicator; none where all rows fit into the view.
  std::optional<Indicator> indicator();
  /// Scrolls to where the top of the indicator is at `top`.
  void moveIndicator(double top);

 private:
  double above(std::size_t row) const;
  double slotHeight(std::size_t row);

  View view_;
  std::size_t count_ = 0;
  double position_ = 0;
  std::unordered_map<std::size_t, int> heights_;
};

}  // namespace brimlo::ui
