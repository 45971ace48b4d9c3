#include "imaging/windows/copy_to_clipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>

namespace velk {

bool CopyToClipboard(const Bitmap& image) {
  if (image.Bits() == nullptr) return false;
  QImage copy(image.Width(), image.Height(), QImage::Format_RGB32);
  for (int y = 0; y < image.Height(); ++y) {
    const std::uint8_t* from = image.Line(y);
    auto* to = reinterpret_cast<QRgb*>(copy.scanLine(y));
    for (int x = 0; x < image.Width(); ++x, from += 3) to[x] = qRgb(from[2], from[1], from[0]);
  }
  QGuiApplication::clipboard()->setImage(copy);
  return true;
}

}  // namespace velk
