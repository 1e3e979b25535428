// Renders the SVG icon into the PNG that desktops without an SVG loader
// show: gc40-render-icon IN.svg OUT.png SIZE.

#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <cstdio>

int main(int argc, char** argv) {
  if (argc != 4) {
    std::fprintf(stderr, "usage: %s IN.svg OUT.png SIZE\n", argv[0]);
    return 2;
  }
  QSvgRenderer svg(QString::fromLocal8Bit(argv[1]));
  const int size = QString::fromLatin1(argv[3]).toInt();
  if (!svg.isValid() || size <= 0) {
    std::fprintf(stderr, "%s: cannot render %s\n", argv[0], argv[1]);
    return 1;
  }
  QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  svg.render(&painter);
  painter.end();
  return image.save(QString::fromLocal8Bit(argv[2]), "PNG") ? 0 : 1;
}
