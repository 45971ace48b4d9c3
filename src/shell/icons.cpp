#include "shell/icons.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPixmapCache>
#include <QResource>
#include <QStyle>
#include <QStyleOption>
#include <cstring>

#include "model/main_view.h"

namespace velk {

namespace {

/// Scales at which the build has drawn the pictures, in percent; see cmake/Icons.cmake.
constexpr int kScales[] = {100, 150, 200, 400};

/// Reads a picture when it is asked for, at the scale that is asked for. The toolkit's own icons look at their files
/// right away, through the plugins of all picture formats, and that was a good part of the program's start.
class DrawnPicture : public QIconEngine {
 public:
  explicit DrawnPicture(QString name) : name_(std::move(name)), isThere_(QResource(File(kScales[0])).isValid()) {}

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override {
    const QString key = QStringLiteral("velk_%1_%2_%3_%4").arg(name_).arg(size.width()).arg(size.height()).arg(mode);
    QPixmap found;
    if (QPixmapCache::find(key, &found)) return found;
    found = InMode(mode, Read(size));
    QPixmapCache::insert(key, found);
    return found;
  }

  void paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State state) override {
    const qreal scale = painter->device()->devicePixelRatioF();
    painter->drawPixmap(place, pixmap(place.size() * scale, mode, state));
  }

  QIconEngine* clone() const override { return new DrawnPicture(*this); }

  bool isNull() override { return !isThere_; }

  QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override {
    QList<QSize> sizes;
    for (const int scale : kScales) sizes.append(Drawn(scale).size());
    return sizes;
  }

 private:
  QString File(int scale) const { return QStringLiteral(":/icons/%1_%2.argb").arg(name_).arg(scale); }

  /// The form of the files is told in data/draw_icons.cpp.
  QImage Drawn(int scale) const {
    const QByteArray bytes = QResource(File(scale)).uncompressedData();
    qint32 size[2] = {};
    if (bytes.size() < qsizetype{sizeof size}) return {};
    std::memcpy(size, bytes.constData(), sizeof size);
    const auto* pixels = reinterpret_cast<const uchar*>(bytes.constData()) + sizeof size;
    return QImage(pixels, size[0], size[1], QImage::Format_ARGB32_Premultiplied).copy();
  }

  /// The smallest that fills the size, fitted into it.
  QPixmap Read(QSize size) const {
    QImage image;
    for (const int scale : kScales) {
      image = Drawn(scale);
      if (image.isNull() || (image.width() >= size.width() && image.height() >= size.height())) break;
    }
    if (image.isNull() || image.size() == size) return QPixmap::fromImage(image);
    return QPixmap::fromImage(image.scaled(size, Qt::KeepAspectRatio, Qt::SmoothTransformation));
  }

  /// As the style greys out what can't be pressed.
  static QPixmap InMode(QIcon::Mode mode, const QPixmap& picture) {
    if (mode == QIcon::Normal || picture.isNull()) return picture;
    QStyleOption option;
    option.palette = QApplication::palette();
    return QApplication::style()->generatedIconPixmap(mode, picture, &option);
  }

  QString name_;
  bool isThere_;
};

struct Picture {
  int image;
  const char* file;
};

constexpr Picture kPictures[] = {
    {image::Record, "record"},
    {image::PlayBack, "playback"},
    {image::Exit, "exit"},
    {image::Acquire, "acquire"},
    {image::Edit, "edit"},
    {image::Tools, "tools"},
    {image::PauseRunning, "pause"},
    {image::Stop, "stop"},
    {image::PauseStopped, "start"},
    {image::Help, "help"},
    {image::Alarms, "alarms"},
    {image::RecordOff, "record_off"},
    {image::RecordOn, "record_on"},
    {image::DisconnectOff, "disconnect_off"},
    {image::ConnectOff, "connect_off"},
    {image::ConnectOn, "connect_on"},
    {image::DisconnectOn, "disconnect_on"},
    {image::ConnectSilent, "connect_silent"},
};

}  // namespace

QIcon Icon(const char* name) {
  return QIcon(new DrawnPicture(QString::fromLatin1(name)));
}

QIcon Icon(int image) {
  for (const Picture& picture : kPictures)
    if (picture.image == image) return Icon(picture.file);
  return {};
}

}  // namespace velk
