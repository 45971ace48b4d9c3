// The table of parameters in the whole program.

#include <gtest/gtest.h>

#include <QTableView>

#include "model/graph_window.h"
#include "model/status.h"
#include "model/texts.h"
#include "settings/windows/parameters_table.h"
#include "shell/shell_rig.h"

namespace velk {
namespace {

class TableOfTheProgram : public testing::Test {
 protected:
  void SetUp() override {
    rig.Start();
    rig.Connect();
  }

  /// Opens the table and works in it; it is closed behind that.
  void InTable(std::function<void(ParametersTable& table)> act) {
    rig.windows.Then("ParametersTable", [act = std::move(act)](QDialog& window) {
      act(dynamic_cast<ParametersTable&>(window));
      window.close();
    });
    rig.Choose("mnuEditTable");
  }
  /// What an operator types into a cell.
  static void Type(ParametersTable& table, int row, TableColumn column, const char* text) {
    auto* grid = test::FindControl<QTableView>(table, "Grid1");
    grid->model()->setData(grid->model()->index(row, table.Answer().PlaceOf(column)), text, Qt::EditRole);
  }
  void TypeAndClose(int row, TableColumn column, const char* text) {
    InTable([=](ParametersTable& table) { Type(table, row, column, text); });
  }
  std::string OnDisk(const char* section, const char* key) {
    SettingsStore store(rig.folder.File("settings"));
    return store.Get("VELK2", section, key, "missing");
  }

  test::ShellRig rig;
};

TEST_F(TableOfTheProgram, IsOfferedWhereNothingRuns) {
  EXPECT_TRUE(rig.Window().MenuItem("mnuEditTable")->isEnabled());
  rig.Press("Pause");
  EXPECT_FALSE(rig.Window().MenuItem("mnuEditTable")->isEnabled());
}

TEST_F(TableOfTheProgram, ReachesTheConfigurationAndTheDisk) {
  InTable([](ParametersTable& table) {
    Type(table, 0, TableColumn::Name, "Pump");
    Type(table, 0, TableColumn::Gain, "2,5");
    Type(table, 1, TableColumn::UpperAlarm, "80");
  });
  EXPECT_EQ(rig.State().Parameters[1].name, "Pump");
  EXPECT_EQ(rig.State().CurrentParameters[1].Gain, 2.5);
  EXPECT_EQ(OnDisk("Parameter1", "name"), "Pump");
  EXPECT_EQ(OnDisk("Parameter1", "Gain"), "2.5");
  EXPECT_EQ(OnDisk("Parameter2", "upperalarm"), "80");
}

TEST_F(TableOfTheProgram, ScalesTheNextSampleByTheNewGain) {
  TypeAndClose(0, TableColumn::Gain, "2");
  rig.Press("Pause");
  rig.Frame(30, 20, 90);  // may have been under way when the link came back
  rig.Frame(40, 20, 90);
  EXPECT_EQ(rig.State().CurrentValue[1], 80);
}

TEST_F(TableOfTheProgram, MovesCurvesToOtherGraphs) {
  EXPECT_EQ(rig.State().GraphCount, 3);
  InTable([](ParametersTable& table) {
    Type(table, 1, TableColumn::Graph, "1");
    Type(table, 2, TableColumn::Graph, "9");
  });
  EXPECT_EQ(rig.State().GraphCount, 2);
  EXPECT_EQ(rig.State().GraphCurveCount[1], 2);
  EXPECT_NE(rig.State().GraphForms[9], nullptr);
  EXPECT_EQ(rig.State().GraphForms[2], nullptr);
  TypeAndClose(2, TableColumn::Graph, "0");
  EXPECT_EQ(rig.State().GraphForms[9], nullptr) << "hidden";
}

TEST_F(TableOfTheProgram, LeavesTheWindowsWhereTheyAreWhereNoCurveHasMoved) {
  const GraphWindow* before = rig.State().GraphForms[1];
  TypeAndClose(0, TableColumn::Name, "Pump");
  EXPECT_EQ(rig.State().GraphForms[1], before);
  EXPECT_EQ(dynamic_cast<const QWidget*>(before)->windowTitle(), "Pump");
}

TEST_F(TableOfTheProgram, LeavesTheOtherWindowsWhereACurveMovesBetweenTwo) {
  const auto placeOf = [this](int graph) {
    return dynamic_cast<const QWidget*>(rig.State().GraphForms[graph])->parentWidget()->geometry();
  };
  const GraphWindow* other = rig.State().GraphForms[3];
  const QRect place(40, 30, 500, 300);
  dynamic_cast<QWidget*>(rig.State().GraphForms[1])->parentWidget()->setGeometry(place);
  TypeAndClose(1, TableColumn::Graph, "1");
  EXPECT_EQ(rig.State().GraphForms[3], other);
  EXPECT_EQ(rig.State().GraphForms[2], nullptr) << "without curves";
  ASSERT_NE(rig.State().GraphForms[1], nullptr);
  EXPECT_EQ(rig.State().GraphCurveCount[1], 2);
  EXPECT_EQ(placeOf(1), place);
  rig.Press("Pause");
  rig.Frame(30, 20, 90);  // may have been under way when the link came back
  rig.Frame(40, 25, 90);
  EXPECT_EQ(rig.State().CurrentValue[2], 25);
}

TEST_F(TableOfTheProgram, BringsBackAWindowThatWasClosed) {
  dynamic_cast<QWidget*>(rig.State().GraphForms[2])->parentWidget()->close();
  ASSERT_EQ(rig.State().GraphForms[2], nullptr);
  TypeAndClose(0, TableColumn::Name, "Pump");
  EXPECT_NE(rig.State().GraphForms[2], nullptr);
}

TEST_F(TableOfTheProgram, HidesAChannelWithoutAName) {
  TypeAndClose(1, TableColumn::Name, "");
  EXPECT_EQ(rig.State().Parameters[2].name, "BLANK");
  EXPECT_EQ(rig.State().GraphForms[2], nullptr);
  TypeAndClose(1, TableColumn::Name, "Flow");
  EXPECT_NE(rig.State().GraphForms[2], nullptr);
}

TEST_F(TableOfTheProgram, KeepsTheLinkStillWhileItStands) {
  InTable([this](ParametersTable&) { EXPECT_FALSE(rig.linePort.open); });
  EXPECT_TRUE(rig.linePort.open);
  EXPECT_TRUE(StatusIs(rig.State(), text::StatusReadyToAcquire));
}

struct Networked {
  const char* protocol;
  const char* page;  ///< of three values
};

/// Of the recorder, whose page Timer4 fetches, and of the operator panel's page, Timer5.
class TableOfANetworkedUnit : public testing::TestWithParam<Networked> {};

TEST_P(TableOfANetworkedUnit, RestsItsFetching) {
  test::ShellRig rig;
  rig.settings->Save("VELK2", "Protocol", "SerialData", GetParam().protocol);
  rig.settings->Flush();
  rig.Start();
  rig.pages->page = GetParam().page;
  rig.Press("Acquire");
  ASSERT_TRUE(StatusIs(rig.State(), text::StatusReadyToAcquire));
  rig.clock.Advance(1100);
  std::size_t asked = rig.pages->asked.size();
  EXPECT_GE(asked, 2U);
  rig.windows.Then("ParametersTable", [&](QDialog& window) {
    asked = rig.pages->asked.size();
    rig.clock.Advance(5000);
    EXPECT_EQ(rig.pages->asked.size(), asked);
    window.close();
  });
  rig.Choose("mnuEditTable");
  rig.clock.Advance(1100);
  EXPECT_EQ(rig.pages->asked.size(), asked + 2) << "each 500 ms";
}

INSTANTIATE_TEST_SUITE_P(
    , TableOfANetworkedUnit,
    testing::Values(Networked{"HPT - Honeywell eZtrend",
                              "<p>Time&nbsp;09:30:15</p><tr><td>1<td>p<td>u<td><b> 12.5 </b><tr><td>2<td>q<td>u<td>-3"
                              "</td><tr><td>3<td>r<td>u<td>0.25</td>"},
                    Networked{
                        "ORBEN LUMO through HMI",
                        "<html><table><tr><td>name</td><td>value</td></tr>"
                        "<tr><td><b>a</b></td><td align=right><font>1.5&nbsp;psi</font></td></tr>"
                        "<tr><td><b>b</b></td><td align=right><font>2.5&nbsp;psi</font></td></tr>"
                        "<tr><td><b>c</b></td><td align=right><font>3.5&nbsp;psi</font></td></tr></table></html>"}),
    [](const auto& unit) { return std::string(unit.param.protocol).substr(0, 3); });

TEST_F(TableOfTheProgram, RaisesTheMaximumOfAnUnnamedChannelAndSaysSo) {
  rig.State().CurrentParameters[2].name = "BLANK";
  rig.State().CurrentParameters[2].min = 0;
  rig.dialogs.Expect("Graph maximum scales must be greater than minimum scales", Answer::Ok, [this] {
    EXPECT_EQ(OnDisk("Parameter2", "max"), "100") << "the box may stand for hours";
    EXPECT_EQ(OnDisk("Parameter1", "units"), "bar");
  });
  InTable([](ParametersTable& table) {
    Type(table, 0, TableColumn::Units, "bar");
    Type(table, 1, TableColumn::Minimum, "-100");
    Type(table, 1, TableColumn::Maximum, "-50");
  });
  EXPECT_EQ(rig.State().Parameters[2].min, 0) << "that of a channel without a name isn't taken";
  EXPECT_EQ(rig.State().Parameters[2].max, 100);
}

TEST_F(TableOfTheProgram, OutlivesARestart) {
  TypeAndClose(2, TableColumn::Units, "m/s");
  rig.State().AskOnExit = false;
  rig.Window().close();
  rig.Start();
  EXPECT_EQ(rig.State().Parameters[3].units, "m/s");
}

TEST_F(TableOfTheProgram, KeepsWhatWasEditedOfAComputedChannel) {
  const auto connectAnew = [this] {
    rig.State().AskOnExit = false;
    rig.Window().close();
    rig.Start();
    rig.Connect();
  };
  rig.settings->Save("VELK2", "Formulae", "NumberOfFormulae", "1");
  rig.settings->Save("VELK2", "Formula1", "Formula", "{parameter 1}*2");
  rig.settings->Save("VELK2", "Formula1", "FormIndex", "4");
  rig.settings->Save("VELK2", "Formula1", "max", "100");
  rig.settings->Save("VELK2", "Formula1", "visible", "False");
  rig.settings->Flush();
  rig.Start();
  rig.Connect();
  ASSERT_EQ(rig.State().TotalParameters, 4);
  InTable([](ParametersTable& table) {
    Type(table, 3, TableColumn::Name, "Twice");
    Type(table, 3, TableColumn::Units, "kW");
    Type(table, 3, TableColumn::Maximum, "250");
  });
  connectAnew();
  const Parameter& computed = rig.State().CurrentParameters[4];
  EXPECT_EQ(computed.name, "Twice");
  EXPECT_EQ(computed.units, "kW");
  EXPECT_EQ(computed.max, 250);
  EXPECT_FALSE(computed.GraphVisible) << "which are shown is chosen elsewhere";
}

TEST_F(TableOfTheProgram, KeepsTheWidthsOfItsColumnsOverARestart) {
  const auto columnOf = [](ParametersTable& table) { return table.Answer().PlaceOf(TableColumn::Offset); };
  InTable([&](ParametersTable& table) {
    test::FindControl<QTableView>(table, "Grid1")->setColumnWidth(columnOf(table), 271);
  });
  rig.State().AskOnExit = false;
  rig.Window().close();
  rig.Start();
  rig.Connect();
  InTable([&](ParametersTable& table) {
    EXPECT_EQ(test::FindControl<QTableView>(table, "Grid1")->columnWidth(columnOf(table)), 271);
  });
}

TEST_F(TableOfTheProgram, EditsWhatPlays) {
  rig.State().AcquisitionMode = false;
  rig.State().PlaybackParameterCount = rig.State().TotalParameters;
  ChangeCurrentStatus(rig.State(), rig.Window(), text::StatusReadyToPlayback);
  InTable([](ParametersTable& table) {
    EXPECT_FALSE(table.Answer().HasAlarms());
    Type(table, 0, TableColumn::Name, "Of the file");
  });
  EXPECT_EQ(rig.State().CurrentParameters[1].name, "Of the file");
  EXPECT_EQ(rig.State().PlaybackParameters[1].name, "Of the file");
}

TEST_F(TableOfTheProgram, IsStoredWhereTheProgramEndsWithoutAsking) {
  rig.windows.Then("ParametersTable", [this](QDialog& window) {
    auto& table = dynamic_cast<ParametersTable&>(window);
    Type(table, 0, TableColumn::Minimum, "7");
    Type(table, 0, TableColumn::Maximum, "-5");
    rig.dialogs.SetEnding();
    window.reject();
  });
  rig.Choose("mnuEditTable");
  EXPECT_EQ(rig.State().Parameters[1].max, 107);
  EXPECT_EQ(OnDisk("Parameter1", "max"), "107");
}

}  // namespace
}  // namespace velk
