#pragma once

#include <QColor>
#include <QLabel>
#include <QTextLayout>

#include "ui/text_style.h"

namespace brimlo::ui {

/// A text on as many lines as it needs, never cut. The lines are about equally long, so that no
/// word stands alone on the last one.
class Paragraph : public QLabel {
 public:
  struct Options {
    int width;
    int lineSpacing = 0;  ///< added to the font's own
    Qt::Alignment alignment = Qt::AlignHCenter;
  };
  Paragraph(const QString& text, const TextStyle& style, const QColor& color,
            const Options& options);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  double layOut(QTextLayout& layout, int width) const;

  TextStyle style_;
  QColor color_;
  Options options_;
  int lineWidth_;
};

}  // namespace brimlo::ui
