#include "imaging/picture_file.h"

#include <gtest/gtest.h>

#include <QImage>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <iterator>

#include "base/errors.h"
#include "support/file_size_limit.h"
#include "support/temporary_folder.h"

namespace velk {
namespace {

class PictureFileTest : public testing::Test {
 protected:
  /// Bands of colours, 64 x 48: smooth enough for what a photograph loses.
  static QImage Picture() {
    QImage picture(64, 48, QImage::Format_RGB32);
    for (int y = 0; y < 48; ++y)
      for (int x = 0; x < 64; ++x) picture.setPixel(x, y, qRgb(x * 4, y < 24 ? 40 : 200, 255 - x * 2));
    return picture;
  }
  static Bitmap Image() {
    const QImage picture = Picture();
    Bitmap image;
    image.CreateFromPicture({reinterpret_cast<const std::uint32_t*>(picture.constBits()), 64, 64, 48});
    return image;
  }
  QImage Read(const char* name) const { return QImage(QString::fromStdString(folder_.File(name))); }
  std::string Bytes(const char* name) const {
    std::ifstream file(folder_.File(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  test::TemporaryFolder folder_;
};

TEST_F(PictureFileTest, WritesABitmapThatReadsPixelByPixelTheSame) {
  SaveBMP(Image(), folder_.File("page.bmp"), 150);
  const QImage read = Read("page.bmp");
  EXPECT_EQ(read.convertToFormat(QImage::Format_RGB32), Picture());
  EXPECT_EQ(read.dotsPerMeterX(), 5905);
  EXPECT_EQ(Bytes("page.bmp").size(), 54u + 64 * 48 * 3);
}

TEST_F(PictureFileTest, WritesAJpegThatReadsNearlyTheSame) {
  SaveJPG(Image(), folder_.File("page.jpg"), 90, 150);
  const QImage read = Read("page.jpg"), picture = Picture();
  ASSERT_EQ(read.size(), picture.size());
  int difference = 0;
  for (int y = 0; y < 48; ++y)
    for (int x = 0; x < 64; ++x) {
      const QRgb a = read.pixel(x, y), b = picture.pixel(x, y);
      difference += std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) + std::abs(qBlue(a) - qBlue(b));
    }
  EXPECT_LT(difference / (64.0 * 48 * 3), 4) << "of 255, on average";
  EXPECT_NEAR(read.dotsPerMeterX(), 5905.5, 1) << "150 dots an inch";
}

/// The header of the frame: marker FFC0 (baseline), length, 8 bits, height, width, three components with their factors.
TEST_F(PictureFileTest, WritesABaselineJpegOfFourOneOneSampling) {
  SaveJPG(Image(), folder_.File("page.jpg"), 90, 150);
  const std::string bytes = Bytes("page.jpg");
  const std::string frame("\xFF\xC0\x00\x11\x08\x00\x30\x00\x40\x03\x01\x41", 12);
  const std::size_t at = bytes.find(frame);
  ASSERT_NE(at, std::string::npos) << "brightness is sampled 4 by 1";
  EXPECT_EQ(bytes[at + 14], '\x11') << "blue 1 by 1";
  EXPECT_EQ(bytes[at + 17], '\x11') << "red 1 by 1";
}

TEST_F(PictureFileTest, WritesAWorseJpegSmaller) {
  SaveJPG(Image(), folder_.File("good.jpg"), 90, 150);
  SaveJPG(Image(), folder_.File("bad.jpg"), 10, 150);
  EXPECT_LT(Bytes("bad.jpg").size(), Bytes("good.jpg").size());
}

TEST_F(PictureFileTest, TakesThePlaceOfAFileThatStoodThere) {
  for (const char* name : {"page.jpg", "page.bmp"}) {
    std::ofstream(folder_.File(name)) << std::string(100'000, 'x');
    std::string_view(name).ends_with("jpg") ? SaveJPG(Image(), folder_.File(name), 90, 150)
                                            : SaveBMP(Image(), folder_.File(name), 150);
    EXPECT_EQ(Read(name).size(), QSize(64, 48)) << name;
    EXPECT_LT(Bytes(name).size(), 100'000u);
  }
}

TEST_F(PictureFileTest, KeepsTheFileOfBeforeWhereTheDiskIsFull) {
  const auto check = [&](const char* name, const std::function<void(const std::string&)>& save) {
    std::ofstream(folder_.File(name)) << "before";
    try {
      const test::FileSizeLimit full(100);
      save(folder_.File(name));
      ADD_FAILURE() << "nothing was raised";
    } catch (const RuntimeError& error) {
      EXPECT_NE(std::string(error.what()).find(name), std::string::npos) << error.what();
    }
    EXPECT_EQ(Bytes(name), "before");
  };
  check("page.jpg", [](const std::string& path) { SaveJPG(Image(), path, 90, 150); });
  check("page.bmp", [](const std::string& path) { SaveBMP(Image(), path, 150); });
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_.Path()), {}), 2) << "nothing is left beside them";
}

TEST_F(PictureFileTest, RefusesAFolderThatIsNotThereAndAnImageThatWasNotCreated) {
  EXPECT_THROW(SaveJPG(Image(), folder_.File("missing/page.jpg"), 90, 150), RuntimeError);
  EXPECT_THROW(SaveBMP(Image(), folder_.File("missing/page.bmp"), 150), RuntimeError);
  EXPECT_THROW(SaveJPG(Bitmap(), folder_.File("page.jpg"), 90, 150), RuntimeError);
  EXPECT_THROW(SaveBMP(Bitmap(), folder_.File("page.bmp"), 150), RuntimeError);
  EXPECT_TRUE(std::filesystem::is_empty(folder_.Path()));
}

TEST_F(PictureFileTest, TellsWhatTheEncoderRefuses) {
  Bitmap wide;
  ASSERT_TRUE(wide.Create(65501, 1));
  try {
    SaveJPG(wide, folder_.File("page.jpg"), 90, 150);
    FAIL() << "a JPEG holds 65500 pixels a side";
  } catch (const RuntimeError& error) {
    EXPECT_TRUE(std::string(error.what()).starts_with("Failed to save to JPG ")) << error.what();
  }
  EXPECT_TRUE(std::filesystem::is_empty(folder_.Path()));
}

}  // namespace
}  // namespace velk
