// From Edit Settings, Serial Port through the real windows to the link, the settings file and the next run.

#include <gtest/gtest.h>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <filesystem>
#include <fstream>

#include "shell/shell_rig.h"
#include "support/window_driving.h"

namespace velk {
namespace {

using test::Click;
using test::FindControl;

constexpr const char* kContinue = "Continue with current serial port settings?";

/// What is done to a window once it stands.
struct Step {
  const char* window;
  std::function<void(QDialog&)> act;
};

class SerialPortMenu : public testing::Test {
 protected:
  /// Has `protocol` stored, from an earlier run.
  void Store(const std::string& protocol) {
    rig.settings->Save("VELK2", "Protocol", "SerialData", protocol);
    rig.settings->Flush();
  }
  void Start(const std::string& protocol) {
    Store(protocol);
    if (protocol == "Any Serial Data") rig.dialogs.Expect(kContinue, Answer::Yes);
    rig.Start();
  }
  std::string Stored(const char* key) {
    SettingsStore store(rig.folder.File("settings"));
    return store.Get("VELK2", "Protocol", key, "");
  }

  /// Acts on the windows of the menu item, one behind the other.
  void EditSerialPort(const std::vector<Step>& steps) {
    Drive(steps, [this] { rig.Choose("mnuEditSerialPort"); });
  }
  void Drive(const std::vector<Step>& steps, const std::function<void()>& open) {
    for (const Step& step : steps) rig.windows.Then(step.window, step.act);
    open();
    EXPECT_TRUE(rig.windows.IsDone());
  }

  static QString Shown(const QDialog& window, const char* list) {
    return FindControl<QComboBox>(window, list)->currentText();
  }
  static void Pick(const QDialog& window, const char* list, int place) {
    FindControl<QComboBox>(window, list)->setCurrentIndex(place);
  }
  static Step PickProtocol(int place) {
    return {"HardwareSettings", [place](QDialog& window) {
              Pick(window, "cboSerialData", place);
              Click(window, "cmdOK");
            }};
  }
  static Step Cancel(const char* window) {
    return {window, [](QDialog& shown) { Click(shown, "cmdCancel"); }};
  }
  static Step Ok(const char* window) {
    return {window, [](QDialog& shown) { Click(shown, "cmdOK"); }};
  }
  static Step Separators(const char* delimiter, const char* terminator) {
    return {"FormattedData", [delimiter, terminator](QDialog& window) {
              FindControl<QRadioButton>(window, delimiter)->click();
              FindControl<QRadioButton>(window, terminator)->click();
              Click(window, "cmdOK");
            }};
  }

  test::ShellRig rig;
};

// --- Each entry of the protocol list ---

struct Entry {
  int place;
  const char* shown;
  const char* stored;  ///< where another protocol was stored before
  const char* next;    ///< the window that it leads to
  bool lineDriver;     ///< opens the line as soon as the dialogs are left
  bool fixedPort;
};

constexpr const char* kBefore = "S&S DAS 104";

constexpr Entry kEntries[] = {
    {0, "National Oil Well PLC", "National Oil Well PLC", "FormattedData", true, false},
    {1, "National Oil Well PLC", "National Oil Well PLC", "FormattedData", true, false},
    {2, "sent when requested", "sent when requested", "RequestedData", false, false},
    {3, "intermittent and by request", "intermittent and by request", "Intermittent", false, false},
    {4, "via dll function call", "via dll function call", nullptr, false, false},
    {5, "KESTA version 3", "KESTA version 3", nullptr, true, true},
    {6, "KESTA version 4", "KESTA version 4", nullptr, true, true},
    {7, "KESTA version 5", "KESTA version 5", nullptr, true, true},
    {8, "LUMO version A", "LUMO version A", nullptr, true, true},
    {9, "LUMO version B", "LUMO version B", nullptr, true, true},
    {10, "S&S DAS 104", "S&S DAS 104", "FormattedData", false, false},
    {11, "Data Taker a", "Data Taker a", "FormattedData", false, false},
    {12, "Data Taker b", "Data Taker b", "FormattedData", false, false},
    {13, "HPT - Honeywell eZtrend", "HPT - Honeywell eZtrend", "frmHPTHoneywellEZtrend", false, false},
    {14, "ORBEN LUMO through HMI", "ORBEN LUMO through HMI", "frmHPTHoneywellEZtrend", false, false},
    {15, kBefore, kBefore, "FormattedData", false, false},
};

class EachEntry : public SerialPortMenu, public testing::WithParamInterface<Entry> {
 protected:
  static Step ChooseAll(const Entry& entry) {
    return {"HardwareSettings", [entry](QDialog& window) {
              Pick(window, "cboSerialData", entry.place);
              EXPECT_EQ(Shown(window, "cboSerialData"), entry.shown);
              Pick(window, "cboSampling", 1);
              Pick(window, "cboSamplingUnits", 1);
              FindControl<QLineEdit>(window, "txtNumberOfParameters")->setText("2");
              FindControl<QLineEdit>(window, "txtSensitivityCriterion")->setText("33");
              Pick(window, "cboPort", 2);
              if (!entry.fixedPort) {
                Pick(window, "cboBaudRate", 0);
                Pick(window, "cboParity", 3);
                Pick(window, "cboDataBits", 2);
                Pick(window, "cboStopBits", 2);
                Pick(window, "cboHandshake", 1);
              }
              Click(window, "cmdOK");
            }};
  }
  static Step FindAllAgain(const Entry& entry) {
    return {"HardwareSettings", [entry](QDialog& window) {
              EXPECT_EQ(Shown(window, "cboSerialData"), entry.shown);
              EXPECT_EQ(Shown(window, "cboSampling"), "5");
              EXPECT_EQ(Shown(window, "cboSamplingUnits"), "minutes");
              EXPECT_EQ(FindControl<QLineEdit>(window, "txtNumberOfParameters")->text(), "2");
              EXPECT_EQ(FindControl<QLineEdit>(window, "txtSensitivityCriterion")->text(), "33");
              EXPECT_EQ(Shown(window, "cboPort"), "Com Port 3");
              EXPECT_EQ(Shown(window, "cboBaudRate"), entry.fixedPort ? "19200" : "2400");
              EXPECT_EQ(Shown(window, "cboParity"), entry.fixedPort ? "None" : "Odd");
              EXPECT_EQ(Shown(window, "cboDataBits"), entry.fixedPort ? "8" : "7");
              EXPECT_EQ(Shown(window, "cboStopBits"), entry.fixedPort ? "1" : "2");
              if (!entry.fixedPort) {
                EXPECT_EQ(Shown(window, "cboHandshake"), "Xon/Xoff");
              }
              EXPECT_EQ(FindControl<QWidget>(window, "fraParity")->isEnabled(), !entry.fixedPort);
              Click(window, "cmdOK");
            }};
  }
  /// Chooses in the window that the protocol leads to; on Cancel looks whether it is found again.
  static Step Next(const char* name, bool again) {
    return {name, [name = QString(name), again](QDialog& window) {
              if (name == "RequestedData")
                Commands(window, again);
              else if (name == "frmHPTHoneywellEZtrend")
                Address(window, again);
              else
                Options(window, again);
              Click(window, again ? "cmdCancel" : "cmdOK");
            }};
  }
  static void Options(QDialog& window, bool again) {
    for (const char* option : {"optDelimiter_3", "optTerminator_3"}) {
      auto* button = FindControl<QRadioButton>(window, option);
      if (again) {
        EXPECT_TRUE(button->isChecked()) << option;
      }
      button->click();
    }
  }
  static void Commands(QDialog& window, bool again) {
    auto* command = FindControl<QLineEdit>(window, "txtCommand_2");
    auto* cr = FindControl<QAbstractButton>(window, "chkCommandCR_2");
    if (again) {
      EXPECT_EQ(command->text(), "READ 2");
    }
    if (again) {
      EXPECT_TRUE(cr->isChecked());
    }
    command->setText("READ 2");
    if (!again) cr->click();
  }
  static void Address(QDialog& window, bool again) {
    auto* address = FindControl<QLineEdit>(window, "txtIPAddress");
    auto* page = FindControl<QLineEdit>(window, "txtHTML");
    if (again) {
      EXPECT_EQ(address->text(), "10.0.0.7");
    }
    if (again) {
      EXPECT_EQ(page->text(), "values.htm");
    }
    address->setText("10.0.0.7");
    page->setText("values.htm");
  }
};

TEST_P(EachEntry, IsLedThroughSetsUpTheLinkAndIsFoundAgainAfterARestart) {
  const Entry& entry = GetParam();
  Start(kBefore);
  std::vector<Step> choose{ChooseAll(entry)}, look{FindAllAgain(entry)};
  if (entry.next != nullptr) {
    choose.push_back(Next(entry.next, false));
    look.push_back(Next(entry.next, true));
  }
  EditSerialPort(choose);
  EXPECT_EQ(rig.State().SerialData, entry.stored);
  EXPECT_EQ(Stored("SerialData"), entry.stored);
  EXPECT_EQ(rig.State().NumberOfParameters, 2);
  EXPECT_EQ(rig.State().IsOwnUnit, entry.fixedPort);
  EXPECT_DOUBLE_EQ(rig.State().SamplingRate, 300.0 / 86400);
  EXPECT_FALSE(rig.plainPort.open);
  EXPECT_EQ(rig.linePort.open, entry.lineDriver);
  EXPECT_EQ(rig.Window().ButtonImage("connect"), entry.lineDriver ? image::ConnectOn : image::ConnectOff);
  rig.clock.Advance(1100);
  const bool networked = entry.place == 13 || entry.place == 14;
  EXPECT_EQ(rig.pages->asked.size(), networked ? 2u : 0u);
  if (networked) {
    EXPECT_EQ(rig.pages->asked[0], "10.0.0.7/values.htm");
  }

  if (rig.State().SerialData == "National Oil Well PLC") rig.dialogs.Expect(kContinue, Answer::Yes);
  rig.Start();
  EXPECT_EQ(rig.linePort.open, entry.lineDriver);
  if (entry.next != nullptr) {
    EditSerialPort(look);
    return;
  }
  EditSerialPort(look);  // no further window: O.K. takes the same choices once more
  EXPECT_EQ(rig.State().SerialData, entry.stored);
}

INSTANTIATE_TEST_SUITE_P(Places, EachEntry, testing::ValuesIn(kEntries),
                         [](const auto& each) { return "Place" + std::to_string(each.param.place); });

TEST_F(SerialPortMenu, FindsTheStoredFirstAndLastEntryAgainWhereTheyAreNotTouched) {
  for (const char* stored : {"formatted and at regular intervals", "Any Serial Data"}) {
    Store(stored);
    rig.dialogs.Expect(kContinue, Answer::Yes);
    rig.Start();
    EditSerialPort({{"HardwareSettings",
                     [stored](QDialog& window) {
                       EXPECT_EQ(Shown(window, "cboSerialData"), stored);
                       Click(window, "cmdOK");
                     }},
                    Ok("FormattedData")});
    EXPECT_EQ(Stored("SerialData"), stored);
    EXPECT_TRUE(rig.linePort.open) << "opened without the question";
  }
}

// --- Cancel ---

TEST_F(SerialPortMenu, CancelOnAnyLevelLeavesTheLinkAndTheSettingsAsTheyWere) {
  rig.Start();
  const std::size_t openings = rig.linePort.openings.size();
  EditSerialPort({Cancel("HardwareSettings")});
  EditSerialPort({PickProtocol(11), Cancel("FormattedData")});
  EditSerialPort({PickProtocol(2), Cancel("RequestedData")});
  EditSerialPort({PickProtocol(3), Cancel("Intermittent")});
  EditSerialPort({PickProtocol(14), Cancel("frmHPTHoneywellEZtrend")});
  EXPECT_EQ(rig.State().SerialData, "KESTA version 3");
  EXPECT_EQ(Stored("SerialData"), "KESTA version 3");
  EXPECT_TRUE(rig.linePort.open);
  EXPECT_EQ(rig.linePort.openings.size(), openings) << "the link was not touched";
}

// --- What stood before ---

TEST_F(SerialPortMenu, EndsTheLineDriverAndItsWatchdogForAProtocolOfThePlainPort) {
  Start("Any Serial Data");
  ASSERT_TRUE(rig.linePort.open);
  EditSerialPort({PickProtocol(2), Ok("RequestedData")});
  const std::size_t openings = rig.linePort.openings.size();
  EXPECT_FALSE(rig.linePort.open);
  rig.clock.Advance(60'000);
  EXPECT_EQ(rig.linePort.openings.size(), openings);
}

TEST_F(SerialPortMenu, EndsTheFetchingOfPagesForAnyOtherProtocol) {
  Start("HPT - Honeywell eZtrend");
  rig.clock.Advance(1100);
  EXPECT_EQ(rig.pages->asked.size(), 2u);
  EditSerialPort({PickProtocol(14), Ok("frmHPTHoneywellEZtrend")});
  rig.clock.Advance(1100);
  EXPECT_EQ(rig.pages->asked.size(), 4u) << "one of both timers";
  EditSerialPort({PickProtocol(12), Ok("FormattedData")});
  rig.clock.Advance(10'000);
  EXPECT_EQ(rig.pages->asked.size(), 4u);
}

/// A recorder's page, for Timer4, and an own unit's, for Timer5.
class EachNetworkedUnit : public SerialPortMenu, public testing::WithParamInterface<const char*> {};

TEST_P(EachNetworkedUnit, RestsItsFetchingWhileTheDialogsStandAndNoBoxOfAPageUnderWayComes) {
  Start(GetParam());
  rig.pages->fault = PageFault::NoConnection;
  std::size_t askedMeanwhile = 0;
  rig.pages->meanwhile = [&] {
    EditSerialPort({{"HardwareSettings",
                     [&](QDialog& window) {
                       rig.clock.Advance(5000);
                       Click(window, "cmdOK");
                     }},
                    {"frmHPTHoneywellEZtrend", [&](QDialog& window) {
                       rig.clock.Advance(5000);
                       askedMeanwhile = rig.pages->asked.size();
                       Click(window, "cmdCancel");
                     }}});
    rig.pages->fault.reset();
  };
  rig.clock.Advance(501);
  EXPECT_EQ(askedMeanwhile, 1u);
  rig.clock.Advance(1000);
  EXPECT_EQ(rig.pages->asked.size(), 3u) << "Cancel lets the timer run on";
}

INSTANTIATE_TEST_SUITE_P(, EachNetworkedUnit, testing::Values("HPT - Honeywell eZtrend", "ORBEN LUMO through HMI"),
                         [](const auto& unit) { return std::string(unit.param).substr(0, 3); });

TEST_F(SerialPortMenu, SetsTheLinkUpThoughTheSettingsCannotBeSaved) {
  rig.Start();
  std::filesystem::remove_all(rig.folder.File("settings"));
  std::ofstream(rig.folder.File("settings")) << "a file where the folder should be";
  rig.dialogs.Expect(" - mnuEditSerialPort_Click", Answer::Cancel);
  EditSerialPort({PickProtocol(8)});
  EXPECT_EQ(rig.State().SerialData, "LUMO version A");
  EXPECT_TRUE(rig.linePort.open);
  std::filesystem::remove(rig.folder.File("settings"));
}

constexpr const char* kNewStart = "takes full effect after a new start";

TEST_F(SerialPortMenu, SavesTheSeparatorsThatWereChosenBehindAnOwnUnitWhichKeepsItsOwn) {
  rig.Start();
  rig.dialogs.Expect(kNewStart, Answer::No);
  EditSerialPort({PickProtocol(1), Separators("optDelimiter_2", "optTerminator_1")});
  EXPECT_TRUE(rig.Window().isVisible());
  EXPECT_FALSE(rig.application->StartsAnew());
  rig.Connect();
  EXPECT_EQ(rig.State().Delimiter, " ");
  EXPECT_EQ(rig.State().Terminator, "\r\n");
  rig.Press("Stop");
  rig.dialogs.Expect("Are you sure you want to exit", Answer::Yes);
  rig.Choose("mnuFileExit");
  EXPECT_EQ(Stored("Delimiter"), ",");
  EXPECT_EQ(Stored("Terminator"), "\n");

  rig.dialogs.Expect(kContinue, Answer::Yes);
  rig.Start();
  EXPECT_EQ(rig.State().Delimiter, ",");
  EXPECT_EQ(rig.State().Terminator, "\n");
  EXPECT_FALSE(rig.State().IsOwnUnit);
}

TEST_F(SerialPortMenu, ShowsTheSeparatorsThatWereChosenBehindAnOwnUnitAgain) {
  rig.Start();
  rig.dialogs.Expect(kNewStart, Answer::No);
  EditSerialPort({PickProtocol(1), Separators("optDelimiter_2", "optTerminator_1")});
  EditSerialPort({PickProtocol(1), {"FormattedData", [](QDialog& window) {
                                      EXPECT_TRUE(FindControl<QRadioButton>(window, "optDelimiter_2")->isChecked());
                                      EXPECT_TRUE(FindControl<QRadioButton>(window, "optTerminator_1")->isChecked());
                                      Click(window, "cmdCancel");
                                    }}});
  rig.dialogs.Expect(kNewStart, Answer::No);
  EditSerialPort({PickProtocol(1), Separators("optDelimiter_3", "optTerminator_0")});
  EXPECT_EQ(Stored("Delimiter"), ";") << "the latest choice";
  EXPECT_EQ(Stored("Terminator"), "\r");
  EditSerialPort({PickProtocol(6)});
  EXPECT_EQ(Stored("Delimiter"), " ") << "an own unit again, which has its own";
}

TEST_F(SerialPortMenu, EndsTheProgramForANewStartWhereTheOperatorWantsOne) {
  rig.Start();
  rig.dialogs.Expect(kNewStart, Answer::Yes);
  EditSerialPort({PickProtocol(2), Ok("RequestedData")});
  EXPECT_TRUE(rig.application->StartsAnew());
  EXPECT_FALSE(rig.Window().isVisible());
  EXPECT_EQ(Stored("SerialData"), "sent when requested");
}

// --- At start-up ---

TEST_F(SerialPortMenu, NoAtStartUpLeadsToTheWindowsAndOpensNothingOnCancel) {
  Store("Any Serial Data");
  rig.dialogs.Expect(kContinue, Answer::No);
  Drive({Cancel("HardwareSettings")}, [this] { rig.Start(); });
  EXPECT_FALSE(rig.linePort.open);
  EXPECT_TRUE(rig.linePort.openings.empty());

  rig.dialogs.Expect(kContinue, Answer::No);
  Drive({PickProtocol(1), Ok("FormattedData")}, [this] { rig.Start(); });
  EXPECT_EQ(rig.State().SerialData, "National Oil Well PLC");
  EXPECT_TRUE(rig.linePort.open) << "not asked a second time";
}

TEST_F(SerialPortMenu, ShowsTheDeviceBehindEachNumberAndWhetherItIsThere) {
  rig.settings->Save("VELK2", "Protocol", "PortDevice1", "/dev/null");
  rig.settings->Save("VELK2", "Protocol", "PortDevice2", rig.folder.File("unit"));
  rig.settings->Flush();
  rig.Start();
  const auto label = [](const QDialog& window, const char* name) { return FindControl<QLabel>(window, name)->text(); };
  EditSerialPort({{"HardwareSettings", [&](QDialog& window) {
                     EXPECT_EQ(label(window, "lblDevice_1"), "1: /dev/null - present");
                     EXPECT_TRUE(label(window, "lblDevice_2").endsWith(" - not present"));
                     window.reject();
                   }}});
  std::filesystem::create_symlink("/dev/null", rig.folder.File("unit"));
  EditSerialPort({{"HardwareSettings", [&](QDialog& window) {
                     EXPECT_TRUE(label(window, "lblDevice_2").endsWith(" - present")) << "looked for anew";
                     window.reject();
                   }}});
}

}  // namespace
}  // namespace velk
