#include "shell/window_places.h"

#include <gtest/gtest.h>

namespace velk {
namespace {

/// Every pixel of the room lies in exactly one place.
void ExpectCovers(QSize room, const std::vector<QRect>& places) {
  qint64 area = 0;
  for (std::size_t i = 0; i < places.size(); ++i) {
    EXPECT_TRUE(QRect({0, 0}, room).contains(places[i]));
    area += qint64{places[i].width()} * places[i].height();
    for (std::size_t j = 0; j < i; ++j) EXPECT_FALSE(places[i].intersects(places[j])) << i << " " << j;
  }
  EXPECT_EQ(area, qint64{room.width()} * room.height());
}

TEST(TilePlaces, PutsColumnsSideBySideAndRowsBelowEachOther) {
  EXPECT_EQ(TilePlaces({1000, 600}, 3, Qt::Vertical),
            (std::vector<QRect>{{0, 0, 333, 600}, {333, 0, 333, 600}, {666, 0, 334, 600}}));
  EXPECT_EQ(TilePlaces({1000, 600}, 2, Qt::Horizontal), (std::vector<QRect>{{0, 0, 1000, 300}, {0, 300, 1000, 300}}));
}

TEST(TilePlaces, SharesStripsWhereThereAreMoreWindowsThanFit) {
  // Columns of at least 300: three of them for seven windows, the first with one more.
  const auto places = TilePlaces({1000, 600}, 7, Qt::Vertical);
  ASSERT_EQ(places.size(), 7U);
  EXPECT_EQ(places[0], QRect(0, 0, 333, 200));
  EXPECT_EQ(places[3], QRect(333, 0, 333, 300));
  EXPECT_EQ(places[6], QRect(666, 300, 334, 300));
}

TEST(TilePlaces, LeavesNoGapAndNoOverlapForAnyNumberOfWindows) {
  for (int windows = 1; windows <= 64; ++windows) {
    ExpectCovers({1279, 701}, TilePlaces({1279, 701}, windows, Qt::Vertical));
    ExpectCovers({1279, 701}, TilePlaces({1279, 701}, windows, Qt::Horizontal));
  }
}

TEST(TilePlaces, OfNoWindowsAreNone) {
  EXPECT_TRUE(TilePlaces({1000, 600}, 0, Qt::Vertical).empty());
}

TEST(TilePlaces, OfARoomNarrowerThanAColumnAreOneStrip) {
  EXPECT_EQ(TilePlaces({200, 100}, 2, Qt::Vertical), (std::vector<QRect>{{0, 0, 200, 50}, {0, 50, 200, 50}}));
}

TEST(TilePlaces, LeaveEachWindowThePlotThatItNeedsBeyondTheBottomOfTheRoomIfNeedBe) {
  // Two columns of 500 for four windows that need 340 each.
  const auto places = TilePlaces({640, 400}, 4, Qt::Vertical, {1, 340});
  ASSERT_EQ(places.size(), 4U);
  EXPECT_EQ(places[0], QRect(0, 0, 320, 340));
  EXPECT_EQ(places[3], QRect(320, 340, 320, 340));
  for (const QRect& place : TilePlaces({640, 1000}, 5, Qt::Horizontal, {1, 340})) EXPECT_GE(place.height(), 340);
  EXPECT_EQ(TilePlaces({640, 200}, 1, Qt::Horizontal, {1, 340})[0], QRect(0, 0, 640, 340));
}

TEST(TilePlaces, LeaveEachOfEightWindowsOnASmallScreenTheWidthAndTheHeightOfAPlot) {
  const QSize least(457, 340);
  for (const auto direction : {Qt::Vertical, Qt::Horizontal}) {
    const auto places = TilePlaces({1016, 640}, 8, direction, least);
    ASSERT_EQ(places.size(), 8U);
    for (const QRect& place : places) {
      EXPECT_GE(place.width(), 457);
      EXPECT_GE(place.height(), 340);
    }
    ExpectCovers({1016, 4 * 340}, places);  // two side by side, four below each other
  }
}

TEST(TilePlaces, StandBelowEachOtherWhereTheRoomIsNarrowerThanAPlot) {
  const auto places = TilePlaces({300, 640}, 3, Qt::Horizontal, {457, 340});
  EXPECT_EQ(places, (std::vector<QRect>{{0, 0, 300, 340}, {0, 340, 300, 340}, {0, 680, 300, 340}}));
}

TEST(CascadePlaces, HaveAUsefulSizeAndShowEveryTitle) {
  const auto places = CascadePlaces({1280, 690}, 5, 28);
  ASSERT_EQ(places.size(), 5U);
  for (std::size_t i = 0; i < places.size(); ++i) {
    EXPECT_EQ(places[i].size(), QSize(960, 517));
    EXPECT_EQ(places[i].topLeft(), QPoint(28 * static_cast<int>(i), 28 * static_cast<int>(i)));
    EXPECT_TRUE(QRect(0, 0, 1280, 690).contains(places[i]));
  }
}

TEST(CascadePlaces, StayInTheRoomHoweverManyThereAre) {
  for (const QSize room : {QSize(1280, 690), QSize(500, 330), QSize(200, 100)})
    for (const QRect& place : CascadePlaces(room, 64, 28)) {
      EXPECT_TRUE(QRect(QPoint(0, 0), room).contains(place));
      EXPECT_GE(place.width(), std::min(room.width(), 480));
    }
  EXPECT_TRUE(CascadePlaces({1280, 690}, 0, 28).empty());
}

TEST(IconPlaces, RunAlongTheBottomAndGoOnAbove) {
  EXPECT_EQ(IconPlaces({500, 400}, 3, {200, 30}),
            (std::vector<QRect>{{0, 370, 200, 30}, {200, 370, 200, 30}, {0, 340, 200, 30}}));
}

TEST(IconPlaces, OfARoomNarrowerThanAnIconStandAboveEachOther) {
  EXPECT_EQ(IconPlaces({100, 400}, 2, {200, 30}), (std::vector<QRect>{{0, 370, 200, 30}, {0, 340, 200, 30}}));
}

}  // namespace
}  // namespace velk
