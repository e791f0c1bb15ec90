#include "ui/symbol.h"

#include <QHash>
#include <QIconEngine>
#include <QPixmap>
#include <QPixmapCache>
#include <QSvgRenderer>
#include <cmath>
#include <utility>

namespace brimlo::ui {
namespace {

QString fileOf(const QString& name) {
  return ":/symbols/" + name + ".svg";
}

/// The size of the symbol's drawing, of which only the proportions matter.
QSizeF drawnSize(const QString& name) {
  static QHash<QString, QSizeF> known;  // reading a drawing takes long, and rows ask in every frame
  QSizeF& drawn = known[name];
  if (drawn.isEmpty()) drawn = QSvgRenderer(fileOf(name)).viewBoxF().size();
  return drawn;
}

class SymbolIconEngine : public QIconEngine {
 public:
  SymbolIconEngine(QString name, const QColor& color) : name_(std::move(name)), color_(color) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode, QIcon::State) override {
    QRectF place({}, drawnSize(name_).scaled(rect.size(), Qt::KeepAspectRatio));
    place.moveCenter(QRectF(rect).center());
    paintSymbol(*painter, name_, place, color_);
  }
  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, pixmap.rect(), mode, state);
    return pixmap;
  }
  QIconEngine* clone() const override { return new SymbolIconEngine(*this); }

 private:
  QString name_;
  QColor color_;
};

}  // namespace

QSizeF symbolSize(const QString& name, const TextStyle& style) {
  // Drawn a little higher than capitals, as symbols beside text are.
  constexpr double kHeight = 1.25;
  const QSizeF drawn = drawnSize(name);
  const double height = std::round(style.size * kHeight);
  return {std::round(height * drawn.width() / drawn.height()), height};
}

void paintSymbol(QPainter& painter, const QString& name, const QRectF& rect, const QColor& color) {
  const double scale = painter.deviceTransform().m11();
  const QSize pixels = (rect.size() * scale).toSize();
  const QString key = QString("brimlo/%1/%2x%3/%4/%5")
                          .arg(name)
                          .arg(pixels.width())
                          .arg(pixels.height())
                          .arg(scale)
                          .arg(color.rgba());
  QPixmap pixmap;
  if (!QPixmapCache::find(key, &pixmap)) {
    pixmap = QPixmap(pixels);
    pixmap.fill(Qt::transparent);
    QPainter tint(&pixmap);
    QSvgRenderer(fileOf(name)).render(&tint);
    tint.setCompositionMode(QPainter::CompositionMode_SourceIn);
    tint.fillRect(pixmap.rect(), color);
    tint.end();
    pixmap.setDevicePixelRatio(scale);
    QPixmapCache::insert(key, pixmap);
  }
  // On whole pixels, or it is blurred.
  const QPointF device = painter.deviceTransform().map(rect.topLeft());
  painter.drawPixmap(painter.deviceTransform().inverted().map(
                         QPointF(std::round(device.x()), std::round(device.y()))),
                     pixmap);
}

QIcon symbolIcon(const QString& name, const QColor& color) {
  return QIcon(new SymbolIconEngine(name, color));
}

Symbol::Symbol(QString name, const TextStyle& style, const QColor& color)
    : name_(std::move(name)), color_(color) {
  setFixedSize(symbolSize(name_, style).toSize());
}

void Symbol::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  paintSymbol(painter, name_, rect(), color_);
}

}  // namespace brimlo::ui
