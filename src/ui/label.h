#pragma once

#include <QColor>
#include <QLabel>
#include <QPainter>

#include "ui/text_style.h"

namespace brimlo::ui {

/// The width that `text` takes on one line.
double textWidth(const QString& text, const TextStyle& style);

/// Draws `text` on one line at the left edge of `rect`, vertically centred; one that is too long
/// ends in an ellipsis.
void paintText(QPainter& painter, const QRectF& rect, const QString& text, const TextStyle& style,
               const QColor& color);

/// Draws a short `text` of `color` in the middle of a rounded rectangle of `fill`.
void paintBadge(QPainter& painter, const QRectF& rect, double radius, const QString& text,
                const TextStyle& style, const QColor& color, const QColor& fill);

/// One line of text in a stack. Given less room than it needs, it ends in an ellipsis.
class Label : public QLabel {
 public:
  Label(const QString& text, const TextStyle& style, const QColor& color);

  void setColor(const QColor& color);
  /// Makes it take no less room than its text needs. Returns the label itself.
  Label* rigid();

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  TextStyle style_;
  QColor color_;
  bool rigid_ = false;
};

}  // namespace brimlo::ui
