#include "shell/icons.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

#include "model/main_view.h"
#include "shell/main_form.h"
#include "support/in_english.h"
#include "support/still_screen.h"

namespace velk::test {
namespace {

QImage Lines(const char* name, double side) {
  QImage image(qRound(side), qRound(side), QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  QSvgRenderer(QStringLiteral(VELK_DATA_DIR "/icons/%1.svg").arg(QLatin1String(name))).render(&painter);
  return image;
}

/// The main window brings the pictures into the program.
struct Icons : testing::Test {
  Session session;
  test::StillScreen screen;
  MainForm form{test::English(), session, screen.refresh};
};

TEST_F(Icons, EveryNumberOfTheImageListHasAPicture) {
  for (const int number :
       {image::Record, image::PlayBack, image::Exit, image::Acquire, image::Edit, image::Tools, image::PauseRunning,
        image::Stop, image::PauseStopped, image::Help, image::Alarms, image::RecordOff, image::RecordOn,
        image::DisconnectOff, image::ConnectOff, image::ConnectOn, image::DisconnectOn, image::ConnectSilent})
    EXPECT_FALSE(Icon(number).pixmap(24).isNull()) << number;
}

/// Dots in a full colour, not in the grey of the lines.
bool IsLit(int number) {
  const QImage picture = Icon(number).pixmap(24, 24).toImage();
  for (int y = 0; y < 24; ++y)
    for (int x = 0; x < 24; ++x)
      if (picture.pixelColor(x, y).hsvSaturationF() > 0.6 && picture.pixelColor(x, y).alphaF() > 0.9) return true;
  return false;
}

TEST_F(Icons, OfTheTwoPlugsTheOneThatHoldsIsLit) {
  EXPECT_TRUE(IsLit(image::ConnectOn));
  EXPECT_FALSE(IsLit(image::DisconnectOn)) << "the link is open";
  EXPECT_FALSE(IsLit(image::ConnectOff));
  EXPECT_TRUE(IsLit(image::DisconnectOff)) << "the link is closed";
  EXPECT_TRUE(IsLit(image::ConnectSilent));
}

TEST_F(Icons, APictureThatIsNotThereIsEmpty) {
  EXPECT_TRUE(Icon(9999).isNull());
  EXPECT_TRUE(Icon("no_such_picture").isNull());
  EXPECT_TRUE(Icon("no_such_picture").pixmap(24).isNull());
}

TEST_F(Icons, APictureIsDrawnAtTheScaleOfTheScreen) {
  for (const double scale : {1.0, 1.5, 2.0}) {
    const QPixmap picture = Icon("record").pixmap(QSize(24, 24), scale);
    EXPECT_EQ(picture.size(), QSize(24, 24) * scale);
    EXPECT_EQ(picture.devicePixelRatio(), scale);
    EXPECT_EQ(picture.toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied), Lines("record", 24 * scale));
  }
}

TEST_F(Icons, AnotherSizeIsFittedFromALargerDrawing) {
  EXPECT_EQ(Icon("record").pixmap(QSize(30, 30), 1.0).size(), QSize(30, 30));
  EXPECT_EQ(Icon("company").pixmap(QSize(60, 60), 1.0).width(), 60);
  EXPECT_EQ(Icon("velk").pixmap(QSize(256, 256), 1.0).size(), QSize(256, 256));
}

TEST_F(Icons, WhatCantBePressedIsPale) {
  const QImage normal = Icon("stop").pixmap(QSize(24, 24), 1.0, QIcon::Normal).toImage();
  const QImage disabled = Icon("stop").pixmap(QSize(24, 24), 1.0, QIcon::Disabled).toImage();
  EXPECT_EQ(disabled.size(), normal.size());
  EXPECT_NE(disabled, normal);
}

TEST_F(Icons, PaintingFillsThePlace) {
  QImage canvas(40, 40, QImage::Format_ARGB32_Premultiplied);
  canvas.fill(Qt::transparent);
  QPainter painter(&canvas);
  Icon("velk").paint(&painter, QRect(8, 8, 24, 24));
  painter.end();
  EXPECT_EQ(qAlpha(canvas.pixel(4, 4)), 0);
  EXPECT_EQ(qAlpha(canvas.pixel(20, 20)), 255);
}

}  // namespace
}  // namespace velk::test
