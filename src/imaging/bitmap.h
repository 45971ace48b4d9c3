#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/drawing/segment_raster.h"
#include "platform/drawing/surface.h"

namespace velk {

/// How the bits of a copy meet those that are there.
enum class RasterOperation { Copy, And, Or, Xor };

/// One image in memory as picture files have it: 24 bits a pixel, blue, green, red; the bottom line first, each padded
/// to a multiple of four bytes. One that was not created has the size 0, and painting from it does nothing.
class Bitmap {
 public:
  /// Makes a black image in place of what was there. False, and no image, for a size that is not positive or holds more
  /// than kMaxPixels.
  bool Create(int width, int height);
  /// Makes an image of the picture's size and paints the picture into it; transparency is left out.
  bool CreateFromPicture(const PictureRows& picture);
  /// Releases the image.
  void ClearUp();

  int Width() const { return width_; }
  int Height() const { return height_; }
  std::size_t BytesPerScanLine() const { return (static_cast<std::size_t>(width_) * 3 + 3) / 4 * 4; }
  /// The first byte of the bottom line; null without an image.
  std::uint8_t* Bits() { return bits_.empty() ? nullptr : bits_.data(); }
  const std::uint8_t* Bits() const { return bits_.empty() ? nullptr : bits_.data(); }
  /// The first byte of a line, counted from the top.
  std::uint8_t* Line(int fromTop) { return bits_.data() + Offset(fromTop); }
  const std::uint8_t* Line(int fromTop) const { return bits_.data() + Offset(fromTop); }

  /// Copies a picture into the image, its upper left corner at (x, y) of the picture; -1 for a side means the whole
  /// image. What lies beyond either is left alone.
  void LoadPictureBlt(const PictureRows& source, int x = 0, int y = 0, int width = -1, int height = -1,
                      RasterOperation operation = RasterOperation::Copy);
  /// Copies the image, from (sourceX, sourceY) on, to (x, y) of a target, as far as there is room.
  void PaintPicture(const PixelRows& target, int x, int y, int sourceX = 0, int sourceY = 0,
                    RasterOperation operation = RasterOperation::Copy) const;
  /// Fills the image with random pixels, other ones at each call; of equal channels where `grey` is set.
  void RandomiseBits(bool grey);
  /// A new image of another size, each pixel weighed from the four that lie around its place. Without an image, and for
  /// a size that Create refuses, one that was not created.
  Bitmap Resample(int newHeight, int newWidth) const;

  static constexpr std::int64_t kMaxPixels = 64'000'000;

 private:
  std::size_t Offset(int fromTop) const { return static_cast<std::size_t>(height_ - 1 - fromTop) * BytesPerScanLine(); }

  int width_ = 0;
  int height_ = 0;
  std::vector<std::uint8_t> bits_;
};

}  // namespace velk
