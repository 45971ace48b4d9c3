#include "imaging/read_picture.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QBuffer>
#include <QPainter>
#include <fstream>
#include <iterator>
#include <random>

#include "support/temporary_folder.h"

namespace velk {
namespace {

constexpr QSize kBound(900, 112);

class ReadPictureTest : public testing::Test {
 protected:
  std::string Picture(const char* name, QSize size, QColor colour) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(colour);
    EXPECT_TRUE(image.save(QString::fromStdString(folder_.File(name))));
    return folder_.File(name);
  }
  std::string Text(const char* name, const char* text) {
    std::ofstream(folder_.File(name)) << text;
    return folder_.File(name);
  }
  static QByteArray Bytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return QByteArray::fromStdString({std::istreambuf_iterator<char>(file), {}});
  }
  /// A picture within the bound, or none: whatever the bytes are.
  static void Read(QByteArray bytes) {
    QBuffer from(&bytes);
    from.open(QIODevice::ReadOnly);
    const auto picture = ReadPicture(from, kBound);
    if (!picture) return;
    EXPECT_FALSE(picture->isNull());
    EXPECT_LE(picture->width(), kBound.width());
    EXPECT_LE(picture->height(), kBound.height());
  }

  test::TemporaryFolder folder_;
};

TEST_F(ReadPictureTest, ReadsTheUsualFormatsWhateverTheFileIsCalled) {
  for (const char* name : {"logo.png", "logo.bmp", "logo.jpg"})
    EXPECT_EQ(ReadPicture(Picture(name, {90, 30}, Qt::red), kBound)->size(), QSize(90, 30)) << name;
  const std::string png = Picture("logo.png", {90, 30}, Qt::red);
  std::filesystem::rename(png, folder_.File("logo.jpg"));
  EXPECT_TRUE(ReadPicture(folder_.File("logo.jpg"), kBound));
}

TEST_F(ReadPictureTest, ScalesDownInProportionAndNeverUp) {
  EXPECT_EQ(ReadPicture(Picture("wide.png", {3600, 112}, Qt::red), kBound)->size(), QSize(900, 28));
  EXPECT_EQ(ReadPicture(Picture("high.png", {100, 1120}, Qt::red), kBound)->size(), QSize(10, 112));
  EXPECT_EQ(ReadPicture(Picture("line.png", {5000, 1}, Qt::red), kBound)->size(), QSize(900, 1));
  EXPECT_EQ(ReadPicture(Picture("small.png", {9, 3}, Qt::red), kBound)->size(), QSize(9, 3));
}

TEST_F(ReadPictureTest, DrawsAVectorFileSharply) {
  const std::string svg = Text(
      "logo.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='3'><rect width='9' height='3'/></svg>");
  EXPECT_EQ(ReadPicture(svg, kBound)->size(), QSize(336, 112));
}

TEST_F(ReadPictureTest, RefusesWhatIsNoPicture) {
  EXPECT_FALSE(ReadPicture("", kBound));
  EXPECT_FALSE(ReadPicture(folder_.File("missing.png"), kBound));
  EXPECT_FALSE(ReadPicture(folder_.File(""), kBound));
  EXPECT_FALSE(ReadPicture(Text("empty.png", ""), kBound));
  EXPECT_FALSE(ReadPicture(Text("text.png", "no picture"), kBound));
  ASSERT_EQ(mkfifo(folder_.File("pipe.png").c_str(), 0600), 0);
  EXPECT_FALSE(ReadPicture(folder_.File("pipe.png"), kBound)) << "and does not wait for it";
}

TEST_F(ReadPictureTest, ReadsUpTo64Megapixels) {
  QImage image(8000, 8000, QImage::Format_Mono);
  image.fill(1);
  ASSERT_TRUE(image.save(QString::fromStdString(folder_.File("largest.png"))));
  EXPECT_TRUE(ReadPicture(folder_.File("largest.png"), kBound));
  image = QImage(8001, 8000, QImage::Format_Mono);
  image.fill(1);
  ASSERT_TRUE(image.save(QString::fromStdString(folder_.File("larger.png"))));
  EXPECT_FALSE(ReadPicture(folder_.File("larger.png"), kBound));
}

TEST_F(ReadPictureTest, RefusesAFileCutAnywhere) {
  const std::string whole = Picture("logo.png", {90, 30}, Qt::red);
  std::ifstream file(whole, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(file), {}};
  for (std::size_t length = 0; length < bytes.size() / 2; length += 5) {
    std::ofstream(folder_.File("cut.png"), std::ios::binary) << bytes.substr(0, length);
    EXPECT_FALSE(ReadPicture(folder_.File("cut.png"), kBound)) << length;
  }
}

TEST_F(ReadPictureTest, StandsThousandsOfDamagedFiles) {
  std::mt19937 random(15);
  for (const char* name : {"logo.png", "logo.bmp", "logo.jpg", "logo.svg"}) {
    const QByteArray whole = Bytes(
        std::string_view(name).ends_with("svg")
            ? Text(name, "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='3'><path d='M1 1L8 2'/></svg>")
            : Picture(name, {40, 20}, Qt::red));
    ASSERT_GT(whole.size(), 50) << name;
    for (int round = 0; round < 1000; ++round) {
      QByteArray bytes = whole;
      if (round % 4 == 0) bytes.truncate(static_cast<qsizetype>(random() % whole.size()));
      for (int flips = round % 7; flips >= 0 && !bytes.isEmpty(); --flips)
        bytes[static_cast<qsizetype>(random() % bytes.size())] = static_cast<char>(random());
      Read(bytes);
    }
  }
}

TEST_F(ReadPictureTest, RefusesAHeaderThatTellsOfAHugePicture) {
  const QByteArray whole = Bytes(Picture("logo.bmp", {40, 20}, Qt::red));
  for (const std::uint32_t side : {0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu, 65535u * 2}) {
    QByteArray bytes = whole;
    for (int i = 0; i < 8; ++i) bytes[18 + i] = static_cast<char>(side >> 8 * (i % 4));
    QBuffer from(&bytes);
    from.open(QIODevice::ReadOnly);
    EXPECT_FALSE(ReadPicture(from, kBound)) << side;
  }
}

}  // namespace
}  // namespace velk
