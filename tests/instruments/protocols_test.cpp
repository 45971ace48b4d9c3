#include "instruments/table/protocols.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace velk {
namespace {

struct Row {
  const char* serialData;
  Driver driver;
  bool ownUnit;
  bool usesLineDriver;
};

constexpr Row kRows[] = {
    {"formatted and at regular intervals", Driver::EventLineDriver, false, true},
    {"National Oil Well PLC", Driver::EventLineDriver, false, true},
    {"sent when requested", Driver::PolledByTick, false, false},
    {"intermittent and by request", Driver::BufferedLines, false, false},
    {"via dll function call", Driver::None, false, false},
    {"KESTA version 3", Driver::EventLineDriver, true, true},
    {"KESTA version 4", Driver::EventLineDriver, true, true},
    {"KESTA version 5", Driver::EventLineDriver, true, true},
    {"LUMO version A", Driver::EventLineDriver, true, true},
    {"LUMO version B", Driver::EventLineDriver, true, true},
    {"S&S DAS 104", Driver::PolledByTick, false, false},
    {"Data Taker a", Driver::PolledByTick, false, false},
    {"Data Taker b", Driver::PolledByTick, false, false},
    {"HPT - Honeywell eZtrend", Driver::NetworkedPage, false, false},
    {"ORBEN LUMO through HMI", Driver::NetworkedPage, false, false},
    {"Any Serial Data", Driver::EventLineDriver, false, true},
    {"OPC Server", Driver::OpcItems, false, false},
};

/// A session whose port settings tell whether anything was changed.
Session Marked(const std::string& serialData) {
  Session session;
  session.SerialData = serialData;
  session.BaudRate = 4800;
  session.Handshake = 1;
  session.Parity = "E";
  session.DataBits = 7;
  session.StopBits = "2";
  session.Delimiter = ",";
  session.Terminator = "\n";
  session.NumberOfChannels = 77;
  return session;
}

void ExpectUntouched(const Session& session) {
  EXPECT_EQ(session.BaudRate, 4800);
  EXPECT_EQ(session.Handshake, 1);
  EXPECT_EQ(session.Parity, "E");
  EXPECT_EQ(session.DataBits, 7);
  EXPECT_EQ(session.StopBits, "2");
  EXPECT_EQ(session.Delimiter, ",");
  EXPECT_EQ(session.Terminator, "\n");
  EXPECT_EQ(session.NumberOfChannels, 77);
  EXPECT_TRUE(session.OrbenSettings.empty());
}

TEST(Protocols, StandInTheOrderOfTheProtocolList) {
  ASSERT_EQ(Protocols().size(), std::size(kRows));
  for (std::size_t i = 0; i < std::size(kRows); ++i) {
    EXPECT_EQ(Protocols()[i].serialData, kRows[i].serialData) << i;
    EXPECT_EQ(Protocols()[i].driver, kRows[i].driver) << i;
    EXPECT_EQ(Protocols()[i].unit.has_value(), kRows[i].ownUnit) << i;
  }
}

TEST(Protocols, AreFoundByTheirExactText) {
  EXPECT_EQ(FindProtocol("LUMO version A"), &Protocols()[8]);
  EXPECT_EQ(FindProtocol("lumo version a"), nullptr);
  EXPECT_EQ(FindProtocol(""), nullptr);
}

TEST(Protocols, GiveARowWithoutAnythingForWhatIsNoEntryOfTheList) {
  EXPECT_EQ(&ProtocolOf("LUMO version A"), &Protocols()[8]);
  for (const char* serialData : {"", "KESTA version 6"}) {
    const Protocol& row = ProtocolOf(serialData);
    EXPECT_EQ(row.driver, Driver::None) << serialData;
    EXPECT_EQ(row.decoder, &decoder::None) << serialData;
    EXPECT_EQ(row.dialog, ProtocolDialog::None) << serialData;
    EXPECT_FALSE(row.unit) << serialData;
  }
}

/// Those of the seventeen and an unknown name that a flag is set for.
std::vector<std::string_view> NamesWhere(const std::function<bool(const Protocol&)>& holds) {
  std::vector<std::string_view> names;
  for (const Row& row : kRows)
    if (holds(ProtocolOf(row.serialData))) names.emplace_back(row.serialData);
  if (holds(ProtocolOf("unknown"))) names.emplace_back("unknown");
  return names;
}

TEST(Protocols, TellWhatSetsTheirJobsApart) {
  using Names = std::vector<std::string_view>;
  EXPECT_EQ(NamesWhere([](const Protocol& row) { return row.asksAtStart; }),
            (Names{"formatted and at regular intervals", "National Oil Well PLC", "Any Serial Data"}));
  EXPECT_EQ(NamesWhere([](const Protocol& row) { return !row.hasPort; }),
            (Names{"HPT - Honeywell eZtrend", "ORBEN LUMO through HMI", "OPC Server"}));
  EXPECT_EQ(NamesWhere([](const Protocol& row) { return row.learnsLineLength; }),
            (Names{"formatted and at regular intervals"}));
  EXPECT_EQ(NamesWhere([](const Protocol& row) { return row.frameBeginsAtEnd; }), (Names{"S&S DAS 104"}));
  EXPECT_EQ(NamesWhere([](const Protocol& row) { return row.hasCommands; }), (Names{"sent when requested"}));
  EXPECT_EQ(NamesWhere([](const Protocol& row) { return row.pageTimer == PageTimer::Timer4; }),
            (Names{"HPT - Honeywell eZtrend"}));
  EXPECT_EQ(NamesWhere([](const Protocol& row) { return row.pageTimer == PageTimer::Timer5; }),
            (Names{"ORBEN LUMO through HMI"}));
}

TEST(PresentName, IsThatOfTheSameProtocolForThreeOlderNames) {
  EXPECT_EQ(PresentName("formatted"), "formatted and at regular intervals");
  EXPECT_EQ(PresentName("orben version 3"), "KESTA version 3");
  EXPECT_EQ(PresentName("orben version 4"), "KESTA version 4");
  for (const char* other : {"", "Formatted", "orben version 5", "KESTA version 3", "OPC Server"})
    EXPECT_EQ(PresentName(other), other);
}

TEST(ComputeUseODataCom, IsTrueForThreeProtocolsAndForOwnUnits) {
  for (const Row& row : kRows) {
    Session session;
    session.SerialData = row.serialData;
    SetProtocolConstants(session);
    EXPECT_EQ(ComputeUseODataCom(session), row.usesLineDriver) << row.serialData;
  }
}

TEST(ComputeUseODataCom, StaysTrueOnceAnOwnUnitWasChosen) {
  Session session;
  session.SerialData = "Data Taker a";
  session.IsOwnUnit = true;
  EXPECT_TRUE(ComputeUseODataCom(session));
}

TEST(SetProtocolConstants, SetsTheConstantsOfEachOwnUnit) {
  struct Unit {
    const char* name;
    int channels, analog, hardware, baud, handshake;
  };
  for (const Unit& unit : {Unit{"KESTA version 3", 18, 8, 13, 19200, 2}, Unit{"KESTA version 4", 18, 8, 13, 19200, 0},
                           Unit{"KESTA version 5", 22, 8, 13, 19200, 0}, Unit{"LUMO version A", 4, 2, 3, 19200, 0},
                           Unit{"LUMO version B", 10, 4, 7, 19200, 0}}) {
    Session session = Marked(unit.name);
    SetProtocolConstants(session);
    EXPECT_EQ(session.NumberOfChannels, unit.channels) << unit.name;
    EXPECT_EQ(session.LastAnalogChannel, unit.analog) << unit.name;
    EXPECT_EQ(session.LastHardwareChannel, unit.hardware) << unit.name;
    EXPECT_EQ(session.BaudRate, unit.baud) << unit.name;
    EXPECT_EQ(session.Handshake, unit.handshake) << unit.name;
    EXPECT_TRUE(session.IsOwnUnit) << unit.name;
    EXPECT_EQ(session.Parity, "N");
    EXPECT_EQ(session.DataBits, 8);
    EXPECT_EQ(session.StopBits, "1");
    EXPECT_EQ(session.Delimiter, " ");
    EXPECT_EQ(session.Terminator, "\r\n");
    EXPECT_EQ(session.OrbenSettings.size(), static_cast<std::size_t>(unit.channels));
    EXPECT_EQ(session.OrbenSettings[0].size(), 6U);
  }
}

TEST(SetProtocolConstants, ChangesNothingForAnyOtherValue) {
  for (const Row& row : kRows) {
    if (row.ownUnit) continue;
    Session session = Marked(row.serialData);
    SetProtocolConstants(session);
    ExpectUntouched(session);
    EXPECT_FALSE(session.IsOwnUnit) << row.serialData;
  }
  for (const char* unknown : {"", "OPC Server", "KESTA version 6", "formatted"}) {
    Session session = Marked(unknown);
    SetProtocolConstants(session);
    ExpectUntouched(session);
    EXPECT_EQ(session.SerialData, unknown);
  }
}

TEST(SetProtocolConstants, LeavesTheOwnUnitFlagSetWhenAnotherProtocolIsChosen) {
  Session session = Marked("Data Taker b");
  session.IsOwnUnit = true;
  SetProtocolConstants(session);
  EXPECT_TRUE(session.IsOwnUnit);
  ExpectUntouched(session);
}

TEST(SetProtocolConstants, GivesNamesFromOlderSettingsTheirPresentOnes) {
  Session session;
  session.SerialData = "orben version 3";
  SetProtocolConstants(session);
  EXPECT_EQ(session.SerialData, "KESTA version 3");
  EXPECT_EQ(session.Handshake, 2);
  EXPECT_TRUE(session.IsOwnUnit);
  session.SerialData = "orben version 4";
  SetProtocolConstants(session);
  EXPECT_EQ(session.SerialData, "KESTA version 4");
  EXPECT_EQ(session.Handshake, 0);
}

TEST(SetProtocolConstants, SizesTheHardwareTableAnewForAnotherUnit) {
  Session session;
  session.SerialData = "KESTA version 5";
  SetProtocolConstants(session);
  session.OrbenSettings[0][0] = "old";
  session.SerialData = "LUMO version A";
  SetProtocolConstants(session);
  ASSERT_EQ(session.OrbenSettings.size(), 4U);
  EXPECT_EQ(session.OrbenSettings[0][0], "");
}

}  // namespace
}  // namespace velk
