#include "ui/paragraph.h"

#include <QPainter>
#include <QTextLayout>
#include <cmath>

namespace brimlo::ui {

Paragraph::Paragraph(const QString& text, const TextStyle& style, const QColor& color,
                     const Options& options)
    : QLabel(text), style_(style), color_(color), options_(options), lineWidth_(options.width) {
  setTextFormat(Qt::PlainText);
  setAttribute(Qt::WA_TransparentForMouseEvents);
  QTextLayout layout;
  const double height = layOut(layout, options.width);
  setFixedSize(options.width, static_cast<int>(std::ceil(height)));
  // The smallest width at which the text needs no more lines than at its full width.
  int tooNarrow = 0;
  while (lineWidth_ - tooNarrow > 1) {
    const int between = (tooNarrow + lineWidth_) / 2;
    (layOut(layout, between) > height ? tooNarrow : lineWidth_) = between;
  }
}

void Paragraph::paintEvent(QPaintEvent*) {
  QTextLayout layout;
  layOut(layout, lineWidth_);
  QPainter painter(this);
  painter.setPen(color_);
  const bool centered = options_.alignment.testFlag(Qt::AlignHCenter);
  layout.draw(&painter, {centered ? (width() - lineWidth_) / 2.0 : 0, 0});
}

/// Returns the height.
double Paragraph::layOut(QTextLayout& layout, int width) const {
  QTextOption option(options_.alignment);
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  layout.setText(QString(text()).replace('\n', QChar::LineSeparator));
  layout.setFont(ui::font(style_));
  layout.setTextOption(option);
  double height = 0;
  layout.beginLayout();
  for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
    if (height > 0) height += options_.lineSpacing;
    line.setLineWidth(width);
    line.setPosition({0, std::round(height)});
    height += line.height();
  }
  layout.endLayout();
  return height;
}

}  // namespace brimlo::ui
