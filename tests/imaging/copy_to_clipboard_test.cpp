#include "imaging/windows/copy_to_clipboard.h"

#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>

namespace velk {
namespace {

TEST(CopyToClipboardTest, PutsTheImageThereAsItIs) {
  const std::uint32_t pixels[] = {0xFF102030, 0xFF405060, 0xFF708090, 0xFFA0B0C0, 0xFFFFFFFF, 0xFF000000};
  Bitmap image;
  ASSERT_TRUE(image.CreateFromPicture({pixels, 3, 3, 2}));
  ASSERT_TRUE(CopyToClipboard(image));
  const QImage copy = QGuiApplication::clipboard()->image();
  ASSERT_EQ(copy.size(), QSize(3, 2));
  for (int i = 0; i < 6; ++i) EXPECT_EQ(copy.pixel(i % 3, i / 3), pixels[i]) << i;
}

TEST(CopyToClipboardTest, RefusesAnImageThatWasNotCreated) {
  QGuiApplication::clipboard()->setText("as before");
  EXPECT_FALSE(CopyToClipboard(Bitmap()));
  EXPECT_EQ(QGuiApplication::clipboard()->text(), "as before");
}

}  // namespace
}  // namespace velk
