#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <cstdio>

/// Renders an SVG file as FOLDER/SIZE.png for each size. usage: render_icon SVG FOLDER SIZE…
int main(int argc, char** argv) {
  if (argc < 4) return 2;
  QSvgRenderer drawing(QString::fromLocal8Bit(argv[1]));
  for (int i = 3; i < argc; ++i) {
    const int size = QString::fromLocal8Bit(argv[i]).toInt();
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    drawing.render(&painter);
    painter.end();
    const QString file = QString("%1/%2.png").arg(QString::fromLocal8Bit(argv[2])).arg(size);
    if (!drawing.isValid() || !image.save(file)) {
      std::fprintf(stderr, "cannot render %s as %s\n", argv[1], qPrintable(file));
      return 1;
    }
  }
  return 0;
}
