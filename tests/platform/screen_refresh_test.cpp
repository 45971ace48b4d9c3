#include "platform/windows/screen_refresh.h"

#include <gtest/gtest.h>

#include <QWidget>
#include <memory>
#include <stdexcept>

#include "platform/loop/system_clock.h"
#include "support/fake_clock.h"

namespace velk {
namespace {

struct Refreshing : testing::Test {
  Gate gate;
  test::FakeClock clock{gate};
  ScreenRefresh refresh{clock};
  int firstShown = 0, secondShown = 0;
  ScreenRefresh::Part first{refresh, [this](WindowStrips&) { ++firstShown; }};
  std::unique_ptr<ScreenRefresh::Part> second =
      std::make_unique<ScreenRefresh::Part>(refresh, [this](WindowStrips&) { ++secondShown; });
};

TEST_F(Refreshing, ShowsWhatHasChangedBehindTheEventThatChangedIt) {
  first.Ask();
  second->Ask();
  first.Ask();
  EXPECT_EQ(firstShown + secondShown, 0) << "more may change in the same event";
  clock.Advance(1);
  EXPECT_EQ(firstShown, 1);
  EXPECT_EQ(secondShown, 1);
  clock.Advance(1000);
  EXPECT_EQ(firstShown + secondShown, 2);
}

TEST_F(Refreshing, ShowsAgainThirtyFourMillisecondsLaterAtTheEarliest) {
  first.Ask();
  clock.Advance(1);
  clock.Advance(20);
  second->Ask();
  clock.Advance(5);
  first.Ask();
  clock.Advance(8);
  EXPECT_EQ(firstShown, 1);
  EXPECT_EQ(secondShown, 0);
  clock.Advance(1);
  EXPECT_EQ(firstShown, 2) << "together with the other, though it changed later";
  EXPECT_EQ(secondShown, 1);
  clock.Advance(34);
  first.Ask();
  clock.Advance(1);
  EXPECT_EQ(firstShown, 3) << "by now it needs not wait";
}

TEST_F(Refreshing, ShowsThirtyTimesASecondWhatChangesEachMillisecond) {
  for (int i = 0; i < 3400; ++i) {
    first.Ask();
    clock.Advance(1);
  }
  EXPECT_EQ(firstShown, 100);
}

TEST_F(Refreshing, ShowsAtOnceWhatIsDueAndThenInItsTurn) {
  second->ShowDue();
  EXPECT_EQ(firstShown + secondShown, 0) << "nothing has changed";
  first.Ask();
  second->ShowDue();
  EXPECT_EQ(firstShown, 1) << "of all parts";
  EXPECT_EQ(secondShown, 0);
  first.Ask();
  clock.Advance(33);
  first.ShowDue();
  EXPECT_EQ(firstShown, 1) << "a millisecond too early";
  clock.Advance(1);
  EXPECT_EQ(firstShown, 2) << "by the timer";
  clock.Advance(1000);
  EXPECT_EQ(firstShown, 2);
}

TEST_F(Refreshing, LooksAheadOfWhatIsShownAtOnce) {
  refresh.Ahead([this] { second->Ask(); });
  first.ShowDue();
  EXPECT_EQ(secondShown, 0);
  first.Ask();
  first.ShowDue();
  EXPECT_EQ(secondShown, 1);
  clock.Advance(1000);
  EXPECT_EQ(firstShown + secondShown, 2) << "nothing is shown a second time";
}

TEST_F(Refreshing, ShowsNothingOfWhatHasNotChanged) {
  first.Ask();
  clock.Advance(34);
  EXPECT_EQ(secondShown, 0);
}

TEST_F(Refreshing, ShowsTheNextChangesInTheirTurn) {
  first.Ask();
  clock.Advance(1);
  first.Ask();
  clock.Advance(33);
  EXPECT_EQ(firstShown, 1);
  clock.Advance(1);
  EXPECT_EQ(firstShown, 2);
}

TEST_F(Refreshing, ShowsNothingMoreOfAPartThatIsOnItsWayOut) {
  first.Ask();
  first.Stop();
  first.Ask();
  second->Ask();
  clock.Advance(34);
  EXPECT_EQ(firstShown, 0);
  EXPECT_EQ(secondShown, 1);
}

TEST_F(Refreshing, ShowsAlongWhatChangesJustAhead) {
  int looks = 0;
  refresh.Ahead([this, &looks] {
    ++looks;
    second->Ask();
  });
  clock.Advance(1000);
  EXPECT_EQ(looks, 0) << "nothing is to be shown";
  first.Ask();
  EXPECT_EQ(looks + secondShown, 0);
  clock.Advance(1);
  EXPECT_EQ(secondShown, 1);
  clock.Advance(1000);
  EXPECT_EQ(looks, 1) << "the screen wasn't followed once more for it";
  EXPECT_EQ(secondShown, 1);
}

/// Nothing else of the screen stands still for it.
TEST_F(Refreshing, GoesOnInItsTurnBehindAnError) {
  int looks = 0;
  refresh.Ahead([&looks] {
    if (++looks == 1) throw std::runtime_error("a look");
  });
  first.Ask();
  EXPECT_THROW(clock.Advance(1), std::runtime_error);
  clock.Advance(33);
  EXPECT_EQ(looks, 1) << "not again at once";
  clock.Advance(1);
  EXPECT_EQ(looks, 2);
  EXPECT_EQ(firstShown, 1);
  first.Ask();
  clock.Advance(34);
  EXPECT_EQ(firstShown, 2);
}

TEST_F(Refreshing, ShowsTheOthersInTheirTurnBehindAnErrorOfAPart) {
  const auto other = std::make_unique<ScreenRefresh>(clock);
  int tries = 0, shown = 0;
  ScreenRefresh::Part faulty(*other, [&tries](WindowStrips&) {
    ++tries;
    throw std::runtime_error("a part");
  });
  ScreenRefresh::Part sound(*other, [&shown](WindowStrips&) { ++shown; });
  faulty.Ask();
  sound.Ask();
  EXPECT_THROW(clock.Advance(1), std::runtime_error);
  sound.Ask();
  clock.Advance(34);
  EXPECT_EQ(shown, 1);
  EXPECT_EQ(tries, 1);
  clock.Advance(1000);
  EXPECT_EQ(shown + tries, 2);
}

TEST_F(Refreshing, GoesOnWithoutAPartThatHasEnded) {
  first.Ask();
  second->Ask();
  second.reset();
  clock.Advance(34);
  EXPECT_EQ(firstShown, 1);
  EXPECT_EQ(secondShown, 0);
}

TEST_F(Refreshing, NobodyLooksAheadOfItOnceItHasEnded) {
  auto other = std::make_unique<ScreenRefresh>(clock);
  int looks = 0;
  other->Ahead([&looks] { ++looks; });
  ScreenRefresh::Part part(*other, [this](WindowStrips&) { ++firstShown; });
  part.Ask();
  other.reset();
  clock.Advance(34);
  EXPECT_EQ(looks, 0);
  EXPECT_EQ(firstShown, 1);
}

TEST_F(Refreshing, APartMayOutliveIt) {
  auto other = std::make_unique<ScreenRefresh>(clock);
  ScreenRefresh::Part part(*other, [this](WindowStrips&) { ++firstShown; });
  other.reset();
  part.Ask();
  clock.Advance(34);
  EXPECT_EQ(firstShown, 1);
}

/// Counts how often it is painted.
struct PaintedWindow : QWidget {
  int paints = 0;
  void paintEvent(QPaintEvent*) override { ++paints; }
};

TEST(ShownScreen, IsPaintedByTheYieldBehindIt) {
  Gate gate;
  SystemClock clock(gate);
  const ScreenRefresh refresh(clock);
  PaintedWindow window;
  window.show();
  while (window.paints == 0) clock.WaitRound();
  const auto isQuiet = [&] {
    const int before = window.paints;
    clock.WaitRound();
    return window.paints == before;
  };
  while (!isQuiet()) {
  }
  ScreenRefresh::Part part(refresh, [&](WindowStrips&) { window.update(); });
  const int before = window.paints;
  part.Ask();
  part.ShowDue();
  EXPECT_EQ(window.paints, before);
  clock.Yield();
  EXPECT_EQ(window.paints, before + 1);
}

}  // namespace
}  // namespace velk
