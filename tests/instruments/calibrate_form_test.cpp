#include "instruments/windows/calibrate_form.h"

#include <gtest/gtest.h>

#include <QListWidget>

#include "support/host.h"
#include "support/window_driving.h"

namespace velk {
namespace {

using test::Click;
using test::FindControl;

class CalibrateFormWindow : public testing::Test {
 protected:
  CalibrateFormWindow() {
    work.names = {"Pressure", "Flow"};
    work.read = [this](int parameter, const std::function<void(double)>& show) {
      readOf.push_back(parameter);
      if (whileReading) whileReading(show);
      return reading;
    };
    work.stop = [this] { ++stops; };
    work.take = [this](int parameter, ChannelScale scale) {
      takenFor = parameter;
      taken = scale;
    };
  }
  void Open() {
    window = std::make_unique<CalibrateForm>(host, work);
    test::ShowWindow(*window, "CalibrateForm");
  }
  QLineEdit& Box(const char* name) { return *FindControl<QLineEdit>(*window, name); }
  std::string Text(const char* label) { return FindControl<QLabel>(*window, label)->text().toStdString(); }
  void Reference(int number, const char* value, std::optional<double> read) {
    reading = read;
    Box(number == 0 ? "Text1_0" : "Text1_1").setText(value);
    Click(*window, number == 0 ? "cmdRef_0" : "cmdRef_1");
  }

  test::Host host;
  CalibrationWork work;
  std::unique_ptr<CalibrateForm> window;
  std::vector<int> readOf;
  std::optional<double> reading;
  std::function<void(const std::function<void(double)>&)> whileReading;
  int stops = 0;
  int takenFor = 0;
  ChannelScale taken;
};

TEST_F(CalibrateFormWindow, FindsGainAndOffsetOnceBothReferencesAreDone) {
  Open();
  EXPECT_EQ(window->windowTitle(), "Parameter Calibration");
  FindControl<QListWidget>(*window, "List1")->setCurrentRow(1);
  Reference(0, "0", 4);
  EXPECT_EQ(takenFor, 0) << "one reference is done";
  Reference(1, "100,0", 20);
  EXPECT_EQ(readOf, (std::vector<int>{2, 2}));
  EXPECT_EQ(takenFor, 2);
  EXPECT_EQ(taken.gain, 6.25);
  EXPECT_EQ(taken.offset, -25);
  EXPECT_EQ(Box("Text1_2").text(), "6.25");
  EXPECT_EQ(Box("Text1_3").text(), "-25");
}

TEST_F(CalibrateFormWindow, ForgetsTheReadingOfAReferenceThatIsEdited) {
  Open();
  Reference(0, "0", 4);
  QTest::keyClicks(&Box("Text1_0"), "1");
  EXPECT_EQ(Text("lblRead_0"), "");
  Reference(1, "100", 20);
  EXPECT_EQ(takenFor, 0) << "the first one is to be read again";
  Reference(0, "10", 5);
  EXPECT_EQ(taken.gain, 6) << "90 of 15";
  QTest::keyClicks(&Box("Text1_1"), "5");
  EXPECT_EQ(Box("Text1_2").text(), "") << "the gain of another reference";
}

TEST_F(CalibrateFormWindow, ShowsGainAndOffsetToTheirLastDigitAndTheirSign) {
  Open();
  Reference(0, "0", 4689.704);
  Reference(1, "5000", 5194.751);
  for (const char* name : {"Text1_2", "Text1_3"}) {
    const QLineEdit& box = Box(name);
    EXPECT_GE(box.text().size(), 15) << name;
    constexpr int kInside = 4;  // pixels between frame and text, on either side
    EXPECT_LE(box.fontMetrics().horizontalAdvance(box.text()), box.width() - 2 * kInside) << name;
  }
}

TEST_F(CalibrateFormWindow, ShowsTheRunningReadingAndOffersStopMeanwhile) {
  Open();
  EXPECT_FALSE(FindControl<QPushButton>(*window, "cmdStop")->isEnabled());
  whileReading = [this](const std::function<void(double)>& show) {
    show(4.25);
    EXPECT_EQ(Text("lblReading"), "4.25");
    EXPECT_FALSE(FindControl<QPushButton>(*window, "cmdRef_1")->isEnabled());
    Click(*window, "cmdStop");
  };
  Reference(0, "1", 4.25);
  EXPECT_EQ(stops, 1);
  EXPECT_FALSE(FindControl<QPushButton>(*window, "cmdStop")->isEnabled());
  EXPECT_NE(Text("lblRead_0").find("4.25"), std::string::npos);
}

TEST_F(CalibrateFormWindow, SaysThatEqualReadingsGiveNoScale) {
  Open();
  Reference(0, "0", 7);
  host.dialogs.Expect("Division by zero", Answer::Ok);
  Reference(1, "100", 7);
  EXPECT_EQ(host.dialogs.shown.back().icon, BoxIcon::Critical);
  EXPECT_EQ(takenFor, 0);
  Reference(1, "100", 9);
  EXPECT_EQ(taken.gain, 50) << "a further try";
}

TEST_F(CalibrateFormWindow, DoesNotCountAReferenceThatWasNotRead) {
  Open();
  Reference(0, "0", std::nullopt);
  Reference(1, "100", 20);
  EXPECT_EQ(takenFor, 0);
}

TEST_F(CalibrateFormWindow, BeginsAnewForAnotherParameter) {
  Open();
  Reference(0, "0", 4);
  FindControl<QListWidget>(*window, "List1")->setCurrentRow(1);
  Reference(1, "100", 20);
  EXPECT_EQ(takenFor, 0);
}

TEST_F(CalibrateFormWindow, RefusesAReferenceInPlace) {
  Open();
  for (const char* typed : {"", " ", "1,234.5"}) {
    Reference(0, typed, 4);
    EXPECT_TRUE(readOf.empty()) << typed;
    EXPECT_TRUE(Box("Text1_0").hasFocus());
  }
}

TEST_F(CalibrateFormWindow, EndsAReadingBeforeItCloses) {
  Open();
  whileReading = [this](const auto&) {
    window->reject();
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(stops, 1);
  };
  Reference(0, "1", 4);
  EXPECT_FALSE(window->isVisible());
}

TEST_F(CalibrateFormWindow, IsOffForOtherInstruments) {
  work.canRead = false;
  Open();
  EXPECT_FALSE(FindControl<QPushButton>(*window, "cmdRef_0")->isEnabled());
  EXPECT_NE(Text("lblFault").find("table of parameters"), std::string::npos);
}

}  // namespace
}  // namespace velk
