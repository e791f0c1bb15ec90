#include "ui/label.h"

#include <QFontMetricsF>
#include <algorithm>
#include <cmath>

#include "ui/shapes.h"

namespace brimlo::ui {
namespace {

double digitWidth(const QFontMetricsF& metrics) {
  double widest = 0;
  for (const char digit : {'0', '1', '2', '3', '4', '5', '6', '7', '8', '9'}) {
    widest = std::max(widest, metrics.horizontalAdvance(QLatin1Char(digit)));
  }
  return widest;
}

}  // namespace

double textWidth(const QString& text, const TextStyle& style) {
  const QFontMetricsF metrics(font(style));
  if (!style.monospacedDigits) return metrics.horizontalAdvance(text);
  const double digit = digitWidth(metrics);
  double width = 0;
  for (const QChar each : text) width += each.isDigit() ? digit : metrics.horizontalAdvance(each);
  return width;
}

void paintText(QPainter& painter, const QRectF& rect, const QString& text, const TextStyle& style,
               const QColor& color) {
  const QFont set = font(style);
  const QFontMetricsF metrics(set);
  painter.setFont(set);
  painter.setPen(color);
  // Half a pixel is lost to rounding in a layout, and is not worth an ellipsis.
  const bool fits = textWidth(text, style) < rect.width() + 0.5;
  const double baseline =
      std::round(rect.top() + (rect.height() - metrics.height()) / 2 + metrics.ascent());
  if (!style.monospacedDigits || !fits) {
    const QString shown = fits ? text : metrics.elidedText(text, Qt::ElideRight, rect.width());
    painter.drawText(QPointF(rect.left(), baseline), shown);
    return;
  }
  const double digit = digitWidth(metrics);
  double x = rect.left();
  for (const QChar each : text) {
    const double width = metrics.horizontalAdvance(each);
    const double place = each.isDigit() ? digit : width;
    painter.drawText(QPointF(x + (place - width) / 2, baseline), each);
    x += place;
  }
}

void paintBadge(QPainter& painter, const QRectF& rect, double radius, const QString& text,
                const TextStyle& style, const QColor& color, const QColor& fill) {
  fillRounded(painter, rect, radius, fill);
  const double width = textWidth(text, style);
  const QRectF centred(rect.center().x() - width / 2, rect.top(), width, rect.height());
  paintText(painter, centred, text, style, color);
}

Label::Label(const QString& text, const TextStyle& style, const QColor& color)
    : QLabel(text), style_(style), color_(color) {
  setTextFormat(Qt::PlainText);
  setAttribute(Qt::WA_TransparentForMouseEvents);
}

void Label::setColor(const QColor& color) {
  color_ = color;
  update();
}

Label* Label::rigid() {
  rigid_ = true;
  return this;
}

QSize Label::sizeHint() const {
  const double height = QFontMetricsF(ui::font(style_)).height();
  return {static_cast<int>(std::ceil(textWidth(text(), style_))),
          static_cast<int>(std::ceil(height))};
}

QSize Label::minimumSizeHint() const {
  return rigid_ ? sizeHint() : QSize(0, sizeHint().height());
}

void Label::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  paintText(painter, rect(), text(), style_, color_);
}

}  // namespace brimlo::ui
