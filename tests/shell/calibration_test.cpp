// Calibration and the reset of a value in the whole program, with an instrument that is asked.

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QListWidget>
#include <utility>

#include "model/status.h"
#include "model/texts.h"
#include "shell/shell_rig.h"

namespace velk {
namespace {

using test::Click;
using test::FindControl;

class CalibrationInTheProgram : public testing::Test {
 protected:
  void SetUp() override {
    rig.settings->Save("VELK2", "Protocol", "SerialData", "sent when requested");
    rig.settings->Save("VELK2", "Parameters", "NumberOfParameters", "2");
    rig.settings->Save("VELK2", "Parameter1", "CommandString", "A?\r");
    rig.settings->Save("VELK2", "Parameter2", "CommandString", "B?\r");
    rig.settings->Save("VELK2", "Parameter1", "ResetCommand", "A=\r");
    rig.settings->Flush();
    rig.Start();
    rig.clock.onYield = [this] { AnswerWhatIsAsked(); };
    rig.Press("Acquire");
    ASSERT_TRUE(StatusIs(rig.State(), text::StatusReadyToAcquire));
  }

  void AnswerWhatIsAsked() {
    if (!rig.plainPort.open) return;
    const std::string asked = std::exchange(rig.plainPort.written, {});
    if (asked == "A?\r")
      rig.plainPort.waiting += a + "\r\n";
    else if (asked == "B?\r")
      rig.plainPort.waiting += "5\r\n";
    else
      sent += asked;
  }
  void Calibrate(const std::function<void(QDialog&)>& act) {
    rig.windows.Then("CalibrateForm", [act](QDialog& window) {
      act(window);
      window.close();
    });
    rig.Choose("mnuToolsCalibrate");
  }
  void Reference(QDialog& window, const char* box, const char* button, const char* reference, const char* reads) {
    a = reads;
    FindControl<QLineEdit>(window, box)->setText(reference);
    Click(window, button);
  }
  void Reset(const char* value) {
    rig.dialogs.ExpectChoice("Reset Parameter Value", "Parameter 1");
    rig.dialogs.ExpectInput("Enter the new value", value);
    rig.Choose("mnuToolsReset");
  }
  /// What the program has sent that asks for no value.
  std::string TakeSent() { return std::exchange(sent, {}) + std::exchange(rig.plainPort.written, {}); }
  std::string OnDisk(const char* section, const char* key) {
    SettingsStore store(rig.folder.File("settings"));
    return store.Get("VELK2", section, key, "missing");
  }

  test::ShellRig rig;
  std::string a = "4";
  std::string sent;
};

TEST_F(CalibrationInTheProgram, HoldsForTheNextJobAndTheNextStart) {
  Calibrate([this](QDialog& window) {
    Reference(window, "Text1_0", "cmdRef_0", "0", "4");
    Reference(window, "Text1_1", "cmdRef_1", "100", "20");
    EXPECT_EQ(rig.State().CurrentParameters[1].Gain, 6.25) << "at once";
  });
  EXPECT_EQ(rig.State().Parameters[1].Gain, 6.25);
  EXPECT_EQ(rig.State().Parameters[1].Offset, -25);
  EXPECT_EQ(OnDisk("Parameter1", "Gain"), "6.25");
  EXPECT_EQ(OnDisk("Parameter1", "Offset"), "-25");
  EXPECT_TRUE(StatusIs(rig.State(), text::StatusReadyToAcquire));
  EXPECT_FALSE(rig.State().StopRequested);
  a = "12";
  rig.Press("Pause");
  rig.clock.Advance(2000);
  EXPECT_EQ(rig.State().CurrentValue[1], 50) << "half way between the references";
}

TEST_F(CalibrationInTheProgram, LeavesTheProgramReadyToAcquireWhateverCameInBetween) {
  Calibrate([this](QDialog&) { rig.State().CurrentStatus = text::StatusReady; });
  EXPECT_TRUE(StatusIs(rig.State(), text::StatusReadyToAcquire));
}

TEST_F(CalibrationInTheProgram, ListsTheChannelsThatAreRead) {
  Calibrate([](QDialog& window) { EXPECT_EQ(FindControl<QListWidget>(window, "List1")->count(), 2); });
}

TEST_F(CalibrationInTheProgram, LeavesGainAndOffsetWhereNothingWasFound) {
  Calibrate([this](QDialog& window) { Reference(window, "Text1_0", "cmdRef_0", "0", "4"); });
  EXPECT_EQ(rig.State().Parameters[1].Gain, 1);
  EXPECT_EQ(rig.State().Parameters[1].Offset, 0);
}

TEST_F(CalibrationInTheProgram, IsOfferedAheadOfAJobOnly) {
  EXPECT_TRUE(rig.Window().MenuItem("mnuToolsCalibrate")->isEnabled());
  rig.Press("Pause");
  EXPECT_FALSE(rig.Window().MenuItem("mnuToolsCalibrate")->isEnabled());
}

TEST_F(CalibrationInTheProgram, LetsAValueBeResetAheadOfAJobAndInItsPause) {
  Reset("7");
  EXPECT_EQ(TakeSent(), "A=7\r");
  Calibrate([this](QDialog& window) { Reference(window, "Text1_0", "cmdRef_0", "0", "4"); });
  Reset("8");
  EXPECT_EQ(TakeSent(), "A=8\r") << "the port is open again behind a calibration";
  rig.Press("Pause");
  rig.clock.Advance(2000);
  rig.Press("Pause");
  ASSERT_TRUE(StatusIs(rig.State(), text::StatusAcquiringPaused));
  Reset("9");
  EXPECT_EQ(TakeSent(), "A=9\r");
}

TEST_F(CalibrationInTheProgram, LetsAValueBeResetInARunningJob) {
  rig.Press("Pause");
  rig.clock.Advance(2000);
  Reset("0");
  rig.clock.Advance(2000);
  EXPECT_EQ(TakeSent(), "A=0\r");
  EXPECT_TRUE(StatusIs(rig.State(), text::StatusAcquiringData));
}

}  // namespace
}  // namespace velk
