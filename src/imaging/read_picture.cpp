#include "imaging/read_picture.h"

#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <algorithm>

#include "base/text_qt.h"

namespace velk {

namespace {

constexpr qint64 kMaxPixels = 64'000'000;
constexpr int kMaxMegabytes = 256;  ///< 64 megapixels of four bytes

bool IsTooLarge(QSize size) {
  return qint64{size.width()} * size.height() > kMaxPixels;
}

QSize ScaledTo(QSize size, QSize bound) {
  const QSize scaled = size.scaled(bound, Qt::KeepAspectRatio);
  return {std::max(scaled.width(), 1), std::max(scaled.height(), 1)};
}

}  // namespace

std::optional<QImage> ReadPicture(const std::string& path, QSize bound) {
  // Reading a pipe would wait for its other end.
  if (!QFileInfo(ToQt(path)).isFile()) return std::nullopt;
  QFile file(ToQt(path));
  if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
  return ReadPicture(file, bound);
}

std::optional<QImage> ReadPicture(QIODevice& from, QSize bound) {
  QImageReader::setAllocationLimit(kMaxMegabytes);
  QImageReader reader(&from);
  reader.setDecideFormatFromContent(true);
  reader.setAutoTransform(true);
  const QSize size = reader.size();
  if (IsTooLarge(size)) return std::nullopt;
  // A drawing of lines has no size of its own worth keeping: it is drawn at the size that is wanted.
  if (!size.isEmpty() && reader.format() == "svg") reader.setScaledSize(ScaledTo(size, bound));
  QImage image = reader.read();
  if (image.isNull() || IsTooLarge(image.size())) return std::nullopt;
  if (image.width() > bound.width() || image.height() > bound.height())
    image = image.scaled(ScaledTo(image.size(), bound), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  return image;
}

}  // namespace velk
