#pragma once

#include <QBasicTimer>
#include <QColor>
#include <QRectF>
#include <QString>

#include "ui/pressable.h"
#include "ui/text_style.h"

namespace brimlo::ui {

/// A push button: a text, a symbol before or after it, on a rounded rectangle where it has a fill
/// or a border. A ring marks it while it has the keyboard.
class Button : public Pressable {
 public:
  struct Look {
    TextStyle style;
    QColor text;
    QColor fill = Qt::transparent;
    QColor border = Qt::transparent;
    int horizontalPadding = 0;
    int verticalPadding = 0;
    double radius = 0;
    QString leadingSymbol = {};
    QString trailingSymbol = {};
    int spacing = 0;  ///< between symbol and text
  };
  Button(const QString& label, const Look& look);

  void setLabel(const QString& label);
  /// Shows a turning wheel in place of the leading symbol.
  void setBusy(bool busy);

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void timerEvent(QTimerEvent* event) override;

 private:
  double symbolRoom(const QString& symbol) const;
  void paintWheel(QPainter& painter, const QRectF& rect) const;

  Look look_;
  QBasicTimer turning_;
  int turn_ = 0;
};

}  // namespace brimlo::ui
