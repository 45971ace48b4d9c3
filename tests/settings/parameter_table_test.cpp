#include "settings/parameter_table.h"

#include <gtest/gtest.h>

#include "settings/texts.h"

namespace velk {
namespace {

Parameter Named(const std::string& name, int graph) {
  Parameter parameter;
  parameter.name = name;
  parameter.units = "bar";
  parameter.max = 100;
  parameter.color = 0x2E10C8;
  parameter.format = "#0.00";
  parameter.FormIndex = static_cast<std::int16_t>(graph);
  parameter.GraphVisible = true;
  parameter.Gain = 1;
  return parameter;
}

/// Two inputs and a computed channel, acquiring.
class ParameterTableTest : public testing::Test {
 protected:
  ParameterTableTest() {
    session.NumberOfParameters = 2;
    session.NumberOfFormulae = 1;
    session.TotalParameters = 3;
    session.AcquisitionMode = true;
    session.AdditionalParameters.resize(2);
    session.Formula.resize(2);
    session.CurrentParameters[1] = session.Parameters[1] = Named("Pressure", 1);
    session.CurrentParameters[2] = session.Parameters[2] = Named("Flow", 2);
    session.CurrentParameters[3] = session.AdditionalParameters[1] = Named("Power", 3);
  }

  /// What stands in the session after a cell of row `row`, from 0 on, was typed.
  const Parameter& Typed(int row, TableColumn column, const std::string& text) {
    ParameterTable table(session);
    table.Change({{row, table.PlaceOf(column), text}});
    raised = StoreTable(session, table);
    return session.CurrentParameters[static_cast<std::size_t>(row) + 1];
  }

  std::vector<std::string> RowTexts(int row) const {
    const ParameterTable table(session);
    std::vector<std::string> texts;
    for (int column = 0; column < table.ColumnCount(); ++column) texts.push_back(table.Cell(row, column));
    return texts;
  }

  std::optional<std::string> Fault(TableColumn column, const std::string& text) const {
    ParameterTable table(session);
    table.Change({{0, table.PlaceOf(column), text}});
    const auto fault = table.FaultOf(0, table.PlaceOf(column));
    return fault ? std::optional<std::string>(fault->english) : std::nullopt;
  }

  Session session;
  bool raised = false;
};

// --- What it shows ---

TEST_F(ParameterTableTest, HasARowAParameterAndTheColumnsInOrder) {
  session.CurrentParameters[1].loweralarm = "5";
  session.CurrentParameters[1].Offset = -0.25;
  EXPECT_EQ(ParameterTable(session).RowCount(), 3);
  EXPECT_EQ(RowTexts(0), (std::vector<std::string>{"Pressure", "bar", "0", "100", "#C8102E", "12345.12", "5", "", "1",
                                                   "1", "-0.25"}));
  const ParameterTable table(session);
  std::vector<std::string> headings;
  for (int i = 0; i < table.ColumnCount(); ++i) headings.emplace_back(HeadingOf(table.Column(i)).english);
  EXPECT_EQ(headings, (std::vector<std::string>{"Name", "Units", "Minimum", "Maximum", "Color", "Format", "Lower Alarm",
                                                "Upper Alarm", "Graph", "Gain", "Offset"}));
}

TEST_F(ParameterTableTest, HasNoAlarmsOutsideOfAcquisition) {
  session.AcquisitionMode = false;
  const ParameterTable table(session);
  EXPECT_EQ(table.ColumnCount(), 9);
  EXPECT_FALSE(table.HasAlarms());
}

TEST_F(ParameterTableTest, HasAColumnOfTagsWhereChannelsComeFromItems) {
  const ParameterTable table(session, {"ns=2;s=Pump.Pressure", "ns=2;s=Pump.Flow", "beyond the channels"});
  ASSERT_EQ(table.PlaceOf(TableColumn::Tag), 0);
  EXPECT_EQ(table.PlaceOf(TableColumn::Name), 1);
  EXPECT_EQ(HeadingOf(TableColumn::Tag).english, "Tag");
  EXPECT_EQ(table.Cell(0, TableColumn::Tag), "ns=2;s=Pump.Pressure");
  EXPECT_EQ(table.Cell(1, TableColumn::Tag), "ns=2;s=Pump.Flow");
  EXPECT_EQ(table.Cell(2, TableColumn::Tag), "") << "a computed channel comes from nowhere";
  EXPECT_EQ(ParameterTable(session).PlaceOf(TableColumn::Tag), -1);
}

TEST_F(ParameterTableTest, LeavesTagsAsTheyAre) {
  ParameterTable table(session, {"A", "B"});
  table.Change({{0, 0, "other"}});
  table.Paste({0, 0, 0, 1}, "other\tPump");
  EXPECT_EQ(table.Cell(0, TableColumn::Tag), "A");
  EXPECT_EQ(table.Cell(0, TableColumn::Name), "Pump");
  EXPECT_FALSE(table.FaultOf(0, 0));
  StoreTable(session, table);
  EXPECT_EQ(session.CurrentParameters[1].name, "Pump");
}

TEST_F(ParameterTableTest, ShowsEachFormatByItsSample) {
  struct Case {
    const char* format;
    const char* sample;
  };
  constexpr Case cases[] = {{"#0", "12345678"},         {"#0.0", "123456.1"},    {"#0.00", "12345.12"},
                            {"#0.000", "1234.123"},     {"#0.0000", "123.1234"}, {"#0.00000", "12.12345"},
                            {"0.00e+00", "1.23456E+01"}};
  for (const Case& each : cases) {
    session.CurrentParameters[1].format = each.format;
    EXPECT_EQ(RowTexts(0)[5], each.sample);
    session.CurrentParameters[1].format = "#";
    EXPECT_EQ(Typed(0, TableColumn::Format, each.sample).format, each.format);
  }
}

TEST_F(ParameterTableTest, TakesAFormatThatNoSampleStandsForAsThreeDecimals) {
  EXPECT_EQ(Typed(0, TableColumn::Format, "no format").format, "#0.000");
  EXPECT_EQ(Typed(0, TableColumn::Format, "12345,12").format, "#0.00") << "as a Russian spreadsheet writes it";
  EXPECT_EQ(Typed(0, TableColumn::Format, "#0.0000").format, "#0.0000");
}

// --- Back into the parameters ---

TEST_F(ParameterTableTest, StoresWhatWasTyped) {
  EXPECT_EQ(Typed(0, TableColumn::Name, "Pump").name, "Pump");
  EXPECT_EQ(Typed(0, TableColumn::Units, "kPa").units, "kPa");
  EXPECT_EQ(Typed(0, TableColumn::Minimum, "-5").min, -5);
  EXPECT_EQ(Typed(0, TableColumn::Maximum, "12,5").max, 12.5);
  EXPECT_EQ(Typed(0, TableColumn::Color, "#0057B8").color, 0xB85700);
  EXPECT_EQ(Typed(0, TableColumn::Graph, "64").FormIndex, 64);
  EXPECT_EQ(Typed(0, TableColumn::Graph, "no number").FormIndex, 0);
  EXPECT_EQ(Typed(0, TableColumn::Gain, "0.125 per volt").Gain, 0.125);
  EXPECT_EQ(Typed(0, TableColumn::Offset, "none").Offset, 0);
  EXPECT_FALSE(raised);
}

TEST_F(ParameterTableTest, LeavesWhatNobodyTouchedAsItIs) {
  session.CurrentParameters[1].min = 0.1 + 0.2;  // not the number that its 15 digits give
  session.CurrentParameters[1].format = "0.0%";
  StoreTable(session, ParameterTable(session));
  EXPECT_EQ(session.CurrentParameters[1].min, 0.1 + 0.2);
  EXPECT_EQ(session.CurrentParameters[1].format, "0.0%");
}

TEST_F(ParameterTableTest, TurnsAnEmptyNameIntoBlankAndHidesItsCurve) {
  for (const char* name : {"", "  ", "BLANK", "blank", "Blank"}) {
    session.CurrentParameters[1] = Named("Pressure", 1);
    EXPECT_EQ(Typed(0, TableColumn::Name, name).name, "BLANK") << name;
    EXPECT_FALSE(session.CurrentParameters[1].GraphVisible);
  }
  EXPECT_TRUE(Typed(0, TableColumn::Name, "Pump").GraphVisible) << "a name brings it back";
}

TEST_F(ParameterTableTest, TurnsANameThatWasEmptyBeforeIntoBlankToo) {
  for (const char* name : {"", " ", "Blank"}) {
    session.CurrentParameters[1] = Named(name, 1);
    Typed(1, TableColumn::Units, "l/min");
    EXPECT_EQ(session.CurrentParameters[1].name, "BLANK") << name;
    EXPECT_FALSE(session.CurrentParameters[1].GraphVisible) << name;
  }
}

TEST_F(ParameterTableTest, TakesTheLinesOfACellForOne) {
  ParameterTable table(session);
  table.Paste({0, 0, 0, 0}, "\"Flow\r\nrate\"\t\"l\n\"\r\n\"A \"\"4\"\"\"\r\n");
  StoreTable(session, table);
  EXPECT_EQ(session.CurrentParameters[1].name, "Flow rate");
  EXPECT_EQ(session.CurrentParameters[1].units, "l ");
  EXPECT_EQ(session.CurrentParameters[2].name, "A \"4\"");
}

TEST_F(ParameterTableTest, KeepsTheMinimumOfABlankChannel) {
  ParameterTable table(session);
  table.Change({{0, 0, ""}, {0, table.PlaceOf(TableColumn::Minimum), "7"}});
  StoreTable(session, table);
  EXPECT_EQ(session.CurrentParameters[1].min, 0);
}

TEST_F(ParameterTableTest, RaisesAMaximumThatIsNotAboveTheMinimum) {
  EXPECT_EQ(Typed(0, TableColumn::Maximum, "-1").max, 100);
  EXPECT_TRUE(raised);
  EXPECT_EQ(Typed(1, TableColumn::Minimum, "100").max, 200) << "equal ones too";
  EXPECT_TRUE(raised);
}

TEST_F(ParameterTableTest, TakesEachAlarmByItself) {
  EXPECT_EQ(Typed(0, TableColumn::LowerAlarm, "2,50").loweralarm, "2.5");
  EXPECT_EQ(session.CurrentParameters[1].upperalarm, "None");
  EXPECT_EQ(Typed(0, TableColumn::UpperAlarm, "90 bar").upperalarm, "90");
  EXPECT_EQ(Typed(0, TableColumn::LowerAlarm, "").loweralarm, "None");
  EXPECT_EQ(session.CurrentParameters[1].upperalarm, "90");
  EXPECT_EQ(Typed(0, TableColumn::UpperAlarm, "none").upperalarm, "None");
}

TEST_F(ParameterTableTest, LeavesAFieldWhoseTextCannotStand) {
  EXPECT_EQ(Typed(0, TableColumn::Graph, "65").FormIndex, 1);
  EXPECT_EQ(Typed(0, TableColumn::Gain, "1,234.5").Gain, 1);
  EXPECT_EQ(Typed(0, TableColumn::Color, "red").color, 0x2E10C8);
}

// --- What is refused ---

TEST_F(ParameterTableTest, TellsWhatIsWrongWhereItStands) {
  EXPECT_EQ(Fault(TableColumn::Graph, "65"), text::GraphOutOfRange.english);
  EXPECT_EQ(Fault(TableColumn::Graph, "-1"), text::GraphOutOfRange.english);
  EXPECT_EQ(Fault(TableColumn::Color, "#12345"), text::NotAColour.english);
  EXPECT_EQ(Fault(TableColumn::Maximum, "0"), text::MaximumNotAbove.english);
  for (const TableColumn column : {TableColumn::Minimum, TableColumn::Maximum, TableColumn::LowerAlarm,
                                   TableColumn::UpperAlarm, TableColumn::Graph, TableColumn::Gain, TableColumn::Offset})
    EXPECT_TRUE(Fault(column, "1,234.5").has_value()) << HeadingOf(column).english;
}

TEST_F(ParameterTableTest, FindsNothingWrongWithWhatCanStand) {
  for (const char* graph : {"0", "1", "64", "abc", ""}) EXPECT_EQ(Fault(TableColumn::Graph, graph), std::nullopt);
  for (const char* alarm : {"", "None", "12,5", "abc"}) EXPECT_EQ(Fault(TableColumn::LowerAlarm, alarm), std::nullopt);
  EXPECT_EQ(Fault(TableColumn::Name, ""), std::nullopt);
  EXPECT_FALSE(ParameterTable(session).FirstFault().has_value());
}

TEST_F(ParameterTableTest, NamesTheFirstFaultRowByRow) {
  ParameterTable table(session);
  table.Change({{2, table.PlaceOf(TableColumn::Graph), "99"}, {1, table.PlaceOf(TableColumn::Gain), "1,2,3"}});
  ASSERT_TRUE(table.FirstFault().has_value());
  EXPECT_EQ(table.FirstFault()->row, 1);
  EXPECT_EQ(table.FirstFault()->column, table.PlaceOf(TableColumn::Gain));
}

TEST_F(ParameterTableTest, MarksTheLaterOfTwoNamesAndLetsItStand) {
  ParameterTable table(session);
  table.Change({{2, 0, "Flow"}});
  EXPECT_FALSE(table.RepeatsName(1));
  EXPECT_TRUE(table.RepeatsName(2));
  EXPECT_FALSE(table.FirstFault().has_value());
  for (const char* sameColumn : {"flow", "Fl.ow", "F[LOW]'"}) {
    table.Change({{2, 0, sameColumn}});
    EXPECT_TRUE(table.RepeatsName(2)) << sameColumn;
  }
  table.Change({{1, 0, ""}, {2, 0, "blank"}});
  EXPECT_FALSE(table.RepeatsName(2)) << "blank ones don't count";
}

// --- Changes ---

TEST_F(ParameterTableTest, UndoesStepByStep) {
  ParameterTable table(session);
  table.Change({{0, 0, "A"}, {1, 0, "B"}});
  table.Change({{0, 0, "C"}});
  table.Change({{0, 0, "C"}});
  table.Undo();
  EXPECT_EQ(table.Cell(0, 0), "A") << "a change to the same text is none";
  table.Undo();
  EXPECT_EQ(table.Cell(0, 0), "Pressure");
  EXPECT_EQ(table.Cell(1, 0), "Flow");
  EXPECT_FALSE(table.CanUndo());
  table.Undo();
}

TEST_F(ParameterTableTest, CopiesAndPastesARange) {
  ParameterTable table(session);
  EXPECT_EQ(table.Copy({0, 0, 1, 1}), "Pressure\tbar\nFlow\tbar\n");
  const auto [filled, isWhole] = table.Paste({1, 0, 1, 0}, "X\tm\nY\tl/min\nZ\tbeyond\n");
  EXPECT_EQ(table.Cell(1, 0), "X");
  EXPECT_EQ(table.Cell(2, 1), "l/min");
  EXPECT_EQ(filled.bottom, 2);
  EXPECT_EQ(filled.right, 1);
  EXPECT_FALSE(isWhole);
  table.Undo();
  EXPECT_EQ(table.Cell(1, 0), "Flow") << "a paste is one step";
  EXPECT_EQ(table.Cell(2, 1), "bar");
}

TEST_F(ParameterTableTest, TellsWhetherAPasteHadRoom) {
  ParameterTable table(session);
  EXPECT_TRUE(table.Paste({1, 0, 1, 0}, "X\nY\n").isWhole);
  EXPECT_FALSE(table.Paste({2, 0, 2, 0}, "X\nY\n").isWhole) << "a row too many";
  const int last = table.ColumnCount() - 1;
  EXPECT_TRUE(table.Paste({0, last, 0, last}, "1\n").isWhole);
  EXPECT_FALSE(table.Paste({0, last, 0, last}, "1\t2\n").isWhole) << "a column too many";
  EXPECT_TRUE(table.Paste({0, 0, 0, 0}, "").isWhole);
}

TEST_F(ParameterTableTest, FillsARangeWithASingleCell) {
  ParameterTable table(session);
  const int graph = table.PlaceOf(TableColumn::Graph);
  EXPECT_TRUE(table.Paste({0, graph, 2, graph}, "5\n").isWhole);
  for (int row = 0; row < 3; ++row) EXPECT_EQ(table.Cell(row, graph), "5");
}

// --- Where it goes ---

TEST_F(ParameterTableTest, GoesToTheConfigurationOfTheUnit) {
  Typed(0, TableColumn::Gain, "2.5");
  Typed(2, TableColumn::Units, "kW");
  CarryTableBack(session);
  EXPECT_EQ(session.Parameters[1].Gain, 2.5);
  EXPECT_EQ(session.AdditionalParameters[1].units, "kW");
}

TEST_F(ParameterTableTest, LeavesToIncludeWhichComputedChannelsAreShown) {
  session.CurrentParameters[3].GraphVisible = session.AdditionalParameters[1].GraphVisible = false;
  session.CurrentParameters[1].GraphVisible = false;
  Typed(2, TableColumn::Name, "Hydraulic power");
  CarryTableBack(session);
  EXPECT_FALSE(session.CurrentParameters[3].GraphVisible);
  EXPECT_FALSE(session.AdditionalParameters[1].GraphVisible);
  EXPECT_EQ(session.AdditionalParameters[1].name, "Hydraulic power");
  EXPECT_TRUE(session.CurrentParameters[1].GraphVisible) << "an input with a name is shown";

  session.AdditionalParameters[1].GraphVisible = true;
  Typed(2, TableColumn::Name, "");
  CarryTableBack(session);
  EXPECT_TRUE(session.AdditionalParameters[1].GraphVisible);
  EXPECT_FALSE(session.CurrentParameters[3].GraphVisible);
}

TEST_F(ParameterTableTest, KeepsTheStatisticsOfComputedChannels) {
  session.AdditionalParameters[1].AverageCount = 7;
  CarryTableBack(session);
  EXPECT_EQ(session.AdditionalParameters[1].AverageCount, 7);
}

TEST_F(ParameterTableTest, LeavesTheUnitAloneWhileAFileIsPlayed) {
  session.AcquisitionMode = false;
  session.PlaybackParameterCount = session.NumberOfParameters;
  session.UnitParameters = 7;
  session.AdditionalParameters[1].GraphVisible = false;
  session.AdditionalParameters[1].FormIndex = 9;
  Typed(0, TableColumn::Name, "From the file");
  Typed(2, TableColumn::Name, "Computed");
  Typed(2, TableColumn::Graph, "4");
  CarryTableBack(session);
  EXPECT_EQ(session.Parameters[1].name, "Pressure");
  EXPECT_EQ(session.PlaybackParameters[1].name, "From the file");
  EXPECT_EQ(session.PlaybackParameters[3].name, "") << "the place of a channel of the next file";
  EXPECT_EQ(session.AdditionalParameters[1].name, "Computed") << "computed channels are nobody's file";
  EXPECT_FALSE(session.AdditionalParameters[1].GraphVisible);
  EXPECT_EQ(session.AdditionalParameters[1].FormIndex, 9) << "beside the channels of the unit";
  EXPECT_EQ(session.CurrentParameters[3].FormIndex, 4);
}

}  // namespace
}  // namespace velk
