#pragma once

#include <QColor>
#include <QWidget>

namespace brimlo::ui {

/// A rounded rectangle of one colour behind what is laid out in it. A radius of 0 makes a plain
/// rectangle, such as a divider.
class ShapeBox : public QWidget {
 public:
  ShapeBox(double radius, const QColor& fill);

  void setFill(const QColor& fill);
  /// A line of one pixel inside its edge.
  void setBorder(const QColor& border);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  double radius_;
  QColor fill_;
  QColor border_ = Qt::transparent;
};

/// A line one pixel high, as wide as its stack.
ShapeBox* divider(const QColor& color);

}  // namespace brimlo::ui
