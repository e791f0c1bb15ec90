#pragma once

#include <QColor>
#include <QPainter>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <QVariantAnimation>
#include <QWidget>
#include <cstddef>
#include <functional>
#include <optional>

#include "ui/row_scroll.h"

namespace brimlo::ui {

/// What a `RowList` shows.
class RowSource {
 public:
  virtual ~RowSource() = default;

  /// How high the row is when it is `width` wide.
  virtual int height(std::size_t row, int width) = 0;
  /// Draws it into `rect`.
  virtual void paint(QPainter& painter, std::size_t row, const QRectF& rect) = 0;
  /// What a screen reader says of it.
  virtual QString name(std::size_t row) = 0;
};

/// A scrolling column of any number of rows of different heights, of which only those in sight are
/// ever measured or drawn. The rows are items to a screen reader. `RowScroll` knows where it is
/// scrolled to.
class RowList : public QWidget {
 public:
  struct Options {
    int spacing = 0;
    int padding = 0;   ///< around all rows
    QColor indicator;  ///< of the scroll indicator
    /// The list is as high as its rows, but no higher than this. 0: its height is set from outside.
    int maximumHeight = 0;
    /// The colour of the ring around the selected row while the list has the keyboard. Transparent:
    /// the list never takes the keyboard.
    QColor ring = Qt::transparent;
  };
  /// `source` outlives the list.
  RowList(RowSource& source, const Options& options);

  /// Shows `count` other rows, scrolled to where it was as far as that is possible.
  void setRows(std::size_t count);
  void setSelectedRow(std::size_t row);

  /// Scrolls `row` to the middle of the list, in 0.12 seconds.
  void scrollToCenter(std::size_t row);
  void scrollToTop();

  /// `onHover` is called when the pointer enters a row because it was moved; a list that appears or
  /// scrolls under a pointer at rest does not count.
  void setOnClick(std::function<void(std::size_t)> onClick);
  void setOnHover(std::function<void(std::size_t)> onHover);

  std::size_t rowCount() const { return scroll_.rowCount(); }
  std::size_t selectedRow() const { return selected_; }
  QString rowName(std::size_t row) { return source_.name(row); }
  /// Where `row` is in the list; none while it is out of sight.
  std::optional<QRectF> rowRect(std::size_t row);
  std::optional<std::size_t> rowAt(const QPointF& point);
  void click(std::size_t row);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void leaveEvent(QEvent* event) override;

 private:
  bool takesKeyboard() const { return options_.ring.alpha() > 0; }
  void moveTo(std::size_t row);
  void scrollTo(double position);
  QRectF rectOf(const RowScroll::PlacedRow& placed) const;
  QRectF indicatorRect();
  void dragIndicator(double y);
  void hover(const QPointF& point);

  RowSource& source_;
  Options options_;
  RowScroll scroll_;
  std::size_t selected_ = 0;
  std::function<void(std::size_t)> onClick_;
  std::function<void(std::size_t)> onHover_;
  std::optional<std::size_t> hovered_;
  std::optional<std::size_t> pressed_;
  bool ringed_ = false;         // whether the ring is shown
  std::optional<double> grip_;  // from the indicator's top to the pointer that drags it
  QPointF pointer_;             // its last known place on the screen
  QVariantAnimation scrolling_;
};

}  // namespace brimlo::ui
