#pragma once

#include <QColor>
#include <QImage>
#include <QRegion>
#include <QWidget>

namespace brimlo::ui {

/// A card with a shadow, for a window that belongs to something beside it.
class Popover : public QWidget {
 public:
  /// Takes `content` over. It has the size of its content, and a clear margin for the shadow.
  explicit Popover(QWidget* content);

  void setColors(const QColor& surface, const QColor& border);

  /// The part of it that the card covers, without its shadow.
  QRegion opaqueShape() const;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QRectF card() const;

  QColor surface_ = Qt::white;
  QColor border_ = Qt::transparent;
  QImage shadow_;
};

}  // namespace brimlo::ui
