#include "imaging/bitmap.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <random>

namespace velk {

namespace {

constexpr std::uint32_t kOpaque = 0xFF000000;

std::uint32_t Pixel(const std::uint8_t* bytes) {
  return bytes[0] | std::uint32_t{bytes[1]} << 8 | std::uint32_t{bytes[2]} << 16;
}

void SetPixel(std::uint8_t* bytes, std::uint32_t pixel) {
  bytes[0] = static_cast<std::uint8_t>(pixel);
  bytes[1] = static_cast<std::uint8_t>(pixel >> 8);
  bytes[2] = static_cast<std::uint8_t>(pixel >> 16);
}

std::uint32_t Meet(std::uint32_t there, std::uint32_t coming, RasterOperation operation) {
  switch (operation) {
    case RasterOperation::And:
      return there & coming;
    case RasterOperation::Or:
      return there | coming;
    case RasterOperation::Xor:
      return there ^ coming;
    case RasterOperation::Copy:
      break;
  }
  return coming;
}

/// The stretch of one axis that a copy touches on both sides.
struct Stretch {
  std::int64_t from = 0, to = 0, count = 0;
};

Stretch Overlap(std::int64_t from, std::int64_t fromSize, std::int64_t to, std::int64_t toSize, std::int64_t count) {
  const std::int64_t before = std::max<std::int64_t>({0, -from, -to});
  const std::int64_t end = std::min({count, fromSize - from, toSize - to});
  return {from + before, to + before, std::max<std::int64_t>(0, end - before)};
}

/// Where the pixels of an axis lie on one of another length: the two next ones, and how much of the second.
struct Sample {
  int first = 0, second = 0;
  float share = 0;
};

std::vector<Sample> Samples(int count, int sourceCount) {
  std::vector<Sample> samples(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    const double middle = (i + 0.5) * sourceCount / count - 0.5;
    const double place = std::clamp(middle, 0.0, sourceCount - 1.0);
    const int first = static_cast<int>(place);
    samples[static_cast<std::size_t>(i)] = {first, std::min(first + 1, sourceCount - 1),
                                            static_cast<float>(place - first)};
  }
  return samples;
}

float Between(float a, float b, float share) {
  return a + (b - a) * share;
}

}  // namespace

bool Bitmap::Create(int width, int height) {
  ClearUp();
  if (width <= 0 || height <= 0 || std::int64_t{width} * height > kMaxPixels) return false;
  width_ = width;
  height_ = height;
  bits_.assign(BytesPerScanLine() * static_cast<std::size_t>(height), 0);
  return true;
}

bool Bitmap::CreateFromPicture(const PictureRows& picture) {
  if (!Create(picture.width, picture.height)) return false;
  LoadPictureBlt(picture);
  return true;
}

void Bitmap::ClearUp() {
  width_ = height_ = 0;
  bits_ = {};
}

void Bitmap::LoadPictureBlt(const PictureRows& source, int x, int y, int width, int height, RasterOperation operation) {
  const Stretch across = Overlap(x, source.width, 0, width_, width == -1 ? width_ : width);
  const Stretch down = Overlap(y, source.height, 0, height_, height == -1 ? height_ : height);
  if (across.count == 0) return;
  for (std::int64_t row = 0; row < down.count; ++row) {
    const std::uint32_t* from = source.pixels + static_cast<std::size_t>(down.from + row) * source.stride + across.from;
    std::uint8_t* to = Line(static_cast<int>(down.to + row)) + across.to * 3;
    for (std::int64_t i = 0; i < across.count; ++i, to += 3) SetPixel(to, Meet(Pixel(to), from[i], operation));
  }
}

void Bitmap::PaintPicture(const PixelRows& target, int x, int y, int sourceX, int sourceY,
                          RasterOperation operation) const {
  const Stretch across = Overlap(sourceX, width_, x, target.width, width_);
  const Stretch down = Overlap(sourceY, height_, y, target.height, height_);
  if (across.count == 0) return;
  for (std::int64_t row = 0; row < down.count; ++row) {
    const std::uint8_t* from = Line(static_cast<int>(down.from + row)) + across.from * 3;
    std::uint32_t* to = target.pixels + static_cast<std::size_t>(down.to + row) * target.stride + across.to;
    for (std::int64_t i = 0; i < across.count; ++i, from += 3) to[i] = kOpaque | Meet(to[i], Pixel(from), operation);
  }
}

void Bitmap::RandomiseBits(bool grey) {
  std::mt19937 random(static_cast<std::uint32_t>(std::chrono::steady_clock::now().time_since_epoch().count()));
  for (int y = 0; y < height_; ++y) {
    std::uint8_t* line = Line(y);
    for (int x = 0; x < width_; ++x, line += 3) {
      const std::uint32_t pixel = static_cast<std::uint32_t>(random());
      SetPixel(line, grey ? (pixel & 0xFF) * 0x010101 : pixel);
    }
  }
}

Bitmap Bitmap::Resample(int newHeight, int newWidth) const {
  Bitmap made;
  if (bits_.empty() || !made.Create(newWidth, newHeight)) return made;
  const std::vector<Sample> across = Samples(newWidth, width_), down = Samples(newHeight, height_);
  for (int y = 0; y < newHeight; ++y) {
    const Sample& row = down[static_cast<std::size_t>(y)];
    const std::uint8_t *upper = Line(row.first), *lower = Line(row.second);
    std::uint8_t* to = made.Line(y);
    for (const Sample& column : across) {
      const std::size_t left = static_cast<std::size_t>(column.first) * 3;
      const std::size_t right = static_cast<std::size_t>(column.second) * 3;
      for (std::size_t channel = 0; channel < 3; ++channel) {
        const float above = Between(upper[left + channel], upper[right + channel], column.share);
        const float below = Between(lower[left + channel], lower[right + channel], column.share);
        *to++ = static_cast<std::uint8_t>(std::lround(Between(above, below, row.share)));
      }
    }
  }
  return made;
}

}  // namespace velk
