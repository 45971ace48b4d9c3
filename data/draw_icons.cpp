// Draws the pictures of the program at the scales that screens have: velk_draw_icons FOLDER PICTURE.svg... PERCENT...
//
// NAME_PERCENT.argb holds width and height, 32 bits each, then the rows of 32-bit premultiplied pixels. The program
// needs no decoder for that: those of the toolkit are plugins, and loading them took a tenth of its start.

#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <cstdio>

namespace {

bool Draw(const QString& folder, const QString& picture, int percent) {
  QSvgRenderer lines(picture);
  if (!lines.isValid()) return false;
  QImage image(lines.defaultSize() * percent / 100, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  lines.render(&painter);
  painter.end();
  const qint32 size[] = {image.width(), image.height()};
  QFile file(QStringLiteral("%1/%2_%3.argb").arg(folder, QFileInfo(picture).baseName()).arg(percent));
  return file.open(QIODevice::WriteOnly) &&
         file.write(reinterpret_cast<const char*>(size), sizeof size) == sizeof size &&
         file.write(reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes()) == image.sizeInBytes() &&
         file.flush();
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication qt(argc, argv);
  const QStringList arguments = QGuiApplication::arguments().mid(1);
  const QStringList pictures = arguments.filter(QStringLiteral(".svg"));
  for (const QString& picture : pictures)
    for (qsizetype i = 1 + pictures.size(); i < arguments.size(); ++i)
      if (!Draw(arguments[0], picture, arguments[i].toInt())) {
        std::fprintf(stderr, "velk_draw_icons: %s can't be drawn\n", qPrintable(picture));
        return 1;
      }
  return 0;
}
