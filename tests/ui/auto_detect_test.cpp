// The search for an instrument on pseudo-terminals, and the job that it leads to, each in a process of its own.

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QPushButton>

#include "support/pty.h"
#include "support/window_driving.h"
#include "ui/program_rig.h"

namespace velk {
namespace {

struct Sought {
  const char* name;
  const char* simulator;
  std::vector<std::string> arguments;
  int port;  ///< that the unit is plugged in at
  const char* told;
  const char* serialData;
  int channels;
  bool hasHandshake = false;
};

void PrintTo(const Sought& sought, std::ostream* out) {
  *out << sought.name;
}

struct Search {
  Search() {
    rig.Set("Protocol", "SerialData", "Data Taker a");
    rig.Set("General", "SensitivityCriterion", "0");
    for (int number = 1; number <= 4; ++number) SetPort(number, "/dev/velk-none");
  }
  void SetPort(int number, const std::string& device) {
    rig.Set("Protocol", "PortDevice" + std::to_string(number), device);
  }
  void Detect() { rig.application->Window().MenuItem("mnuEditAutoDetect")->trigger(); }
  const Session& State() { return rig.application->State(); }
  std::string Stored(const char* section, const char* key) {
    SettingsStore store(rig.folder.File("settings"));
    return store.Get("VELK2", section, key, "");
  }

  test::ProgramRig rig;
  test::Pty silent;
};

class AutoDetection : public testing::TestWithParam<Sought> {
 protected:
  Search search;
};

TEST_P(AutoDetection, FindsTheUnitAmongSilentBusyAndMissingPortsAndRecordsIt) {
  const Sought& sought = GetParam();
  test::ProgramRig& rig = search.rig;
  search.SetPort(sought.port == 1 ? 4 : 1, search.silent.Device());
  const test::Pty busy;
  const auto holder = MakeSerialPort();
  holder->Open({.device = busy.Device()});
  search.SetPort(sought.port == 3 ? 2 : 3, busy.Device());
  search.SetPort(sought.port, rig.StartSimulator(sought.simulator, sought.arguments));
  rig.StartProgram();
  rig.dialogs.Expect(sought.told, Answer::Ok);
  // A pseudo-terminal has no modem lines.
  if (sought.hasHandshake) rig.dialogs.Expect("modem lines", Answer::Ok);
  search.Detect();
  rig.RunFor(100);
  EXPECT_EQ(search.State().SerialData, sought.serialData);
  EXPECT_EQ(search.State().PortNumber, sought.port);
  EXPECT_EQ(search.State().NumberOfParameters, sought.channels);
  EXPECT_EQ(search.Stored("Protocol", "SerialData"), sought.serialData);
  EXPECT_EQ(search.Stored("Parameters", "NumberOfParameters"), std::to_string(sought.channels));
  EXPECT_EQ(rig.Status(), "Ready");

  rig.Connect();
  ASSERT_EQ(rig.Status(), "Ready to Acquire");
  rig.StartJob();
  EXPECT_TRUE(rig.RunUntil([&] { return rig.Rows() >= 2; }, 20'000));
  rig.StopJob();
  rig.Exit();
  ASSERT_GE(rig.LogRows().size(), 2U);
  EXPECT_EQ(rig.LogRows()[0].values.size(), static_cast<std::size_t>(sought.channels));
}

std::vector<std::string> Version1() {
  std::vector<std::string> arguments{"--baud", "0"};
  for (const char* command : {"N3TE*", "N3TH*", "N5TA*", "N1TA*", "N2TA*", "N4TH*", "N4TE*"}) {
    arguments.emplace_back("--command");
    arguments.emplace_back(command);
  }
  return arguments;
}

INSTANTIATE_TEST_SUITE_P(Of, AutoDetection,
                         testing::Values(Sought{"Kesta4",
                                                "board",
                                                {"--unit", "KESTA version 4"},
                                                3,
                                                "KESTA version 4 hardware detected",
                                                "KESTA version 4",
                                                18},
                                         Sought{"Kesta4First",
                                                "board",
                                                {"--unit", "KESTA version 4"},
                                                1,
                                                "KESTA version 4 hardware detected",
                                                "KESTA version 4",
                                                18},
                                         Sought{"Kesta3",
                                                "board",
                                                {"--unit", "KESTA version 3"},
                                                2,
                                                "ORBEN version 3 hardware detected",
                                                "KESTA version 3",
                                                18,
                                                true},
                                         Sought{"NationalOilWell",
                                                "formatted",
                                                {"--channels", "3", "--interval", "0.5", "--end", "lfcr"},
                                                4,
                                                "National Oil Well hardware detected",
                                                "formatted and at regular intervals",
                                                3},
                                         Sought{"Version1", "request", Version1(), 2,
                                                "Orben's hardware version 1 detected", "sent when requested", 7}),
                         [](const auto& instance) { return std::string(instance.param.name); });

TEST(AutoDetectionBehindAnOwnUnit, OffersANewStartForAnOutsideInstrumentWhoseSeparatorsAreSaved) {
  Search search;
  search.rig.Set("Protocol", "SerialData", "KESTA version 5");
  search.SetPort(1, search.silent.Device());
  search.SetPort(2, search.rig.StartSimulator("formatted", {"--channels", "3", "--interval", "0.5", "--end", "lfcr"}));
  search.rig.StartProgram();
  search.rig.dialogs.Expect("National Oil Well hardware detected", Answer::Ok);
  search.rig.dialogs.Expect("takes full effect after a new start", Answer::No);
  search.Detect();
  EXPECT_EQ(search.State().Terminator, "\r\n") << "the own unit's, until then";
  EXPECT_EQ(search.Stored("Protocol", "Terminator"), "\r");
  EXPECT_EQ(search.Stored("Protocol", "SerialData"), "formatted and at regular intervals");
  search.rig.Exit();
}

TEST(AutoDetectionOfNothing, GoesBackToTheSettingsOfBeforeAndNamesThePortThatIsInUse) {
  Search search;
  test::Pty busy;
  const auto holder = MakeSerialPort();
  holder->Open({.device = busy.Device()});
  search.SetPort(2, busy.Device());
  search.rig.Set("Protocol", "PortNumber", "2");
  search.rig.StartProgram();
  search.rig.dialogs.Expect("These ports could not be opened:\nCom Port 2: " + busy.Device() +
                                ": the serial device is in use by another program.",
                            Answer::Ok);
  search.rig.dialogs.Expect("Go back to the settings of before?", Answer::Yes);
  search.Detect();
  EXPECT_EQ(search.State().SerialData, "Data Taker a");
  EXPECT_EQ(search.State().PortNumber, 2);
  search.rig.Exit();
}

TEST(AutoDetectionThatIsCancelled, EndsWithinASecondOfTheClick) {
  Search search;
  search.SetPort(1, search.silent.Device());
  search.rig.StartProgram();
  search.rig.dialogs.Expect("Hardware unknown", Answer::Ok);
  search.rig.dialogs.Expect("Go back to the settings of before?", Answer::Yes);
  QElapsedTimer clicked;
  QTimer::singleShot(1500, [&] {
    QWidget* const shown = QApplication::activeModalWidget();
    ASSERT_NE(shown, nullptr);
    EXPECT_EQ(shown->objectName(), "frmAutoDetect");
    EXPECT_EQ(shown->windowTitle(), "Auto Detect Hardware");
    test::Click(*shown, "cmdCancel");
    clicked.start();
  });
  search.Detect();
  ASSERT_TRUE(clicked.isValid());
  EXPECT_LT(clicked.elapsed(), 1000);
  EXPECT_EQ(search.rig.Status(), "Ready");
  search.rig.Exit();
}

}  // namespace
}  // namespace velk
