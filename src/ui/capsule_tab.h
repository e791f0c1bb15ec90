#pragma once

#include <QAbstractButton>
#include <QColor>

#include "ui/label.h"

namespace brimlo::ui {

/// A tab in the shape of a capsule: a title, and how many entries its section has. Clicking it does
/// not take the keyboard from elsewhere.
class CapsuleTab : public QAbstractButton {
 public:
  struct Colors {
    QColor selectedFill;
    QColor fill;
    QColor selectedText;
    QColor text;
  };
  CapsuleTab(const QString& title, const Colors& colors);

  void setSelected(bool selected);
  void setCount(qint64 count);
  bool isSelected() const { return selected_; }
  const QString& title() const { return title_; }

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString title_;
  Colors colors_;
  Label* titleLabel_;
  Label* countLabel_;
  bool selected_ = false;
};

}  // namespace brimlo::ui
