#include "instruments/setup/hardware_choices.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "instruments/table/protocols.h"
#include "platform/settings/settings.h"
#include "support/in_english.h"
#include "support/temporary_folder.h"

namespace velk {
namespace {

struct ListRow {
  const char* shown;
  const char* stored;  ///< once it was picked while "before" was stored
  ProtocolDialog next;
};

constexpr ListRow kList[] = {
    {"formatted and at regular intervals", "National Oil Well PLC", ProtocolDialog::FormattedData},
    {"National Oil Well PLC", "National Oil Well PLC", ProtocolDialog::FormattedData},
    {"sent when requested", "sent when requested", ProtocolDialog::RequestedData},
    {"intermittent and by request", "intermittent and by request", ProtocolDialog::Intermittent},
    {"via dll function call", "via dll function call", ProtocolDialog::None},
    {"KESTA version 3", "KESTA version 3", ProtocolDialog::None},
    {"KESTA version 4", "KESTA version 4", ProtocolDialog::None},
    {"KESTA version 5", "KESTA version 5", ProtocolDialog::None},
    {"LUMO version A", "LUMO version A", ProtocolDialog::None},
    {"LUMO version B", "LUMO version B", ProtocolDialog::None},
    {"S&S DAS 104", "S&S DAS 104", ProtocolDialog::FormattedData},
    {"Data Taker a", "Data Taker a", ProtocolDialog::FormattedData},
    {"Data Taker b", "Data Taker b", ProtocolDialog::FormattedData},
    {"HPT - Honeywell eZtrend", "HPT - Honeywell eZtrend", ProtocolDialog::EthernetConfiguration},
    {"ORBEN LUMO through HMI", "ORBEN LUMO through HMI", ProtocolDialog::EthernetConfiguration},
    {"Any Serial Data", "before", ProtocolDialog::FormattedData},
    {"OPC Server", "OPC Server", ProtocolDialog::None},
};

TEST(ProtocolList, ShowsTheSeventeenInOrder) {
  ASSERT_EQ(Protocols().size(), std::size(kList));
  for (int i = 0; i < 17; ++i) {
    EXPECT_EQ(Protocols()[static_cast<std::size_t>(i)].caption.english, kList[i].shown);
    EXPECT_EQ(ProtocolPlace(kList[i].shown), i);
  }
  EXPECT_EQ(ProtocolPlace("KESTA version 6"), -1);
  EXPECT_EQ(ProtocolPlace(""), -1);
}

TEST(ProtocolList, StoresWhatIsPickedTheFirstAsTheSecondAndAnySerialDataNotAtAll) {
  for (int i = 0; i < 17; ++i) EXPECT_EQ(PickedSerialData(i, "before"), kList[i].stored) << i;
  EXPECT_EQ(PickedSerialData(15, "KESTA version 3"), "KESTA version 3");
  EXPECT_EQ(PickedSerialData(-1, "KESTA version 6"), "KESTA version 6");
}

TEST(ProtocolList, LeadsToTheDialogOfTheProtocol) {
  for (const ListRow& row : kList) EXPECT_EQ(ProtocolOf(row.shown).dialog, row.next) << row.shown;
  EXPECT_EQ(ProtocolOf("OPC Server").dialog, ProtocolDialog::None);
}

TEST(HardwareLists, HoldWhatTheStoreKnows) {
  constexpr std::pair<const char*, const char*> kParityRows[] = {
      {"Even", "E"}, {"Mark", "M"}, {"None", "N"}, {"Odd", "O"}, {"Space", "S"}};
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(ParityText(i).english, kParityRows[i].first);
    EXPECT_EQ(kParities[static_cast<std::size_t>(i)], kParityRows[i].second);
  }
  constexpr const char* kHandshakeRows[] = {"None", "Xon/Xoff", "Hardware"};
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(HandshakeText(i).english, kHandshakeRows[i]);
    EXPECT_EQ(PlaceOf(kHandshakes, i), i);
  }
  EXPECT_EQ(PlaceOf(kStopBits, std::string("1.5")), 1);
  EXPECT_EQ(PlaceOf(kStopBits, std::string("3")), -1);
  EXPECT_EQ(PlaceOf(kBaudRates, 9600), 2);
  EXPECT_EQ(PlaceOf(kBaudRates, 115200), -1);
}

TEST(FixedPort, IsThatOfTheProtocolsConstantsForOwnUnits) {
  for (const ListRow& row : kList) {
    Session session;
    session.SerialData = row.shown;
    session.BaudRate = 4800;
    session.Parity = "E";
    session.DataBits = 7;
    session.StopBits = "2";
    session.Handshake = 1;
    const HardwareChoices shown = WithFixedPort(HardwareChoicesOf(session));
    SetProtocolConstants(session);
    EXPECT_EQ(ProtocolOf(row.shown).unit.has_value(), session.IsOwnUnit) << row.shown;
    EXPECT_EQ(shown.BaudRate, session.BaudRate) << row.shown;
    EXPECT_EQ(shown.Parity, session.Parity) << row.shown;
    EXPECT_EQ(shown.DataBits, session.DataBits) << row.shown;
    EXPECT_EQ(shown.StopBits, session.StopBits) << row.shown;
    EXPECT_EQ(shown.Handshake, session.Handshake) << row.shown;
  }
}

TEST(StoreHardwareChoices, BringsEveryChoiceIntoTheSessionAndBack) {
  const HardwareChoices choices{.SerialData = "Data Taker a",
                                .NumberOfParameters = 12,
                                .SamplingRate = 5.0 / 86400,
                                .SensitivityCriterion = 7,
                                .PortNumber = 3,
                                .BaudRate = 2400,
                                .Parity = "O",
                                .DataBits = 7,
                                .StopBits = "1.5",
                                .Handshake = 2};
  Session session;
  StoreHardwareChoices(session, choices);
  EXPECT_EQ(session.SerialData, "Data Taker a");
  EXPECT_EQ(session.NumberOfParameters, 12);
  EXPECT_EQ(session.SamplingRate, 5.0 / 86400);
  EXPECT_EQ(session.SensitivityCriterion, 7);
  EXPECT_EQ(session.PortNumber, 3);
  EXPECT_EQ(session.BaudRate, 2400);
  EXPECT_EQ(session.Parity, "O");
  EXPECT_EQ(session.DataBits, 7);
  EXPECT_EQ(session.StopBits, "1.5");
  EXPECT_EQ(session.Handshake, 2);
  const HardwareChoices back = HardwareChoicesOf(session);
  EXPECT_EQ(back.SerialData, choices.SerialData);
  EXPECT_EQ(back.NumberOfParameters, 12);
  EXPECT_EQ(back.SamplingRate, choices.SamplingRate);
  EXPECT_EQ(back.SensitivityCriterion, 7);
  EXPECT_EQ(back.PortNumber, 3);
  EXPECT_EQ(back.BaudRate, 2400);
  EXPECT_EQ(back.Parity, "O");
  EXPECT_EQ(back.DataBits, 7);
  EXPECT_EQ(back.StopBits, "1.5");
  EXPECT_EQ(back.Handshake, 2);
}

TEST(StoreHardwareChoices, GivesAnOwnUnitItsConstants) {
  Session session;
  StoreHardwareChoices(session, {.SerialData = "KESTA version 5", .BaudRate = 2400, .Parity = "E", .DataBits = 7});
  EXPECT_TRUE(session.IsOwnUnit);
  EXPECT_EQ(session.NumberOfChannels, 22);
  EXPECT_EQ(session.BaudRate, 19200);
  EXPECT_EQ(session.Parity, "N");
  EXPECT_EQ(session.DataBits, 8);
  EXPECT_EQ(session.Terminator, "\r\n");
}

TEST(LineOf, IsThatOfTheChoicesUnlessAnOwnUnitFixesIt) {
  HardwareChoices choices{
      .SerialData = "Data Taker a", .BaudRate = 2400, .Parity = "E", .DataBits = 7, .StopBits = "2", .Handshake = 1};
  EXPECT_EQ(LineOf(choices, "/dev/ttyS1"), (SerialSettings{"/dev/ttyS1", 2400, "E", 7, "2", Handshake::XonXoff}));
  choices.SerialData = "KESTA version 3";
  EXPECT_EQ(LineOf(choices, "/dev/ttyS1"), (SerialSettings{"/dev/ttyS1", 19200, "N", 8, "1", Handshake::Rts}));
  choices.SerialData = "KESTA version 5";
  EXPECT_EQ(LineOf(choices, "/dev/ttyS1"), (SerialSettings{"/dev/ttyS1", 19200, "N", 8, "1", Handshake::None}));
}

TEST(PortEntries, TellTheDeviceBehindEachOfFourNumbersAndWhetherItIsThere) {
  const test::TemporaryFolder folder;
  SettingsStore settings(folder.File("settings"));
  std::filesystem::create_symlink("/dev/null", folder.File("ttyS0"));
  folder.Touch("ttyS1");  // a file by that name is no port
  settings.Save("VELK2", "Protocol", "PortDevice3", folder.File("unit"));
  std::filesystem::create_symlink("/dev/null", folder.File("unit"));
  const auto entries = PortEntries(settings, folder.Path().string());
  ASSERT_EQ(entries.size(), 4U);
  for (int i = 0; i < 4; ++i) EXPECT_EQ(entries[static_cast<std::size_t>(i)].number, i + 1);
  EXPECT_EQ(entries[0].device, folder.File("ttyS0"));
  EXPECT_TRUE(entries[0].exists);
  EXPECT_EQ(entries[1].device, folder.File("ttyS1"));
  EXPECT_FALSE(entries[1].exists);
  EXPECT_EQ(entries[2].device, folder.File("unit"));
  EXPECT_TRUE(entries[2].exists);
  EXPECT_EQ(entries[3].device, folder.File("ttyS3"));
  EXPECT_FALSE(entries[3].exists);
}

TEST(ReadParameterCount, TakesWholeNumbersFrom0To64) {
  for (const auto& [typed, value] :
       std::initializer_list<std::pair<const char*, int>>{{"0", 0}, {"1", 1}, {"64", 64}, {" 18 ", 18}, {"007", 7}}) {
    const NumberRead read = ReadParameterCount(typed, 0);
    EXPECT_EQ(read.fault.English(), "") << typed;
    EXPECT_EQ(read.value, value) << typed;
  }
  for (const char* typed : {"", " ", "65", "-1", "3.5", "3,5", "4 5", "1e1", "abc", "12a", "99999999999999999999"}) {
    EXPECT_EQ(ReadParameterCount(typed, 0).fault.English(), "The number of parameters is a whole number from 0 to 64.")
        << typed;
  }
}

TEST(ReadParameterCount, LeavesRoomForTheAdditionalParameters) {
  EXPECT_EQ(ReadParameterCount("60", 4).fault.English(), "");
  EXPECT_EQ(ReadParameterCount("61", 4).fault.English(),
            "Parameters and additional parameters together are more than 64. Additional parameters: 4");
  EXPECT_EQ(ReadParameterCount("0", 64).fault.English(), "");
}

TEST(ReadSensitivity, TakesWhatTheStoredNumberHolds) {
  EXPECT_EQ(ReadSensitivity("0").value, 0);
  EXPECT_EQ(ReadSensitivity("20").value, 20);
  EXPECT_EQ(ReadSensitivity("32767").value, 32767);
  EXPECT_EQ(ReadSensitivity("32767").fault.English(), "");
  for (const char* typed : {"", "-1", "32768", "0.5", "x"}) {
    EXPECT_EQ(ReadSensitivity(typed).fault.English(),
              "The sensitivity criterion is a whole number from 0 to 32767, in percent of the scale span.")
        << typed;
  }
}

TEST(FillUnnamedParameters, GivesThoseWithoutANameWhatAFreshChannelHas) {
  Session session;
  session.Parameters[1].name = "Pressure";
  session.Parameters[1].format = "#0.0";
  session.Parameters[2].CommandString = "left over";
  session.Parameters[2].loweralarm = "3";
  session.Parameters[2].upperalarm = "";
  session.Parameters[2].Offset = 4;
  FillUnnamedParameters(session.Parameters, 3, test::English());
  EXPECT_EQ(session.Parameters[1].name, "Pressure");
  EXPECT_EQ(session.Parameters[1].format, "#0.0");
  EXPECT_EQ(session.Parameters[1].units, "");
  for (int i = 2; i <= 3; ++i) {
    const Parameter& filled = session.Parameters[static_cast<std::size_t>(i)];
    EXPECT_EQ(filled.name, "Parameter " + std::to_string(i));
    EXPECT_EQ(filled.units, "Units");
    EXPECT_EQ(filled.format, "#0.000");
    EXPECT_EQ(filled.FormIndex, i);
    EXPECT_TRUE(filled.GraphVisible);
    EXPECT_EQ(filled.CommandString, "");
    EXPECT_EQ(filled.loweralarm, "None");
    EXPECT_EQ(filled.upperalarm, "None");
    EXPECT_EQ(filled.Gain, 1);
  }
  EXPECT_EQ(session.Parameters[2].Offset, 4);
  EXPECT_EQ(session.Parameters[4].name, "");
}

TEST(FillUnnamedParameters, ReachesTheLastOf64AndTouchesNoneForNoParameters) {
  Session session;
  FillUnnamedParameters(session.Parameters, 0, test::English());
  EXPECT_EQ(session.Parameters[1].name, "");
  FillUnnamedParameters(session.Parameters, 64, test::English());
  EXPECT_EQ(session.Parameters[64].name, "Parameter 64");
  EXPECT_EQ(session.Parameters[64].FormIndex, 64);
}

}  // namespace
}  // namespace velk
