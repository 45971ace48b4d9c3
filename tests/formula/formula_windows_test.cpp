#include "formula/windows/formula_commands.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLineEdit>
#include <QScrollArea>
#include <QTableWidget>
#include <QTest>
#include <QTimer>

#include "formula/computed_session.h"
#include "formula/windows/computed_parameters.h"
#include "formula/windows/frm_inc_params.h"
#include "platform/settings/settings.h"
#include "platform/windows/qt_dialogs.h"
#include "support/fake_clock.h"
#include "support/host.h"
#include "support/memory_folder.h"
#include "support/window_driving.h"

namespace velk {
namespace {

using test::Click;
using test::FindControl;
using test::ShowWindow;

std::vector<ComputedChannel> Channels(int count) {
  std::vector<ComputedChannel> channels;
  for (int i = 1; i <= count; ++i) channels.push_back({"Дополнительный параметр " + std::to_string(i), i % 2 == 1});
  return channels;
}

QCheckBox& Box(const QWidget& window, int i) {
  return *FindControl<QCheckBox>(window, ("Check1_" + std::to_string(i)).c_str());
}

void Nothing() {
}

TEST(ComputedParametersWindow, HasACheckBoxForEachChannel) {
  ComputedParameters window(test::EnglishHost(), {{"Hook load & torque", true}, {"Differential pressure", false}},
                            Nothing);
  ShowWindow(window, "ComputedParameters");
  EXPECT_EQ(window.objectName(), "ComputedParameters");
  EXPECT_EQ(Box(window, 1).text(), "Hook load && torque");
  EXPECT_TRUE(Box(window, 1).isChecked());
  EXPECT_FALSE(Box(window, 2).isChecked());
  EXPECT_EQ(window.findChildren<QCheckBox*>().size(), 2);
  EXPECT_EQ(FindControl<QPushButton>(window, "cmdClose")->text(), "&Close");
}

TEST(ComputedParametersWindow, SetsTheBoxesAHundredTwipsApart) {
  ComputedParameters window(test::EnglishHost(), Channels(5), Nothing);
  ShowWindow(window, "ComputedParameters-russian");
  for (int i = 2; i <= 5; ++i) {
    const QCheckBox& above = Box(window, i - 1);
    EXPECT_NEAR(Box(window, i).y() - above.y() - above.height(), 100 / 15.0, 0.5) << i;
  }
}

TEST(ComputedParametersWindow, GivesWhatItsBoxesSayHoweverItIsClosed) {
  ComputedParameters window(test::EnglishHost(), Channels(3), Nothing);
  ShowWindow(window, "closed");
  Box(window, 1).click();
  Box(window, 2).click();
  window.close();
  const auto channels = window.Answer();
  ASSERT_EQ(channels.size(), 3U);
  EXPECT_FALSE(channels[0].included);
  EXPECT_TRUE(channels[1].included);
  EXPECT_TRUE(channels[2].included);
}

TEST(ComputedParametersWindow, BringsEveryOfSixtyThreeBoxesIntoViewByKeyboard) {
  ComputedParameters window(test::EnglishHost(), Channels(63), Nothing);
  ShowWindow(window, "ComputedParameters-63");
  const auto* area = FindControl<QScrollArea>(window, "scrollArea");
  for (int i = 1; i <= 63; ++i) {
    QCheckBox& box = Box(window, i);
    EXPECT_TRUE(box.hasFocus()) << i;
    const QRect seen(box.mapTo(area->viewport(), QPoint(0, 0)), box.size());
    EXPECT_TRUE(area->viewport()->rect().contains(seen)) << i;
    QTest::keyClick(&box, Qt::Key_Tab);
  }
  EXPECT_TRUE(FindControl<QPushButton>(window, "cmdParameters")->hasFocus());
}

class ParameterList : public testing::Test, protected test::ComputedSession {
 protected:
  std::string Cell(const QTableWidget& grid, int row, int column) {
    return grid.item(row, column)->text().toStdString();
  }
};

TEST_F(ParameterList, HasARowForEachParameterButBlank) {
  Add("{depth}*2", "One");
  Add("avg({depth})", "Two");
  state.CurrentParameters[5].GraphVisible = false;
  frmIncParams window(test::EnglishHost(), state);
  ShowWindow(window, "frmIncParams");
  EXPECT_EQ(window.objectName(), "frmIncParams");
  const auto& grid = *FindControl<QTableWidget>(window, "Grid1");
  ASSERT_EQ(grid.rowCount(), 4);
  EXPECT_EQ(grid.horizontalHeaderItem(0)->text(), "Parameter");
  EXPECT_EQ(grid.horizontalHeaderItem(1)->text(), "Units");
  EXPECT_EQ(grid.horizontalHeaderItem(2)->text(), "Graph");
  EXPECT_EQ(grid.horizontalHeaderItem(3)->text(), "Formula");
  EXPECT_TRUE(grid.showGrid());
  EXPECT_EQ(Cell(grid, 0, 0), "Depth");
  EXPECT_EQ(Cell(grid, 0, 1), "m");
  EXPECT_EQ(Cell(grid, 0, 2), "1");
  EXPECT_EQ(Cell(grid, 0, 3), "");
  EXPECT_EQ(Cell(grid, 1, 0), "Pump Rate");
  EXPECT_EQ(Cell(grid, 2, 3), "{depth}*2");
  EXPECT_EQ(Cell(grid, 2, 2), "4");
  EXPECT_EQ(Cell(grid, 3, 2), "");
  EXPECT_EQ(grid.editTriggers(), QAbstractItemView::NoEditTriggers);
}

TEST_F(ParameterList, IsFilledAnewWheneverItIsActivated) {
  frmIncParams window(test::EnglishHost(), state);
  ShowWindow(window, "activated");
  Add("1", "One");
  QEvent activation(QEvent::WindowActivate);
  QApplication::sendEvent(&window, &activation);
  EXPECT_EQ(FindControl<QTableWidget>(window, "Grid1")->rowCount(), 3);
}

TEST_F(ParameterList, FollowsTheSizeOfTheWindow) {
  state.CurrentParameters[1].name = "Давление на входе насоса";
  Add("({давление на входе насоса}-{pump rate})*2.5", "Разность");
  frmIncParams window(test::EnglishHost(), state);
  ShowWindow(window, "frmIncParams-russian");
  const auto& grid = *FindControl<QTableWidget>(window, "Grid1");
  const QSize before = grid.size();
  window.resize(window.size() + QSize(200, 100));
  QApplication::processEvents();
  EXPECT_EQ(grid.size(), before + QSize(200, 100));
}

TEST_F(ParameterList, ClosesByItsButton) {
  frmIncParams window(test::EnglishHost(), state);
  ShowWindow(window, "closing");
  Click(window, "cmdClose");
  EXPECT_FALSE(window.isVisible());
}

class WindowsOfComputedChannels : public testing::Test, protected test::ComputedSession {
 protected:
  WindowsOfComputedChannels() {
    host.SetParent(&parent);
    Add("{depth}*2", "One");
    Add("{depth}*3", "Two");
  }

  /// Acts on the window once it stands.
  template <class Window>
  void WhenShown(std::function<void(Window&)> act) {
    QTimer::singleShot(0, &parent, [this, act] {
      auto* window = parent.findChild<Window*>();
      ASSERT_NE(window, nullptr);
      gateStoodOpen = gate.IsOpen();
      EXPECT_TRUE(window->isModal());
      act(*window);
    });
  }

  QWidget parent;
  test::FakeClock clock{gate};
  test::MemoryFolder settingsFolder;
  SettingsStore settings{settingsFolder.Path()};
  Platform platform{clock, gate, dialogs, settings, test::English()};
  WindowHost host{dialogs, test::EnglishWindows()};
  FormulaCommands windows{host, state, platform, view, graphs};
  bool gateStoodOpen = false;
};

TEST_F(WindowsOfComputedChannels, LetSamplesGoOnBehindTheCalculator) {
  const GateState shut(gate, GateState::Shut);
  WhenShown<EqEditor>([](EqEditor& window) { Click(window, "cmdClose"); });
  windows.mnuToolsDefine_Click();
  EXPECT_TRUE(gateStoodOpen);
  EXPECT_EQ(parent.findChild<EqEditor*>(), nullptr);
}

TEST_F(WindowsOfComputedChannels, BeepAtAWrongFormula) {
  dialogs.Expect("is not valid string", Answer::Ok);
  WhenShown<EqEditor>([](EqEditor& window) {
    FindControl<QLineEdit>(window, "Text1")->setText("foo");
    Click(window, "Equals");
    Click(window, "cmdClose");
  });
  windows.mnuToolsDefine_Click();
  EXPECT_EQ(view.beeps, 1);
}

TEST_F(WindowsOfComputedChannels, AreIncludedBehindAFileAsLongAsThereIsRoomForAll) {
  state.NumberOfParameters = state.TotalParameters = state.PlaybackParameterCount = 63;
  dialogs.Expect("There is room for 64 parameters in all", Answer::Ok);
  QTimer::singleShot(0, &parent, [this] {
    for (QDialog* window : parent.findChildren<QDialog*>()) window->reject();
  });
  windows.mnuToolsInclude_Click();
  QApplication::processEvents();
  EXPECT_EQ(state.TotalParameters, 63);

  state.NumberOfParameters = state.TotalParameters = state.PlaybackParameterCount = 62;
  WhenShown<ComputedParameters>([](ComputedParameters& window) { Click(window, "cmdClose"); });
  windows.mnuToolsInclude_Click();
  EXPECT_EQ(state.TotalParameters, 64);
  EXPECT_EQ(state.CurrentParameters[64].name, "Two");
}

TEST_F(WindowsOfComputedChannels, SwitchAChannelOffWhenTheBoxesAreClosed) {
  WhenShown<ComputedParameters>([](ComputedParameters& window) {
    Box(window, 1).click();
    Click(window, "cmdClose");
  });
  windows.mnuToolsInclude_Click();
  EXPECT_FALSE(state.CurrentParameters[4].GraphVisible);
  EXPECT_FALSE(state.AdditionalParameters[1].GraphVisible);
  EXPECT_EQ(graphs.created, 1);
  EXPECT_EQ(state.GraphSlots[1][4], 0);
  EXPECT_EQ(state.GraphSlots[1][5], 5);
}

TEST_F(WindowsOfComputedChannels, SwitchAChannelOnWhenTheBoxesAreClosedByTheFrame) {
  state.CurrentParameters[4].GraphVisible = state.AdditionalParameters[1].GraphVisible = false;
  WhenShown<ComputedParameters>([](ComputedParameters& window) {
    EXPECT_FALSE(Box(window, 1).isChecked());
    Box(window, 1).click();
    window.close();
  });
  windows.mnuToolsInclude_Click();
  EXPECT_TRUE(state.AdditionalParameters[1].GraphVisible);
  EXPECT_EQ(state.GraphSlots[1][4], 4);
}

TEST_F(WindowsOfComputedChannels, ShowTheListOfParametersOverTheBoxes) {
  bool listed = false;
  WhenShown<ComputedParameters>([&](ComputedParameters& window) {
    QTimer::singleShot(0, &window, [&] {
      auto* list = window.findChild<frmIncParams*>();
      ASSERT_NE(list, nullptr);
      listed = list->isVisible() && FindControl<QTableWidget>(*list, "Grid1")->rowCount() == 4;
      Click(*list, "cmdClose");
    });
    Click(window, "cmdParameters");
    EXPECT_EQ(window.findChild<frmIncParams*>(), nullptr);
    EXPECT_TRUE(window.isVisible());
    Click(window, "cmdClose");
  });
  windows.mnuToolsInclude_Click();
  EXPECT_TRUE(listed);
}

TEST_F(WindowsOfComputedChannels, ChangeNothingAtTheEndOfTheProgram) {
  QtDialogs boxes{gate, test::English()};
  WindowHost shownHost{boxes, test::EnglishWindows()};
  shownHost.SetParent(&parent);
  FormulaCommands shown{shownHost, state, Platform{clock, gate, boxes, settings, test::English()}, view, graphs};
  WhenShown<ComputedParameters>([&](ComputedParameters& window) {
    Box(window, 1).click();
    state.ProgramEnding = true;
    boxes.SetEnding();
  });
  shown.mnuToolsInclude_Click();
  EXPECT_TRUE(state.CurrentParameters[4].GraphVisible);
  EXPECT_EQ(graphs.created, 0);
}

}  // namespace
}  // namespace velk
