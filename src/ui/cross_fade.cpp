#include "ui/cross_fade.h"

#include <QPainter>

namespace brimlo::ui {

CrossFade::CrossFade(QWidget* over, int milliseconds) : QWidget(over) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  hide();
  animation_.setDuration(milliseconds);
  animation_.setStartValue(1.0);
  animation_.setEndValue(0.0);
  animation_.setEasingCurve(QEasingCurve::InOutQuad);
  connect(&animation_, &QVariantAnimation::valueChanged, this, [this] { update(); });
  connect(&animation_, &QVariantAnimation::finished, this, [this] {
    hide();
    before_ = {};
  });
}

void CrossFade::run(const std::function<void()>& change) {
  before_ = parentWidget()->grab();
  change();
  setGeometry(parentWidget()->rect());
  raise();
  show();
  animation_.stop();
  animation_.start();
}

void CrossFade::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setOpacity(animation_.currentValue().toDouble());
  painter.drawPixmap(0, 0, before_);
}

}  // namespace brimlo::ui
