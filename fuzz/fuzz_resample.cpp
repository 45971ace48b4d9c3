// Any picture, copied to any place, resampled to any size: the size that was asked for, or no image; and pixels that
// lie between those of the picture.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "imaging/bitmap.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 16) return 0;
  std::int32_t numbers[4];
  std::memcpy(numbers, data, 16);
  const int width = data[0] % 32 + 1, height = data[4] % 32 + 1;
  std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  std::memcpy(pixels.data(), data + 16, std::min(size - 16, pixels.size() * 4));

  velk::Bitmap image;
  image.CreateFromPicture({pixels.data(), static_cast<std::size_t>(width), width, height});
  // Sizes up to a few thousand, and now and then any.
  const int newWidth = data[8] < 250 ? numbers[2] % 2048 : numbers[2];
  const int newHeight = data[12] < 250 ? numbers[3] % 256 : numbers[3];
  const velk::Bitmap made = image.Resample(newHeight, newWidth);
  if (made.Bits() && (made.Width() != newWidth || made.Height() != newHeight)) std::abort();
  if (made.Bits()) {
    const auto [low, high] = std::minmax_element(image.Bits(), image.Bits() + image.BytesPerScanLine() * height);
    for (int x = 0; x < newWidth * 3; ++x)
      if (made.Line(0)[x] < *low || made.Line(0)[x] > *high) std::abort();
  }

  image.LoadPictureBlt({pixels.data(), static_cast<std::size_t>(width), width, height}, numbers[0], numbers[1],
                       numbers[2], numbers[3], velk::RasterOperation::Xor);
  image.PaintPicture({pixels.data(), static_cast<std::size_t>(width), width, height}, numbers[0], numbers[1],
                     numbers[2], numbers[3]);
  return 0;
}
