// Any bytes as the company's picture: one within the bound, or none.

#include <QBuffer>
#include <cstdint>
#include <cstdlib>

#include "imaging/read_picture.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr QSize kBound(200, 100);
  QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  QBuffer from(&bytes);
  from.open(QIODevice::ReadOnly);
  const auto picture = velk::ReadPicture(from, kBound);
  if (picture && (picture->isNull() || picture->width() > kBound.width() || picture->height() > kBound.height()))
    std::abort();
  return 0;
}
