#include "core/windows/alarms_window.h"

#include <gtest/gtest.h>

#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QTimer>

#include "core/alarms.h"
#include "support/host.h"
#include "support/recording_view.h"
#include "support/scripted_dialogs.h"
#include "support/window_driving.h"

namespace velk {
namespace {

using test::Click;
using test::FindControl;
using test::ShowWindow;

class AlarmsWindow : public testing::Test {
 protected:
  /// So many parameters, the named ones out of their limits.
  void Give(int total, std::initializer_list<std::pair<int, const char*>> alarmed) {
    session_.TotalParameters = static_cast<std::int16_t>(total);
    for (const auto& [i, name] : alarmed) {
      session_.CurrentParameters[i].name = name;
      session_.AlarmTriggered[i] = true;
    }
  }

  static QLabel& Label(const QWidget& window, int n) {
    return *FindControl<QLabel>(window, ("Label1_" + std::to_string(n)).c_str());
  }

  static std::vector<std::string> Names(const QWidget& window) {
    std::vector<std::string> names;
    const auto labels = window.findChildren<QLabel*>();
    for (int n = 0; n < labels.size(); ++n) names.push_back(Label(window, n).text().toStdString());
    return names;
  }

  Session session_;
};

TEST_F(AlarmsWindow, NamesTheParametersThatAreOutOfTheirLimits) {
  Give(6, {{1, "Pump pressure"}, {4, "Hook load & torque"}, {6, "Additional Parameter 1"}});
  Alarms window(test::EnglishHost(), session_);
  ShowWindow(window, "Alarms");
  EXPECT_EQ(window.objectName(), "Alarms");
  EXPECT_EQ(window.windowTitle(), "Alarms");
  EXPECT_EQ(FindControl<QPushButton>(window, "cmdClose")->text(), "Close");
  EXPECT_EQ(Names(window), (std::vector<std::string>{"Pump pressure", "Hook load & torque", "Additional Parameter 1"}));
}

TEST_F(AlarmsWindow, SaysByTheMarksOfTheChartsWhichSideOfTheLimitsAValueIs) {
  Give(2, {{1, "Pump pressure"}, {2, "Rate"}});
  session_.CurrentParameters[1].upperalarm = "100";
  session_.CurrentValue[1] = 101;
  session_.CurrentParameters[2].loweralarm = "5";
  session_.CurrentValue[2] = 4;
  Alarms window(test::EnglishHost(), session_);
  EXPECT_EQ(Names(window), (std::vector<std::string>{"\u25B2 Pump pressure", "\u25BC Rate"}));
}

TEST_F(AlarmsWindow, LeavesOutWhatLiesBehindTheLastParameter) {
  Give(2, {{2, "In"}, {3, "Out"}});
  Alarms window(test::EnglishHost(), session_);
  EXPECT_EQ(Names(window), (std::vector<std::string>{"In"}));
}

TEST_F(AlarmsWindow, SetsTheLabelsFortyFiveTwipsApart) {
  Give(4, {{1, "Давление на входе насоса"}, {2, "Температура"}, {3, "Расход"}, {4, "Уровень в ёмкости"}});
  Alarms window(test::EnglishHost(), session_);
  ShowWindow(window, "Alarms-russian");
  for (int n = 1; n < 4; ++n) EXPECT_EQ(Label(window, n).y(), Label(window, n - 1).geometry().bottom() + 1 + 3) << n;
}

TEST_F(AlarmsWindow, EndsAThousandTwipsBelowTheLastLabelWithTheButtonInBetween) {
  Give(3, {{1, "One"}, {2, "Two"}, {3, "Three"}});
  Alarms window(test::EnglishHost(), session_);
  ShowWindow(window, "three");
  const QLabel& last = Label(window, 2);
  const int below = last.mapTo(&window, QPoint(0, 0)).y() + last.height();
  EXPECT_NEAR(window.height() - below, 1000 / 15.0, 0.5);
  const QRect button = FindControl<QPushButton>(window, "cmdClose")->geometry();
  EXPECT_GE(button.top(), below);
  EXPECT_LT(button.bottom(), window.height());
}

TEST_F(AlarmsWindow, ShowsAnEmptyLabelWhereNoAlarmStandsAnyMore) {
  Give(3, {});
  Alarms window(test::EnglishHost(), session_);
  ShowWindow(window, "Alarms-none");
  EXPECT_EQ(Names(window), (std::vector<std::string>{""}));
}

TEST_F(AlarmsWindow, ScrollsWhereTheScreenHasNoRoom) {
  session_.TotalParameters = 64;
  for (int i = 1; i <= 64; ++i) {
    session_.CurrentParameters[i].name = "Давление на входе насоса № " + std::to_string(i);
    session_.AlarmTriggered[i] = true;
  }
  Alarms window(test::EnglishHost(), session_);
  ShowWindow(window, "Alarms-64");
  EXPECT_LE(window.height(), window.screen()->availableSize().height());
  auto* area = FindControl<QScrollArea>(window, "scrollArea");
  area->ensureWidgetVisible(&Label(window, 63));
  const QLabel& last = Label(window, 63);
  const QRect seen(last.mapTo(area->viewport(), QPoint(0, 0)), last.size());
  EXPECT_TRUE(area->viewport()->rect().contains(seen));
  EXPECT_TRUE(FindControl<QPushButton>(window, "cmdClose")->isVisible());
}

TEST_F(AlarmsWindow, ShowsANameAsPlainText) {
  Give(1, {{1, "<b>Rate</b>"}});
  const Alarms window(test::EnglishHost(), session_);
  EXPECT_EQ(Label(window, 0).textFormat(), Qt::PlainText);
}

TEST_F(AlarmsWindow, StaysAsItIsWhileSamplesGoOnBehindIt) {
  Give(2, {{1, "One"}});
  session_.NumberOfParameters = 2;
  session_.CurrentParameters[2].name = "Two";
  session_.CurrentParameters[2].upperalarm = "10";
  session_.CurrentValue[2] = 11;
  Gate gate;
  test::ScriptedDialogs dialogs{gate};
  WindowHost host(dialogs, test::EnglishWindows());
  test::RecordingView view;
  QWidget parent;
  const GateState shut(gate, GateState::Shut);
  bool looked = false;
  QTimer::singleShot(0, &parent, [&] {
    auto* window = parent.findChild<Alarms*>();
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->isModal());
    EXPECT_TRUE(gate.IsOpen());
    TestAlarms(session_, view, 2);
    QApplication::processEvents();
    EXPECT_EQ(Names(*window), (std::vector<std::string>{"One"}));
    looked = true;
    Click(*window, "cmdClose");
  });
  host.SetParent(&parent);
  host.Show<Alarms>(session_);
  EXPECT_TRUE(looked);
  EXPECT_TRUE(session_.AlarmTriggered[2]);
  EXPECT_EQ(parent.findChild<Alarms*>(), nullptr);
}

}  // namespace
}  // namespace velk
