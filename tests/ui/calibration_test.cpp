// Gain and offset from two references, read from an instrument that is a process of its own, and the job behind that.

#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <algorithm>
#include <cstdlib>

#include "support/window_script.h"
#include "ui/program_rig.h"

namespace velk {
namespace {

using test::FindControl;

struct Calibrated {
  const char* name;
  const char* serialData;
  const char* simulator;
  std::vector<std::string> arguments;
  bool asksAtStartUp = false;  ///< whether to continue with the port's settings
};

void PrintTo(const Calibrated& instrument, std::ostream* out) {
  *out << instrument.name;
}

class Calibration : public testing::TestWithParam<Calibrated> {
 protected:
  void SetUp() override {
    rig.SetChannels(2);
    rig.Set("Protocol", "SerialData", GetParam().serialData);
    rig.Set("Protocol", "PortDevice1", rig.StartSimulator(GetParam().simulator, GetParam().arguments));
    rig.Set("Protocol", "Delimiter", " ");
    rig.Set("Protocol", "Terminator", "\r\n");
    if (GetParam().asksAtStartUp) rig.dialogs.Expect("Continue with current serial port settings?", Answer::Yes);
    rig.StartProgram();
    rig.Connect();
    ASSERT_EQ(rig.Status(), "Ready to Acquire");
  }

  /// Does a reference; gives what the window says that was read.
  static double Read(QDialog& window, int number, const char* reference) {
    const std::string place = std::to_string(number);
    FindControl<QLineEdit>(window, ("Text1_" + place).c_str())->setText(reference);
    test::Click(window, ("cmdRef_" + place).c_str());
    const QString told = FindControl<QLabel>(window, ("lblRead_" + place).c_str())->text();
    EXPECT_TRUE(told.startsWith("\u2713 ")) << told.toStdString();
    return told.mid(2).toDouble();
  }

  /// All numbers that the instrument has sent so far, times among them.
  std::vector<double> Sent() const {
    std::vector<double> sent;
    for (const SentFrame& frame : rig.Journal())
      for (const QString& field : QString::fromStdString(frame.text).simplified().split(' '))
        sent.push_back(field.toDouble());
    return sent;
  }
  static bool Contains(const std::vector<double>& numbers, double number) {
    return std::find(numbers.begin(), numbers.end(), number) != numbers.end();
  }

  test::ProgramRig rig;
  test::WindowScript windows;

 private:
  using SentFrame = test::SentFrame;
};

TEST_P(Calibration, OfALiveInstrumentHoldsForTheJobBehindIt) {
  double first = 0, second = 0;
  windows.Then("CalibrateForm", [&](QDialog& window) {
    first = Read(window, 0, "0");
    second = Read(window, 1, "100");
    window.close();
  });
  rig.application->Window().MenuItem("mnuToolsCalibrate")->trigger();
  ASSERT_NE(first, second) << "the instrument's values change";
  const std::vector<double> sent = Sent();
  EXPECT_TRUE(Contains(sent, first)) << first;
  EXPECT_TRUE(Contains(sent, second)) << second;
  const double gain = 100 / (second - first);
  const Parameter& channel = rig.application->State().Parameters[1];
  EXPECT_DOUBLE_EQ(channel.Gain, gain);
  EXPECT_DOUBLE_EQ(channel.Offset, -gain * first);
  EXPECT_EQ(rig.application->State().Parameters[2].Gain, 0.1) << "the other channel's";

  rig.StartJob();
  ASSERT_TRUE(rig.RunUntil([this] { return rig.Rows() >= 3; }, 20'000));
  rig.StopJob();
  rig.Exit();
  std::vector<double> scaled;
  for (const double value : Sent()) {
    const double gain32 = static_cast<double>(static_cast<float>(gain));
    const double offset32 = static_cast<double>(static_cast<float>(-gain * first));
    scaled.push_back(static_cast<double>(static_cast<float>(value * gain32 + offset32)));
  }
  for (const test::LogRow& row : rig.LogRows()) EXPECT_TRUE(Contains(scaled, row.values[0])) << row.values[0];
}

INSTANTIATE_TEST_SUITE_P(Of, Calibration,
                         testing::Values(Calibrated{"Formatted",
                                                    "formatted and at regular intervals",
                                                    "formatted",
                                                    {"--channels", "2", "--interval", "0.1", "--baud", "0"},
                                                    true},
                                         Calibrated{"Requested",
                                                    "sent when requested",
                                                    "request",
                                                    {"--command", "R1\\r", "--command", "R2\\r", "--baud", "0"}}),
                         [](const auto& instance) { return std::string(instance.param.name); });

}  // namespace
}  // namespace velk
