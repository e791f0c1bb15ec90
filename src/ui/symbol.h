#pragma once

#include <QColor>
#include <QIcon>
#include <QPainter>
#include <QRectF>
#include <QString>
#include <QWidget>

#include "ui/text_style.h"

namespace brimlo::ui {

/// The size of the symbol `name` beside text of `style`.
QSizeF symbolSize(const QString& name, const TextStyle& style);

/// Draws the symbol `name`, one of those in resources/symbols, in one colour.
void paintSymbol(QPainter& painter, const QString& name, const QRectF& rect, const QColor& color);

/// The symbol as a square icon, crisp at every size.
QIcon symbolIcon(const QString& name, const QColor& color);

/// A symbol in a stack. Screen readers skip it and read the text beside it.
class Symbol : public QWidget {
 public:
  Symbol(QString name, const TextStyle& style, const QColor& color);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString name_;
  QColor color_;
};

}  // namespace brimlo::ui
