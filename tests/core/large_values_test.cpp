#include "core/large_values.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QPushButton>

#include "base/colour.h"
#include "core/panel/data_words.h"
#include "core/windows/large_values_window.h"
#include "core/windows/value_tiles.h"
#include "model/texts.h"
#include "support/fake_clock.h"
#include "support/host.h"
#include "support/window_driving.h"

namespace velk::test {
namespace {

class LargeValuesTest : public testing::Test {
 protected:
  LargeValuesTest() {
    session.NumberOfParameters = session.TotalParameters = 6;
    for (int i = 1; i <= 6; ++i) {
      Parameter& channel = session.CurrentParameters[i];
      channel.name = "P" + std::to_string(i);
      channel.units = "bar";
      channel.format = "#0.0";
      channel.GraphVisible = i != 2;
      session.CurrentValue[i] = static_cast<float>(i) + 0.25F;
    }
    session.AcquisitionMode = session.Data.hasValues = true;
    session.CurrentStatus = text::StatusAcquiringData;
  }

  Session session;
};

using Channels = std::vector<int>;

TEST_F(LargeValuesTest, AreTheFirstFourShownChannelsWhereNoneWasChosen) {
  EXPECT_EQ(LargeChannels(session), (Channels{1, 3, 4, 5}));
  session.TotalParameters = 0;
  EXPECT_TRUE(LargeChannels(session).empty());
}

TEST_F(LargeValuesTest, AreThoseThatWereChosenAsFarAsTheyAreThere) {
  session.LargeValues = "6 3 2 77 -1";
  EXPECT_EQ(LargeChannels(session), (Channels{6, 3})) << "2 is not shown";
  EXPECT_EQ(LargeChannelsText({6, 3}), "6 3");
  session.LargeValues = "77 x 1";
  EXPECT_EQ(LargeChannels(session), (Channels{1, 3, 4, 5}));
}

TEST_F(LargeValuesTest, KeepTheChoiceOfALongerJobWhenOneIsTickedInAShorterOne) {
  session.LargeValues = "3 14";
  session.LargeValues = LargeChannelsWith(session, 5, true);
  EXPECT_EQ(session.LargeValues, "3 5 14");
  EXPECT_EQ(LargeChannels(session), (Channels{3, 5}));
}

TEST_F(LargeValuesTest, AreNoneOnceTheLastTickWasTakenOff) {
  session.LargeValues = "3 14";
  session.LargeValues = LargeChannelsWith(session, 3, false);
  EXPECT_TRUE(LargeChannels(session).empty());
  session.TotalParameters = 14;
  session.CurrentParameters[14].GraphVisible = true;
  EXPECT_EQ(LargeChannels(session), Channels{14});
  session.LargeValues = LargeChannelsWith(session, 6, true);
  EXPECT_EQ(session.LargeValues, "6 14");
}

class LargeValuesWindow : public LargeValuesTest {
 protected:
  LargeValuesWindow() {
    session.Data.lastLine = session.Data.lastSample = clock.Ticks();
    window.show();
    QApplication::processEvents();
  }
  const std::vector<ValueTiles::Tile>& Tiles() { return FindControl<ValueTiles>(window, "Tiles")->Tiles(); }
  QList<QAction*> Entries() {
    QMenu* menu = FindControl<QPushButton>(window, "cmdChannels")->menu();
    emit menu->aboutToShow();
    return menu->actions();
  }

  Host host;
  Gate gate;
  FakeClock clock{gate};
  int kept = 0;
  frmLargeValues window{host, {session, clock, [this] { ++kept; }}};
};

TEST_F(LargeValuesWindow, FollowsTheValuesFourTimesASecond) {
  ASSERT_EQ(Tiles().size(), 4u);
  EXPECT_EQ(Tiles()[1].name, "P3");
  EXPECT_EQ(Tiles()[1].value, "3.3");
  EXPECT_EQ(Tiles()[1].units, "bar");
  session.CurrentValue[3] = 99;
  clock.Advance(200);
  EXPECT_EQ(Tiles()[1].value, "3.3");
  clock.Advance(100);
  EXPECT_EQ(Tiles()[1].value, "99.0");
}

TEST_F(LargeValuesWindow, ShowsNoValueOfAnEarlierJob) {
  session.Data.hasValues = false;
  clock.Advance(300);
  EXPECT_EQ(Tiles()[0].value, "\u2013");
  session.Data.hasValues = true;
  clock.Advance(300);
  EXPECT_EQ(Tiles()[0].value, "1.3");
}

TEST_F(LargeValuesWindow, GreysValuesThatAreNoPresentOnes) {
  session.Data.samples = 1;
  session.Data.lastLine = session.Data.lastSample = clock.Ticks();
  clock.Advance(300);
  EXPECT_FALSE(Tiles()[0].stale);
  clock.Advance(static_cast<int>(SilenceMs(session)));
  EXPECT_TRUE(Tiles()[0].stale) << "nothing comes";
  session.Data.lastLine = session.Data.lastSample = clock.Ticks();
  session.Data.pausedSince = clock.Now();
  clock.Advance(300);
  EXPECT_TRUE(Tiles()[0].stale) << "paused";
}

TEST_F(LargeValuesWindow, GreysTheValuesOfAJobThatHasEnded) {
  clock.Advance(300);
  EXPECT_FALSE(Tiles()[0].stale);
  session.CurrentStatus = text::StatusReady;
  clock.Advance(300);
  EXPECT_TRUE(Tiles()[0].stale);
  EXPECT_EQ(Tiles()[0].value, "1.3");
}

TEST_F(LargeValuesWindow, ShowsTheValuesOfAPlaybackAsTheyAreFromItsFirstRowOn) {
  session.AcquisitionMode = session.Data.hasValues = false;
  session.CurrentStatus = text::StatusReadyToPlayback;
  clock.Advance(300);
  EXPECT_EQ(Tiles()[0].value, "\u2013") << "no row was played yet";
  session.Data.hasValues = true;
  for (const MessageText& status : {text::StatusPlayingBack, text::StatusPlayingBackPaused}) {
    session.CurrentStatus = status;
    clock.Advance(300);
    EXPECT_EQ(Tiles()[0].value, "1.3") << status.english;
    EXPECT_FALSE(Tiles()[0].stale) << status.english;
  }
}

TEST_F(LargeValuesWindow, HasDarkPaperByNightWithTheColoursOfTheCharts) {
  session.CurrentParameters[1].color = Rgb(0x00, 0x57, 0xB8);
  const auto has = [this](const QColor& colour) {
    const QImage picture = FindControl<ValueTiles>(window, "Tiles")->grab().toImage();
    for (int y = 0; y < picture.height() / 2; ++y)
      for (int x = 0; x < picture.width() / 2; ++x)
        if (picture.pixelColor(x, y) == colour) return true;
    return false;
  };
  clock.Advance(300);
  EXPECT_TRUE(has(QColor(0x00, 0x57, 0xB8)));
  session.NightColours = true;
  clock.Advance(300);
  EXPECT_TRUE(has(QColor(0x5A, 0xA9, 0xFF))) << "its partner by night";
  EXPECT_TRUE(has(QColor(0x14, 0x18, 0x1D)));
  EXPECT_FALSE(has(QColor(Qt::white)));
}

TEST_F(LargeValuesWindow, MarksAlarmsByTheirSide) {
  session.CurrentParameters[1].upperalarm = "1";
  session.CurrentParameters[3].loweralarm = "5";
  session.AlarmTriggered[1] = session.AlarmTriggered[3] = true;
  clock.Advance(300);
  EXPECT_EQ(Tiles()[0].side, AlarmSide::High);
  EXPECT_EQ(Tiles()[1].side, AlarmSide::Low);
  EXPECT_EQ(Tiles()[2].side, AlarmSide::None);
}

TEST_F(LargeValuesWindow, OffersTheShownChannelsAndKeepsTheChoice) {
  ASSERT_EQ(Entries().size(), 5);
  EXPECT_FALSE(Entries()[4]->isChecked());
  Entries()[4]->setChecked(true);
  EXPECT_EQ(session.LargeValues, "1 3 4 5 6");
  Entries()[0]->setChecked(false);
  EXPECT_EQ(session.LargeValues, "3 4 5 6");
  EXPECT_EQ(Tiles().size(), 4u);
  EXPECT_EQ(kept, 2);
}

TEST_F(LargeValuesWindow, SaysHowToChooseWhereNothingIsTicked) {
  for (int entry = 0; entry < 4; ++entry) Entries()[entry]->setChecked(false);
  EXPECT_TRUE(Tiles().empty());
  EXPECT_TRUE(FindControl<QPushButton>(window, "cmdChannels")->isEnabled());
  EXPECT_EQ(FindControl<ValueTiles>(window, "Tiles")->Hint(),
            "No channel is chosen. Tick those to be shown under Channels.");
  Entries()[4]->setChecked(true);
  EXPECT_EQ(Tiles().size(), 1u);
  EXPECT_EQ(Tiles()[0].name, "P6");
}

TEST_F(LargeValuesWindow, HasDigitsThatAreReadAcrossTheCabin) {
  ShowWindow(window, "large-values");
  const QImage picture = FindControl<ValueTiles>(window, "Tiles")->grab().toImage();
  // The tallest run of ink in the lower part of the first tile: 20 mm are 75 dots.
  const QRect tile(16, picture.height() / 8, picture.width() / 2 - 32, picture.height() * 3 / 8 - 12);
  int first = -1, last = -1;
  for (int y = tile.top(); y <= tile.bottom(); ++y)
    for (int x = tile.left(); x <= tile.right(); ++x)
      if (qGray(picture.pixel(x, y)) < 100) first = first < 0 ? y : first, last = y;
  EXPECT_GE(last - first, 60);
}

TEST_F(LargeValuesWindow, RestsWhileItIsClosedAndSaysWhatToDoWithoutAJob) {
  window.close();
  session.CurrentValue[3] = 42;
  clock.Advance(1000);
  EXPECT_EQ(Tiles()[1].value, "3.3");
  session.TotalParameters = 0;
  window.show();
  EXPECT_TRUE(Tiles().empty());
  EXPECT_FALSE(FindControl<QPushButton>(window, "cmdChannels")->isEnabled());
}

}  // namespace
}  // namespace velk::test
