#include "instruments/unit/unit_table.h"

#include <gtest/gtest.h>

#include "instruments/unit/unit_grid.h"

namespace velk {
namespace {

const UnitRows kTwoRows{{"1", "0.5", "2", "0.00", "100", ""}, {"2", "-1", "1", "", "", "-20"}};

std::string FaultIn(const std::string& text) {
  const auto read = ReadUnitTemplate(text, "LUMO version A", 2);
  const auto* const fault = std::get_if<OperatorText>(&read);
  return fault == nullptr ? std::string() : fault->English();
}

TEST(UnitTemplate, IsALineForTheUnitAndARowAChannelOfCellsBetweenTabs) {
  const std::string text = UnitTemplateText("LUMO version A", kTwoRows);
  EXPECT_EQ(text, "LUMO version A\n1\t0.5\t2\t0.00\t100\t\n2\t-1\t1\t\t\t-20\n");
  EXPECT_EQ(std::get<UnitRows>(ReadUnitTemplate(text, "LUMO version A", 2)), kTwoRows);
}

TEST(UnitTemplate, IsReadWithOtherLineEndsToo) {
  const std::string text = "\xEF\xBB\xBFLUMO version A\r\n1\t0.5\t2\t0.00\t100\t\r\n2\t-1\t1\t\t\t-20";
  EXPECT_EQ(std::get<UnitRows>(ReadUnitTemplate(text, "LUMO version A", 2)), kTwoRows);
}

TEST(UnitTemplate, OfAnotherUnitOrDamagedIsRefusedWithItsLine) {
  const std::string damaged = "This is no whole template of a unit's table. Damaged is line ";
  EXPECT_EQ(FaultIn(""), damaged + "1");
  EXPECT_EQ(FaultIn("KESTA version 4\n"), "This template is of another unit; its name stands in line 1");
  const std::string head = "LUMO version A\n", first = "1\t0\t1\t\t\t\n", second = "2\t0\t1\t\t\t\n";
  EXPECT_EQ(FaultIn(head + first + second), "");
  EXPECT_EQ(FaultIn(head + first), damaged + "3");
  EXPECT_EQ(FaultIn(head + second + first), damaged + "2");
  EXPECT_EQ(FaultIn(head + first + second + "\n"), damaged + "4");
  EXPECT_EQ(FaultIn(head + "1\t0\t1\t\t\n" + second), damaged + "2") << "a cell is missing";
  EXPECT_EQ(FaultIn(head + "1\t0\t1\t\t\t\t\n" + second), damaged + "2") << "a cell too many";
  EXPECT_EQ(FaultIn(head + first + "2\tx\t1\t\t\t\n"), damaged + "3");
  EXPECT_EQ(FaultIn(head + first + "2\t0\t\t\t\t\n"), damaged + "3") << "a gain is always there";
  EXPECT_EQ(FaultIn(head + first + "2\t0\t1\t\xFF\t\t\n"), damaged + "3");
}

/// Every place at which a sound template can be cut.
TEST(UnitTemplate, CutAnywhereIsRefusedUnlessOnlyItsLastLineEndIsMissing) {
  const std::string text =
      UnitTemplateText("LUMO version A", {{"1", "0", "1", "", "", "5"}, {"2", "0", "1", "", "", "7"}});
  for (std::size_t length = 0; length + 1 < text.size(); ++length) {
    // A cut alarm is an alarm that is off.
    if (text.substr(0, length).ends_with("\t\t\t") && length > 30) continue;
    EXPECT_NE(FaultIn(text.substr(0, length)), "") << length;
  }
}

TEST(UnitCells, AreNumbersWithADecimalPointOrCommaAndAlarmsMayBeEmpty) {
  EXPECT_TRUE(UnitCellFault(unit_column::Gain, "0,5").IsEmpty());
  EXPECT_TRUE(UnitCellFault(unit_column::Offset, "-1e3").IsEmpty());
  EXPECT_TRUE(UnitCellFault(unit_column::UpperAlarm, " ").IsEmpty());
  EXPECT_EQ(UnitCellFault(unit_column::Gain, "").English(), "This is no number");
  EXPECT_EQ(UnitCellFault(unit_column::Gain, "2x").English(), "This is no number");
  EXPECT_FALSE(UnitCellFault(unit_column::LowerAlarm, "1,234.5").IsEmpty());
  EXPECT_TRUE(UnitCellFault(unit_column::NumberFormat, "#0.00").IsEmpty());
  EXPECT_FALSE(UnitCellFault(unit_column::NumberFormat, "two").IsEmpty());
  EXPECT_FALSE(UnitCellFault(unit_column::NumberFormat, "0.0.0").IsEmpty());
}

TEST(UnitCells, WithAnExponentAreNamedByTheirChannels) {
  UnitRows table = kTwoRows;
  EXPECT_EQ(ChannelsWithExponents(table, {}), "");
  table[0][unit_column::Gain] = "0.00005";
  EXPECT_EQ(ChannelsWithExponents(table, {}), "1");
  table[1][unit_column::LowerAlarm] = "1e15";
  EXPECT_EQ(ChannelsWithExponents(table, {}), "1, 2");
  EXPECT_EQ(ChannelsWithExponents(table, kTwoRows), "1, 2");
  table[0][unit_column::Gain] = "5e-3";
  EXPECT_EQ(ChannelsWithExponents(table, {}), "2") << "it is sent as 0.005";
  EXPECT_EQ(ChannelsWithExponents(table, table), "") << "the unit has it, so it isn't sent";
}

TEST(UnitGridOfATable, KeepsTheNumbersOfTheChannelsAndTakesChangesBack) {
  UnitGrid grid(kTwoRows);
  grid.Enter(0, unit_column::Gain, "3");
  grid.Enter(0, unit_column::Channel, "9");
  EXPECT_EQ(grid.Cell(0, unit_column::Gain), "3");
  EXPECT_EQ(grid.Cell(0, unit_column::Channel), "1");
  grid.Clear({0, 0, 1, 5});
  EXPECT_EQ(grid.Table(), (UnitRows{{"1", "", "", "", "", ""}, {"2", "", "", "", "", ""}}));
  grid.Undo();
  grid.Undo();
  grid.Undo();
  EXPECT_EQ(grid.Table(), kTwoRows);
  EXPECT_FALSE(grid.CanUndo());
}

TEST(UnitGridOfATable, IsChangedUntilItIsKeptOrAsItWas) {
  UnitGrid grid(kTwoRows);
  EXPECT_FALSE(grid.IsChanged());
  grid.Enter(0, unit_column::Gain, "3");
  EXPECT_TRUE(grid.IsChanged());
  grid.Enter(0, unit_column::Gain, "2");
  EXPECT_FALSE(grid.IsChanged());
  grid.Enter(0, unit_column::Gain, "3");
  grid.Kept();
  EXPECT_FALSE(grid.IsChanged());
  grid.Undo();
  EXPECT_TRUE(grid.IsChanged());
}

TEST(UnitGridOfATable, PastesWhatWasCopiedWithinItsCells) {
  UnitGrid grid(kTwoRows);
  EXPECT_EQ(grid.Copy({0, 1, 1, 2}), "0.5\t2\n-1\t1\n");
  const CellRange written = grid.Paste({1, 4, 1, 4}, "7\t8\t9\n1\t2\t3\n");
  EXPECT_EQ(grid.Table()[1], (UnitRows::value_type{"2", "-1", "1", "", "7", "8"}));
  EXPECT_EQ(written.bottom, 1);
  EXPECT_EQ(written.right, 5);
  grid.Paste({0, 1, 1, 2}, "4");
  EXPECT_EQ(grid.Copy({0, 1, 1, 2}), "4\t4\n4\t4\n");
}

}  // namespace
}  // namespace velk
