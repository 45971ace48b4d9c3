#include "instruments/setup/edit_serial_port.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>

#include "base/errors.h"
#include "instruments/table/protocols.h"
#include "instruments/windows/formatted_data.h"
#include "instruments/windows/frm_hpt_honeywell_ez_trend.h"
#include "instruments/windows/hardware_settings.h"
#include "instruments/windows/intermittent.h"
#include "instruments/windows/requested_data.h"
#include "instruments/windows/serial_port_command.h"
#include "instruments/windows_fixture.h"
#include "platform/settings/settings.h"
#include "support/fake_clock.h"
#include "support/host.h"
#include "support/temporary_folder.h"
#include "support/window_script.h"

namespace velk {
namespace {

using test::Click;
using test::FindControl;

/// Does at the real windows what the test says, leaves those it has no answer for by Cancel, and notes what they
/// showed.
class Operator {
 public:
  /// The windows to come, in their order.
  void Foresee(const std::vector<const char*>& names) {
    for (const char* name : names) script_.Then(name, [this](QDialog& window) { At(window); });
  }

  std::optional<HardwareChoices> choices;
  std::optional<Separators> separators;
  std::optional<std::vector<ParameterCommands>> commands;
  std::optional<UnitAddress> address;

  std::vector<std::string> asked;
  HardwareChoices hardware;
  int ports = 0;
  Separators shown;
  std::vector<ParameterCommands> listed;
  UnitAddress shownAddress;

 private:
  void At(QDialog& window) {
    asked.push_back(window.objectName().toStdString());
    if (auto* hardwareSettings = qobject_cast<HardwareSettings*>(&window)) return AtHardware(*hardwareSettings);
    if (auto* formatted = qobject_cast<FormattedData*>(&window)) return AtSeparators(*formatted);
    if (auto* intermittent = qobject_cast<Intermittent*>(&window)) return AtSeparators(*intermittent);
    if (auto* requested = qobject_cast<RequestedData*>(&window)) return AtCommands(*requested);
    AtAddress(dynamic_cast<frmHPTHoneywellEZtrend&>(window));
  }
  void AtHardware(HardwareSettings& window) {
    hardware = window.Answer();
    ports = FindControl<QComboBox>(window, "cboPort")->count();
    if (!choices) return window.reject();
    const auto pick = [&](const char* list, int place) {
      FindControl<QComboBox>(window, list)->setCurrentIndex(place);
    };
    pick("cboPort", choices->PortNumber - 1);
    pick("cboBaudRate", PlaceOf(kBaudRates, choices->BaudRate));
    pick("cboParity", PlaceOf(kParities, choices->Parity));
    pick("cboSerialData", ProtocolPlace(choices->SerialData));
    FindControl<QLineEdit>(window, "txtNumberOfParameters")->setText(QString::number(choices->NumberOfParameters));
    Click(window, "cmdOK");
  }
  template <class Window>
  void AtSeparators(Window& window) {
    shown = window.Answer();
    if (!separators) return window.reject();
    const auto mark = [&](const std::string& option) { FindControl<QRadioButton>(window, option.c_str())->click(); };
    mark("optDelimiter_" + std::to_string(DelimiterOption(separators->Delimiter)));
    mark("optTerminator_" + std::to_string(*TerminatorOption(separators->Terminator)));
    Click(window, "cmdOK");
  }
  void AtCommands(RequestedData& window) {
    listed = window.Answer();
    if (!commands) return window.reject();
    for (std::size_t i = 0; i < commands->size(); ++i) {
      Type(window, "Command", i + 1, (*commands)[i].CommandString);
      Type(window, "Reset", i + 1, (*commands)[i].ResetCommand);
    }
    Click(window, "cmdOK");
  }
  static void Type(const RequestedData& window, const std::string& what, std::size_t number,
                   const std::string& stored) {
    const CommandText command = SplitCommand(stored);
    const std::string end = "_" + std::to_string(number);
    FindControl<QLineEdit>(window, ("txt" + what + end).c_str())->setText(QString::fromStdString(command.text));
    FindControl<QCheckBox>(window, ("chk" + what + "CR" + end).c_str())->setChecked(command.cr);
    FindControl<QCheckBox>(window, ("chk" + what + "LF" + end).c_str())->setChecked(command.lf);
  }
  void AtAddress(frmHPTHoneywellEZtrend& window) {
    shownAddress = window.Answer();
    if (!address) return window.reject();
    FindControl<QLineEdit>(window, "txtIPAddress")->setText(QString::fromStdString(address->daqIPAddress));
    FindControl<QLineEdit>(window, "txtHTML")->setText(QString::fromStdString(address->daqHTML));
    Click(window, "cmdOK");
  }

  test::WindowScript script_;
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

  /// Chooses the menu item, which leads through these windows.
  void Choose(const std::vector<const char*>& names) {
    windows.Foresee(names);
    mnuEditSerialPort_Click(host, session, platform, nullptr, [this] {
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
  WindowHost host{dialogs, test::EnglishWindows()};
  Operator windows;
  int links = 0;
  std::string serialDataAtLink;
};

TEST_F(EditSerialPort, OpensWithWhatTheSessionHolds) {
  session.NumberOfParameters = 6;
  session.BaudRate = 4800;
  Choose({"HardwareSettings"});
  EXPECT_EQ(windows.hardware.SerialData, "Any Serial Data");
  EXPECT_EQ(windows.hardware.NumberOfParameters, 6);
  EXPECT_EQ(windows.hardware.BaudRate, 4800);
  EXPECT_EQ(HardwareQuestionOf(session, settings, nullptr).formulae, 3);
  EXPECT_EQ(windows.ports, 4);
}

TEST_F(EditSerialPort, KnowsTheTemplatesByTheirNamesInTheListWhateverTheLanguage) {
  session.TemplateNames = {"", "Formatted lines (blank, CR)", "Любые строки"};
  settings.Save("VELKFormatted lines (blank, CR)", "Protocol", "SerialData", "formatted and at regular intervals");
  settings.Save("VELKЛюбые строки", "Protocol", "SerialData", "Any Serial Data");
  const std::vector<ListedTemplate> templates = HardwareQuestionOf(session, settings, nullptr).templates;
  const Translation russian = test::In("Russian");
  EXPECT_EQ(
      russian.Translator.In(ProtocolNote(0, PickedSerialData(0, ""), templates)),
      "Строки этого протокола не дают значений. Загрузите шаблон «Formatted lines (blank, CR)» через «Настройки».");
  EXPECT_EQ(ProtocolNote(15, "", templates).English(),
            "This protocol can't be chosen here. Load the template \"Любые строки\" by Edit Settings.");
}

TEST_F(EditSerialPort, TakesAFormattedProtocolOver) {
  windows.choices = {.SerialData = "National Oil Well PLC", .NumberOfParameters = 2, .PortNumber = 4, .BaudRate = 2400};
  windows.separators = {",", "\r\n"};
  Choose({"HardwareSettings", "FormattedData"});
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
  Choose({"HardwareSettings", "FormattedData"});
  EXPECT_EQ(windows.shown.Delimiter, " ");
  EXPECT_EQ(windows.shown.Terminator, "\r");
}

TEST_F(EditSerialPort, TakesTheIntermittentProtocolOver) {
  windows.choices = {.SerialData = "intermittent and by request"};
  windows.separators = {"\t", "\r"};
  Choose({"HardwareSettings", "Intermittent"});
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
  Choose({"HardwareSettings", "RequestedData"});
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
  Choose({"HardwareSettings", "frmHPTHoneywellEZtrend"});
  EXPECT_EQ(windows.shownAddress.daqIPAddress, "10.0.0.9");
  EXPECT_EQ(windows.shownAddress.daqHTML, "pens.htm");
  EXPECT_EQ(session.daqIPAddress, "10.0.0.42");
  EXPECT_EQ(session.daqHTML, "auto/001/");
  EXPECT_EQ(links, 1);
}

TEST_F(EditSerialPort, RunsTheConstantsOfAnOwnUnitAndAsksNothingMore) {
  windows.choices = {.SerialData = "KESTA version 3", .BaudRate = 2400, .Parity = "E"};
  Choose({"HardwareSettings"});
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
  Choose({"HardwareSettings"});
  EXPECT_EQ(session.SerialData, "via dll function call");
  EXPECT_EQ(session.Delimiter, ";");
  EXPECT_EQ(links, 1);
}

TEST_F(EditSerialPort, LeavesAllAsItWasOnCancelInAnyDialog) {
  for (const auto& [chosen, next] : {std::pair(protocol::DataTakerA, "FormattedData"),
                                     {protocol::Intermittent, "Intermittent"},
                                     {protocol::SentWhenRequested, "RequestedData"},
                                     {protocol::HoneywellEZtrend, "frmHPTHoneywellEZtrend"}}) {
    windows.choices = {.SerialData = std::string(chosen), .NumberOfParameters = 9, .PortNumber = 2, .BaudRate = 2400};
    windows.asked.clear();
    Choose({"HardwareSettings", next});
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
  windows.Foresee({"HardwareSettings"});
  mnuEditSerialPort_Click(host, session, platform, nullptr, [&] {
    if (++tries == 1) throw RuntimeError(ErrorNumber::DeviceUnavailable);
  });
  EXPECT_EQ(tries, 2);
  EXPECT_EQ(windows.asked.size(), 1U);
  EXPECT_EQ(session.SerialData, "LUMO version A");
}

}  // namespace
}  // namespace velk
