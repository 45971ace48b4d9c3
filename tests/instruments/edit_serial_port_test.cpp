#include "instruments/setup/edit_serial_port.h"

#include <gtest/gtest.h>

#include "base/errors.h"
#include "instruments/table/protocols.h"
#include "platform/settings/settings.h"
#include "support/fake_clock.h"
#include "support/scripted_dialogs.h"
#include "support/temporary_folder.h"

namespace velk {
namespace {

/// Answers with what the test says, and notes what it was asked.
class ScriptedProtocolDialogs : public ProtocolDialogs {
 public:
  std::optional<HardwareChoices> AskHardwareSettings(const HardwareQuestion& question) override {
    asked.push_back("HardwareSettings");
    hardware = question;
    return choices;
  }
  std::optional<Separators> AskFormattedData(const Separators& present) override {
    asked.push_back("FormattedData");
    shown = present;
    return separators;
  }
  std::optional<Separators> AskIntermittent(const Separators& present) override {
    asked.push_back("Intermittent");
    shown = present;
    return separators;
  }
  std::optional<std::vector<ParameterCommands>> AskRequestedData(
      const std::vector<ParameterCommands>& present) override {
    asked.push_back("RequestedData");
    listed = present;
    return commands;
  }
  std::optional<UnitAddress> AskEthernetConfiguration(const UnitAddress& present) override {
    asked.push_back("frmHPTHoneywellEZtrend");
    shownAddress = present;
    return address;
  }

  std::optional<HardwareChoices> choices;
  std::optional<Separators> separators;
  std::optional<std::vector<ParameterCommands>> commands;
  std::optional<UnitAddress> address;

  std::vector<std::string> asked;
  HardwareQuestion hardware;
  Separators shown;
  std::vector<ParameterCommands> listed;
  UnitAddress shownAddress;
};

class EditSerialPort : public testing::Test {
 protected:
  EditSerialPort() {
    session.SerialData = "Any Serial Data";
    session.Delimiter = ";";
    session.Terminator = "\n";
    session.FormattedLineLength = 77;
    session.daqIPAddress = "10.0.0.9";
    session.daqHTML = "pens.htm";
    session.Parameters[1].name = "Flow";
    session.NumberOfFormulae = 3;
  }

  void Click() {
    mnuEditSerialPort_Click(session, platform, windows, [this] {
      ++links;
      serialDataAtLink = session.SerialData;
    });
  }

  std::optional<std::string> StoredCount() { return settings.Find("VELK2", "Parameters", "NumberOfParameters"); }

  test::TemporaryFolder folder;
  Gate gate;
  test::FakeClock clock{gate};
  test::ScriptedDialogs dialogs{gate};
  SettingsStore settings{folder.File("settings")};
  Platform platform{clock, gate, dialogs, settings, test::English()};
  Session session;
  ScriptedProtocolDialogs windows;
  int links = 0;
  std::string serialDataAtLink;
};

TEST_F(EditSerialPort, OpensWithWhatTheSessionHolds) {
  session.NumberOfParameters = 6;
  session.BaudRate = 4800;
  Click();
  EXPECT_EQ(windows.asked, std::vector<std::string>{"HardwareSettings"});
  EXPECT_EQ(windows.hardware.choices.SerialData, "Any Serial Data");
  EXPECT_EQ(windows.hardware.choices.NumberOfParameters, 6);
  EXPECT_EQ(windows.hardware.choices.BaudRate, 4800);
  EXPECT_EQ(windows.hardware.formulae, 3);
  EXPECT_EQ(windows.hardware.ports.size(), 4U);
}

TEST_F(EditSerialPort, TakesAFormattedProtocolOver) {
  windows.choices = {.SerialData = "National Oil Well PLC", .NumberOfParameters = 2, .PortNumber = 4, .BaudRate = 2400};
  windows.separators = {",", "\r\n"};
  Click();
  EXPECT_EQ(windows.asked, (std::vector<std::string>{"HardwareSettings", "FormattedData"}));
  EXPECT_EQ(windows.shown.Delimiter, ";");
  EXPECT_EQ(windows.shown.Terminator, "\n");
  EXPECT_EQ(session.SerialData, "National Oil Well PLC");
  EXPECT_EQ(session.PortNumber, 4);
  EXPECT_EQ(session.BaudRate, 2400);
  EXPECT_EQ(session.Delimiter, ",");
  EXPECT_EQ(session.Terminator, "\r\n");
  EXPECT_EQ(session.FormattedLineLength, 0);
  EXPECT_EQ(session.Parameters[1].name, "Flow");
  EXPECT_EQ(session.Parameters[2].name, "Parameter 2");
  EXPECT_EQ(StoredCount(), "2");
  EXPECT_EQ(links, 1);
  EXPECT_EQ(serialDataAtLink, "National Oil Well PLC");
}

TEST_F(EditSerialPort, ShowsTheBlankAndCrWhereNothingIsStored) {
  session.Delimiter = "";
  session.Terminator = "";
  windows.choices = {.SerialData = "Data Taker b"};
  Click();
  EXPECT_EQ(windows.shown.Delimiter, " ");
  EXPECT_EQ(windows.shown.Terminator, "\r");
}

TEST_F(EditSerialPort, TakesTheIntermittentProtocolOver) {
  windows.choices = {.SerialData = "intermittent and by request"};
  windows.separators = {"\t", "\r"};
  Click();
  EXPECT_EQ(windows.asked, (std::vector<std::string>{"HardwareSettings", "Intermittent"}));
  EXPECT_EQ(session.Delimiter, "\t");
  EXPECT_EQ(session.Terminator, "\r");
  EXPECT_EQ(session.FormattedLineLength, 77);
  EXPECT_EQ(links, 1);
}

TEST_F(EditSerialPort, ListsTheParametersThatWereJustChosenForAnInstrumentThatIsAsked) {
  session.NumberOfParameters = 1;
  session.Parameters[1].CommandString = "F?\r";
  windows.choices = {.SerialData = "sent when requested", .NumberOfParameters = 2};
  windows.commands = {{"Flow", "G?\r\n", "G="}, {"Parameter 2", "H?", ""}};
  Click();
  EXPECT_EQ(windows.asked, (std::vector<std::string>{"HardwareSettings", "RequestedData"}));
  ASSERT_EQ(windows.listed.size(), 2U);
  EXPECT_EQ(windows.listed[0].CommandString, "F?\r");
  EXPECT_EQ(windows.listed[1].name, "Parameter 2");
  EXPECT_EQ(session.Parameters[1].CommandString, "G?\r\n");
  EXPECT_EQ(session.Parameters[1].ResetCommand, "G=");
  EXPECT_EQ(session.CurrentParameters[2].CommandString, "H?");
  EXPECT_EQ(session.Delimiter, ";");
  EXPECT_EQ(StoredCount(), "2");
}

TEST_F(EditSerialPort, TakesTheAddressOfANetworkedUnitOver) {
  windows.choices = {.SerialData = "ORBEN LUMO through HMI"};
  windows.address = {"10.0.0.42", "auto/001/"};
  Click();
  EXPECT_EQ(windows.asked, (std::vector<std::string>{"HardwareSettings", "frmHPTHoneywellEZtrend"}));
  EXPECT_EQ(windows.shownAddress.daqIPAddress, "10.0.0.9");
  EXPECT_EQ(windows.shownAddress.daqHTML, "pens.htm");
  EXPECT_EQ(session.daqIPAddress, "10.0.0.42");
  EXPECT_EQ(session.daqHTML, "auto/001/");
  EXPECT_EQ(links, 1);
}

TEST_F(EditSerialPort, RunsTheConstantsOfAnOwnUnitAndAsksNothingMore) {
  windows.choices = {.SerialData = "KESTA version 3", .BaudRate = 2400, .Parity = "E"};
  Click();
  EXPECT_EQ(windows.asked, std::vector<std::string>{"HardwareSettings"});
  EXPECT_TRUE(session.IsOwnUnit);
  EXPECT_EQ(session.BaudRate, 19200);
  EXPECT_EQ(session.Handshake, 2);
  EXPECT_EQ(session.Parity, "N");
  EXPECT_EQ(session.Delimiter, " ");
  EXPECT_EQ(session.Terminator, "\r\n");
  EXPECT_EQ(links, 1);
}

TEST_F(EditSerialPort, TakesAProtocolWithoutADriver) {
  windows.choices = {.SerialData = "via dll function call"};
  Click();
  EXPECT_EQ(windows.asked, std::vector<std::string>{"HardwareSettings"});
  EXPECT_EQ(session.SerialData, "via dll function call");
  EXPECT_EQ(session.Delimiter, ";");
  EXPECT_EQ(links, 1);
}

TEST_F(EditSerialPort, LeavesAllAsItWasOnCancelInAnyDialog) {
  for (const std::string_view chosen :
       {protocol::DataTakerA, protocol::Intermittent, protocol::SentWhenRequested, protocol::HoneywellEZtrend}) {
    windows.choices = {.SerialData = std::string(chosen), .NumberOfParameters = 9, .PortNumber = 2, .BaudRate = 2400};
    windows.asked.clear();
    Click();
    EXPECT_EQ(windows.asked.size(), 2U) << chosen;
    EXPECT_EQ(session.SerialData, "Any Serial Data");
    EXPECT_EQ(session.NumberOfParameters, 1);
    EXPECT_EQ(session.PortNumber, 1);
    EXPECT_EQ(session.BaudRate, 9600);
    EXPECT_EQ(session.Delimiter, ";");
    EXPECT_EQ(session.Terminator, "\n");
    EXPECT_EQ(session.FormattedLineLength, 77);
    EXPECT_EQ(session.daqIPAddress, "10.0.0.9");
    EXPECT_EQ(session.Parameters[2].name, "");
    EXPECT_FALSE(session.IsOwnUnit);
    EXPECT_EQ(StoredCount(), std::nullopt);
    EXPECT_EQ(links, 0);
  }
}

TEST_F(EditSerialPort, OffersToTryTheLinkAgain) {
  windows.choices = {.SerialData = "LUMO version A"};
  dialogs.Expect(" - mnuEditSerialPort_Click", Answer::Retry);
  int tries = 0;
  mnuEditSerialPort_Click(session, platform, windows, [&] {
    if (++tries == 1) throw RuntimeError(ErrorNumber::DeviceUnavailable);
  });
  EXPECT_EQ(tries, 2);
  EXPECT_EQ(windows.asked.size(), 1U);
  EXPECT_EQ(session.SerialData, "LUMO version A");
}

}  // namespace
}  // namespace velk
