#include "settings/windows/frm_properties.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QSpinBox>
#include <QTest>

#include "support/host.h"
#include "support/window_script.h"
#include "support/window_texts.h"

namespace velk {
namespace {

using test::Click;
using test::FindControl;

class PropertiesWindow : public testing::Test {
 protected:
  void Open(bool hasAlarms = true) {
    window = std::make_unique<Properties>(host, CurveProperties{.name = "Pressure",
                                                                .units = "bar",
                                                                .min = -5,
                                                                .max = 250,
                                                                .format = "#0.0",
                                                                .color = 0xFF,
                                                                .smoothing = 3,
                                                                .loweralarm = "None",
                                                                .upperalarm = "200",
                                                                .hasAlarms = hasAlarms});
    test::ShowWindow(*window, "Properties");
  }
  QLineEdit& Field(const char* name) { return *FindControl<QLineEdit>(*window, name); }

  test::Host host;
  std::unique_ptr<Properties> window;
};

TEST_F(PropertiesWindow, ShowsAllOfAParameter) {
  Open();
  EXPECT_EQ(window->windowTitle(), "Parameter Properties");
  EXPECT_EQ(FindControl<QLabel>(*window, "lblMaximum")->text().remove('&'), "Maximum value");
  EXPECT_EQ(Field("txtName").text(), "Pressure");
  EXPECT_EQ(Field("txtUnits").text(), "bar");
  EXPECT_EQ(Field("txtMinimum").text(), "-5");
  EXPECT_EQ(Field("txtMaximum").text(), "250");
  EXPECT_EQ(Field("txtLowerAlarm").text(), "None");
  EXPECT_EQ(Field("txtUpperAlarm").text(), "200");
  EXPECT_EQ(FindControl<QComboBox>(*window, "cboFormat")->currentText(), "123456.1");
  EXPECT_EQ(FindControl<QSpinBox>(*window, "UpDown1")->value(), 3);
  EXPECT_EQ(FindControl<QCheckBox>(*window, "optWrapping")->text(), "Off");
}

TEST_F(PropertiesWindow, HasRoomForANameInLettersOfEverySize) {
  for (const double scale : {1.0, 1.5, 2.0}) {
    const test::LargeText large(scale);
    Open();
    const QLineEdit& name = Field("txtName");
    EXPECT_LT(name.fontMetrics().horizontalAdvance("Давление на входе насоса") + 12, name.width()) << scale;
  }
}

TEST_F(PropertiesWindow, FramesAColourThatIsLikeItsGround) {
  window = std::make_unique<Properties>(host, CurveProperties{.name = "x", .units = "", .color = 0xFFFFFF});
  const QImage picture = FindControl<QPushButton>(*window, "cmdColor")->icon().pixmap(96, 16).toImage();
  EXPECT_EQ(picture.pixelColor(0, 8), QColor(128, 128, 128));
  EXPECT_EQ(picture.pixelColor(picture.width() - 2, 8), QColor(Qt::white));
  EXPECT_EQ(picture.pixelColor(picture.width() - 1, 8), QColor(128, 128, 128));
}

TEST_F(PropertiesWindow, GivesWhatWasEntered) {
  Open();
  Field("txtName").setText("Pump");
  Field("txtUnits").setText("kPa");
  Field("txtMinimum").setText("0,5");
  Field("txtMaximum").setText("25000");
  Field("txtLowerAlarm").setText("abc");
  FindControl<QComboBox>(*window, "cboFormat")->setCurrentText("1.23456E+01");
  FindControl<QSpinBox>(*window, "UpDown1")->setValue(10);
  auto* wrapping = FindControl<QCheckBox>(*window, "optWrapping");
  wrapping->setChecked(true);
  EXPECT_EQ(wrapping->text(), "On");
  host.dialogs.ExpectColour("Select a color for Pump", 0x00FF00);
  Click(*window, "cmdColor");
  Click(*window, "cmdOK");
  EXPECT_EQ(window->result(), QDialog::Accepted);
  const CurveProperties& answer = window->Answer();
  EXPECT_EQ(answer.name, "Pump");
  EXPECT_EQ(answer.units, "kPa");
  EXPECT_EQ(answer.min, 0.5);
  EXPECT_EQ(answer.max, 25000);
  EXPECT_EQ(answer.loweralarm, "None");
  EXPECT_EQ(answer.upperalarm, "200");
  EXPECT_EQ(answer.format, "0.00e+00");
  EXPECT_EQ(answer.smoothing, 10);
  EXPECT_TRUE(answer.Wrapping);
  EXPECT_EQ(answer.color, 0x00FF00);
}

TEST_F(PropertiesWindow, TakesPastedNameAndUnitsOnOneLine) {
  Open();
  Field("txtName").setText("Flow\nrate");
  Field("txtUnits").setText("l\nmin");
  Click(*window, "cmdOK");
  EXPECT_EQ(window->Answer().name, "Flow rate");
  EXPECT_EQ(window->Answer().units, "l min");
}

TEST_F(PropertiesWindow, StaysOpenForAScaleUpsideDown) {
  Open();
  Field("txtMinimum").setText("250");
  host.dialogs.Expect("Minimum scale must be less than maximum scale", Answer::Ok);
  Click(*window, "cmdOK");
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(host.dialogs.shown.back().icon, BoxIcon::Critical);
  EXPECT_TRUE(Field("txtMinimum").hasFocus());
  EXPECT_EQ(window->Answer().min, -5);
}

TEST_F(PropertiesWindow, SaysInPlaceWhichNumberIsUnclear) {
  Open();
  Field("txtUpperAlarm").setText("1,234.5");
  Click(*window, "cmdOK");
  EXPECT_TRUE(window->isVisible());
  EXPECT_TRUE(Field("txtUpperAlarm").hasFocus());
  EXPECT_EQ(Field("txtUpperAlarm").text(), "1,234.5");
  EXPECT_TRUE(FindControl<QLabel>(*window, "lblFault")->isVisible());
}

TEST_F(PropertiesWindow, HasNoAlarmsOutsideOfAcquisition) {
  Open(false);
  EXPECT_FALSE(Field("txtLowerAlarm").isVisible());
  EXPECT_FALSE(Field("txtUpperAlarm").isVisible());
}

TEST_F(PropertiesWindow, KeepsAFormatThatTheListDoesNotHave) {
  window = std::make_unique<Properties>(host, CurveProperties{.name = "x", .units = "", .format = "0.0%"});
  Click(*window, "cmdOK");
  EXPECT_EQ(window->Answer().format, "0.0%");
}

TEST_F(PropertiesWindow, HasNoSmoothingOfAFile) {
  window = std::make_unique<Properties>(host, CurveProperties{.name = "x", .units = "", .hasSmoothing = false});
  window->show();
  EXPECT_FALSE(FindControl<QSpinBox>(*window, "UpDown1")->isVisible());
  EXPECT_FALSE(FindControl<QLabel>(*window, "lblSmoothing")->isVisible());
}

// --- Of a curve that isn't the unit's ---

TEST(PropertiesOfAChannelOfAUnit, AreCalibratedOnItsBoardAndTheWindowWaitsForThat) {
  test::Host host;
  std::unique_ptr<Properties> window;
  int calibrated = 0;
  window = std::make_unique<Properties>(host, CurveProperties{.name = "x", .units = ""}, [&] {
    ++calibrated;
    EXPECT_FALSE(window->isEnabled());
    window->reject();
    EXPECT_TRUE(window->isVisible());
  });
  window->show();
  Click(*window, "Command3");
  EXPECT_EQ(calibrated, 1);
  EXPECT_FALSE(window->isVisible());
}

TEST(PropertiesOfAnyOtherChannel, OfferNoCalibration) {
  test::Host host;
  const Properties window(host, CurveProperties{.name = "x", .units = ""});
  EXPECT_EQ(window.findChild<QPushButton*>("Command3"), nullptr);
}

class PropertiesOfAForeignCurve : public testing::Test {
 protected:
  test::Host host;
  test::WindowScript script;
};

TEST_F(PropertiesOfAForeignCurve, AreEditedInTheSameFields) {
  script.Then("frmProperties", [](QDialog& window) {
    EXPECT_EQ(window.windowTitle(), "Parameter Properties");
    EXPECT_EQ(FindControl<QLineEdit>(window, "txtName")->text(), "Depth");
    EXPECT_EQ(window.findChild<QPushButton*>("Command3"), nullptr);
    FindControl<QLineEdit>(window, "txtMaximum")->setText("4,5");
    Click(window, "cmdOK");
  });
  const auto entered = AskProperties(host, CurveProperties{.name = "Depth", .units = "m"});
  ASSERT_TRUE(entered);
  EXPECT_EQ(entered->max, 4.5);
  EXPECT_EQ(entered->name, "Depth");
}

TEST_F(PropertiesOfAForeignCurve, AreRefusedWithAScaleUpsideDown) {
  script.Then("frmProperties", [this](QDialog& window) {
    FindControl<QLineEdit>(window, "txtMaximum")->setText("-1");
    host.dialogs.Expect("Minimum scale must be less than maximum scale", Answer::Ok);
    Click(window, "cmdOK");
    EXPECT_TRUE(window.isVisible());
    Click(window, "cmdCancel");
  });
  EXPECT_FALSE(AskProperties(host, CurveProperties{.name = "Depth", .units = "m"}));
}

TEST_F(PropertiesOfAForeignCurve, AreNoneWithoutACurve) {
  host.dialogs.Expect("No data exist", Answer::Ok);
  script.Then("frmProperties", [this](QDialog& window) {
    for (const char* field : {"txtName", "txtUnits", "txtMinimum", "txtMaximum"}) {
      EXPECT_EQ(FindControl<QLineEdit>(window, field)->text(), "") << field;
      EXPECT_FALSE(FindControl<QLineEdit>(window, field)->isEnabled()) << field;
    }
    host.dialogs.Expect("No data is saved", Answer::Ok);
    Click(window, "cmdOK");
  });
  EXPECT_FALSE(AskProperties(host, std::nullopt));
}

}  // namespace
}  // namespace velk
