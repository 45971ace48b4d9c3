// Draws the pictures of the program at the scales that screens have: velk_draw_icons FOLDER PICTURE.svg... PERCENT...
//
// The program then needs nothing but to read them: drawing them from their lines took a tenth of its start.

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
  return image.save(QStringLiteral("%1/%2_%3.png").arg(folder, QFileInfo(picture).baseName()).arg(percent));
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
