#pragma once

#include <QAbstractButton>
#include <QColor>

#include "ui/label.h"

namespace brimlo::ui {

/// A tab in the shape of a capsule: a title, and how many entries its section has. It is checked
/// while its section is shown. Only `setChecked` changes that; a click is merely reported, and does
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

  void setCount(qint64 count);
  const QString& title() const { return title_; }

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void nextCheckState() override {}

 private:
  void setTextColor(QColor color);

  QString title_;
  Colors colors_;
  Label* titleLabel_;
  Label* countLabel_;
};

}  // namespace brimlo::ui
