#include "imaging/bitmap.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <set>

namespace velk {
namespace {

constexpr std::uint32_t kRed = 0xFFFF0000, kGreen = 0xFF00FF00, kBlue = 0xFF0000FF, kWhite = 0xFFFFFFFF;

/// 0xrrggbb of a pixel, counted from the upper left.
std::uint32_t At(const Bitmap& image, int x, int y) {
  const std::uint8_t* bytes = image.Line(y) + x * 3;
  return std::uint32_t{bytes[2]} << 16 | std::uint32_t{bytes[1]} << 8 | bytes[0];
}

Bitmap Of(std::array<std::uint32_t, 4> pixels) {
  Bitmap image;
  image.CreateFromPicture({pixels.data(), 2, 2, 2});
  return image;
}

TEST(BitmapTest, PadsEachLineToFourBytes) {
  const std::array<std::size_t, 5> bytes{0, 4, 8, 12, 12};
  for (int width = 1; width < 5; ++width) {
    Bitmap image;
    ASSERT_TRUE(image.Create(width, 3));
    EXPECT_EQ(image.BytesPerScanLine(), bytes[static_cast<std::size_t>(width)]) << width;
  }
}

TEST(BitmapTest, HoldsTheBottomLineFirstInBlueGreenRed) {
  const Bitmap image = Of({kRed, kGreen, kBlue, kWhite});
  const std::array<std::uint8_t, 16> expected{255, 0, 0, 255, 255, 255, 0, 0, 0, 0, 255, 0, 255, 0, 0, 0};
  for (std::size_t i = 0; i < expected.size(); ++i) EXPECT_EQ(image.Bits()[i], expected[i]) << i;
}

TEST(BitmapTest, HasNoSizeAndPaintsNothingUntilItIsCreated) {
  const Bitmap image;
  EXPECT_EQ(image.Width(), 0);
  EXPECT_EQ(image.Height(), 0);
  EXPECT_EQ(image.BytesPerScanLine(), 0u);
  EXPECT_EQ(image.Bits(), nullptr);
  std::uint32_t pixel = kRed;
  image.PaintPicture({&pixel, 1, 1, 1}, 0, 0);
  EXPECT_EQ(pixel, kRed);
  EXPECT_EQ(image.Resample(5, 5).Width(), 0);
}

TEST(BitmapTest, RefusesASizeThatNoMemoryShouldHold) {
  constexpr int kMost = std::numeric_limits<int>::max();
  for (const auto& [width, height] : {std::pair{0, 5}, {5, 0}, {-1, 5}, {kMost, kMost}, {8001, 8000}}) {
    Bitmap image = Of({kRed, kRed, kRed, kRed});
    EXPECT_FALSE(image.Create(width, height)) << width << " x " << height;
    EXPECT_EQ(image.Width(), 0) << "the image of before is released";
  }
}

TEST(BitmapTest, ClearUpReleasesTheImage) {
  Bitmap image = Of({kRed, kRed, kRed, kRed});
  image.ClearUp();
  EXPECT_EQ(image.Width(), 0);
  EXPECT_EQ(image.Bits(), nullptr);
}

TEST(BitmapTest, CopiesFromThePlaceInAPictureThatIsAsked) {
  const std::array<std::uint32_t, 4> source{kRed, kGreen, kBlue, kWhite};
  Bitmap image;
  image.Create(2, 2);
  image.LoadPictureBlt({source.data(), 2, 2, 2}, 1, 1);
  EXPECT_EQ(At(image, 0, 0), 0xFFFFFFu);
  EXPECT_EQ(At(image, 1, 0), 0u) << "beyond the picture";
  EXPECT_EQ(At(image, 0, 1), 0u);
  image.LoadPictureBlt({source.data(), 2, 2, 2}, 0, 0, 1, -1);
  EXPECT_EQ(At(image, 0, 0), 0xFF0000u);
  EXPECT_EQ(At(image, 0, 1), 0x0000FFu);
  EXPECT_EQ(At(image, 1, 1), 0u) << "one column only";
}

TEST(BitmapTest, PlacesAPictureThatBeginsLeftOfItWhereItLies) {
  const std::array<std::uint32_t, 4> source{kRed, kGreen, kBlue, kWhite};
  Bitmap image;
  image.Create(2, 2);
  image.LoadPictureBlt({source.data(), 2, 2, 2}, -1, -1);
  EXPECT_EQ(At(image, 1, 1), 0xFF0000u);
  EXPECT_EQ(At(image, 0, 0), 0u);
}

TEST(BitmapTest, PaintsOpaquePixelsAsFarAsThereIsRoom) {
  const Bitmap image = Of({kRed, kGreen, kBlue, kWhite});
  std::array<std::uint32_t, 9> target{};
  image.PaintPicture({target.data(), 3, 3, 3}, 2, 2);
  EXPECT_EQ(target[8], kRed);
  EXPECT_EQ(target[7], 0u);
  image.PaintPicture({target.data(), 3, 3, 3}, 0, 0, 1, 0);
  EXPECT_EQ(target[0], kGreen);
  EXPECT_EQ(target[3], kWhite);
  EXPECT_EQ(target[1], 0u) << "beyond the image";
}

TEST(BitmapTest, MeetsWhatIsThereByTheOperation) {
  const std::uint32_t coming = 0xFF00FF0F;
  const auto met = [&](RasterOperation operation) {
    Bitmap image;
    const std::uint32_t there = 0xFFF0F0FF;
    image.CreateFromPicture({&there, 1, 1, 1});
    image.LoadPictureBlt({&coming, 1, 1, 1}, 0, 0, -1, -1, operation);
    return At(image, 0, 0);
  };
  EXPECT_EQ(met(RasterOperation::Copy), 0x00FF0Fu);
  EXPECT_EQ(met(RasterOperation::And), 0x00F00Fu);
  EXPECT_EQ(met(RasterOperation::Or), 0xF0FFFFu);
  EXPECT_EQ(met(RasterOperation::Xor), 0xF00FF0u);
}

TEST(BitmapTest, FillsItselfWithRandomPixelsOrGreyOnes) {
  Bitmap image;
  image.Create(50, 50);
  image.RandomiseBits(false);
  int coloured = 0;
  for (int i = 0; i < 50; ++i) coloured += At(image, i, i) % 0x010101 != 0;
  EXPECT_GT(coloured, 40);
  image.RandomiseBits(true);
  std::set<std::uint32_t> shades;
  for (int i = 0; i < 50; ++i) {
    EXPECT_EQ(At(image, i, i) % 0x010101, 0u);
    shades.insert(At(image, i, i));
  }
  EXPECT_GT(shades.size(), 10u);
}

TEST(BitmapTest, ResampledToItsOwnSizeIsTheSame) {
  Bitmap image;
  image.Create(7, 5);
  image.RandomiseBits(false);
  const Bitmap same = image.Resample(5, 7);
  for (int y = 0; y < 5; ++y)
    for (int x = 0; x < 7; ++x) EXPECT_EQ(At(same, x, y), At(image, x, y));
}

/// Two pixels on four: their middles lie at 0.5 and 1.5 of the first, so the four lie at -0.25, 0.25, 0.75 and 1.25 of
/// a way from the first middle to the second, the outer ones beyond it.
TEST(BitmapTest, WeighsThePixelsThatLieAround) {
  const std::uint32_t source[] = {0xFF000000, 0xFF646464};  // 0 and 100
  Bitmap image;
  image.CreateFromPicture({source, 2, 2, 1});
  const Bitmap wide = image.Resample(1, 4);
  const std::array<std::uint32_t, 4> expected{0, 25, 75, 100};
  for (int x = 0; x < 4; ++x) EXPECT_EQ(At(wide, x, 0) & 0xFF, expected[static_cast<std::size_t>(x)]) << x;
}

TEST(BitmapTest, ResamplesInBothDirections) {
  const Bitmap one = Of({0xFF000000, 0xFF646464, 0xFF646464, 0xFFC8C8C8}).Resample(1, 1);
  EXPECT_EQ(At(one, 0, 0), 0x646464u) << "the mean of 0, 100, 100, 200";
  const Bitmap high = Of({kRed, kRed, kBlue, kBlue}).Resample(10, 2);
  EXPECT_EQ(high.Height(), 10);
  EXPECT_EQ(At(high, 0, 0), 0xFF0000u);
  EXPECT_EQ(At(high, 1, 9), 0x0000FFu);
}

TEST(BitmapTest, RefusesToResampleToASizeThatItCouldNotBeCreatedIn) {
  const Bitmap image = Of({kRed, kRed, kRed, kRed});
  EXPECT_EQ(image.Resample(0, 5).Bits(), nullptr);
  EXPECT_EQ(image.Resample(5, -1).Bits(), nullptr);
  EXPECT_EQ(image.Resample(8001, 8000).Bits(), nullptr);
}

}  // namespace
}  // namespace velk
