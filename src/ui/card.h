#pragma once

#include <QColor>
#include <QImage>
#include <QRegion>
#include <QWidget>

#include "ui/shapes.h"

namespace brimlo::ui {

/// A widget that looks like a card with a shadow. What is laid out in it is on the card; the clear
/// margin around that is for the shadow.
class Card : public QWidget {
 public:
  struct Look {
    int margin;
    double radius;
    Shadow shadow;
  };
  explicit Card(const Look& look);

  void setColors(const QColor& surface, const QColor& border);

  /// The part of it that the card covers, without its shadow.
  QRegion opaqueShape() const;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Look look_;
  QColor surface_;
  QColor border_;
  QImage shadow_;
};

}  // namespace brimlo::ui
