#include "instruments/windows/hardware_settings.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTimer>

#include "instruments/windows_fixture.h"

namespace velk {
namespace {

using test::Find;
using test::Show;
using test::TabOrder;

constexpr const char* kLineFrames[] = {"fraBaudRate", "fraParity", "fraDataBits", "fraStopBits", "fraHandshake"};

HardwareQuestion Question() {
  return {{.SerialData = "Data Taker a",
           .NumberOfParameters = 18,
           .SamplingRate = 300.0 / 86400,
           .SensitivityCriterion = 20,
           .PortNumber = 3,
           .BaudRate = 4800,
           .Parity = "E",
           .DataBits = 7,
           .StopBits = "2",
           .Handshake = 1},
          4,
          {{1, "/dev/ttyS0", true},
           {2, "/dev/ttyS1", false},
           {3, "/dev/serial/by-id/usb-Prolific_Technology_Inc._USB-Serial_Controller_D-if00-port0", true},
           {4, "/dev/ttyUSB1", false}}};
}

class HardwareSettingsWindow : public testing::Test {
 protected:
  void Open(const HardwareQuestion& question, const std::string& languageName = "English") {
    language = test::In(languageName);
    window = std::make_unique<HardwareSettings>(host, question);
  }
  QComboBox& List(const char* name) { return Find<QComboBox>(*window, name); }
  QStringList Entries(const char* name) {
    QStringList texts;
    for (int i = 0; i < List(name).count(); ++i) texts << List(name).itemText(i);
    return texts;
  }
  void Press(const char* name) { Find<QPushButton>(*window, name).click(); }
  void Type(const char* name, const QString& text) { Find<QLineEdit>(*window, name).setText(text); }

  Gate gate;
  test::ScriptedDialogs dialogs{gate};
  Translation language;
  WindowHost host{dialogs, language};
  std::unique_ptr<HardwareSettings> window;
};

TEST_F(HardwareSettingsWindow, OffersTheListsInTheirOrder) {
  Open(Question());
  EXPECT_EQ(window->objectName(), "HardwareSettings");
  EXPECT_EQ(window->windowTitle(), "Edit Hardware Settings");
  EXPECT_EQ(List("cboSerialData").count(), 17);
  EXPECT_EQ(List("cboSerialData").itemText(0), "formatted and at regular intervals");
  EXPECT_EQ(List("cboSerialData").itemText(15), "Any Serial Data");
  EXPECT_EQ(Entries("cboSampling"), (QStringList{"1", "5", "10", "15", "20", "30"}));
  EXPECT_EQ(Entries("cboSamplingUnits"), (QStringList{"seconds", "minutes", "hours"}));
  EXPECT_EQ(Entries("cboPort"), (QStringList{"Com Port 1", "Com Port 2", "Com Port 3", "Com Port 4"}));
  EXPECT_EQ(Entries("cboBaudRate"), (QStringList{"2400", "4800", "9600", "19200"}));
  EXPECT_EQ(Entries("cboParity"), (QStringList{"Even", "Mark", "None", "Odd", "Space"}));
  EXPECT_EQ(Entries("cboDataBits"), (QStringList{"5", "6", "7", "8"}));
  EXPECT_EQ(Entries("cboStopBits"), (QStringList{"1", "1.5", "2"}));
  EXPECT_EQ(Entries("cboHandshake"), (QStringList{"None", "Xon/Xoff", "Hardware"}));
  EXPECT_EQ(Find<QPushButton>(*window, "cmdOK").text(), "O.K.");
}

TEST_F(HardwareSettingsWindow, ShowsWhatIsStored) {
  Open(Question());
  Show(*window, "HardwareSettings-en");
  EXPECT_EQ(List("cboSerialData").currentText(), "Data Taker a");
  EXPECT_EQ(List("cboSampling").currentText(), "5");
  EXPECT_EQ(List("cboSamplingUnits").currentText(), "minutes");
  EXPECT_EQ(Find<QLineEdit>(*window, "txtNumberOfParameters").text(), "18");
  EXPECT_EQ(Find<QLineEdit>(*window, "txtSensitivityCriterion").text(), "20");
  EXPECT_EQ(List("cboPort").currentText(), "Com Port 3");
  EXPECT_EQ(List("cboBaudRate").currentText(), "4800");
  EXPECT_EQ(List("cboParity").currentText(), "Even");
  EXPECT_EQ(List("cboDataBits").currentText(), "7");
  EXPECT_EQ(List("cboStopBits").currentText(), "2");
  EXPECT_EQ(List("cboHandshake").currentText(), "Xon/Xoff");
  for (const char* frame : kLineFrames) EXPECT_TRUE(Find<QGroupBox>(*window, frame).isEnabled()) << frame;
}

TEST_F(HardwareSettingsWindow, GivesBackWhatWasNotTouched) {
  const HardwareQuestion question{{.SerialData = "KESTA version 6",
                                   .NumberOfParameters = 0,
                                   .SamplingRate = 2.0000001 / 86400,
                                   .SensitivityCriterion = 0,
                                   .PortNumber = 9,
                                   .BaudRate = 115200,
                                   .Parity = "X",
                                   .DataBits = 9,
                                   .StopBits = "3",
                                   .Handshake = 3},
                                  0,
                                  Question().ports};
  Open(question);
  Show(*window, "HardwareSettings-not-offered");
  EXPECT_EQ(List("cboSerialData").placeholderText(), "KESTA version 6");
  EXPECT_EQ(List("cboSampling").placeholderText(), "2");
  EXPECT_EQ(List("cboPort").placeholderText(), "Com Port 9");
  EXPECT_EQ(List("cboBaudRate").placeholderText(), "115200");
  EXPECT_EQ(List("cboParity").placeholderText(), "X");
  EXPECT_EQ(List("cboDataBits").placeholderText(), "9");
  EXPECT_EQ(List("cboStopBits").placeholderText(), "3");
  EXPECT_EQ(List("cboHandshake").placeholderText(), "3");
  Press("cmdOK");
  EXPECT_EQ(window->result(), QDialog::Accepted);
  EXPECT_EQ(window->Answer().SerialData, "KESTA version 6");
  EXPECT_EQ(window->Answer().NumberOfParameters, 0);
  EXPECT_EQ(window->Answer().SamplingRate, 2.0000001 / 86400);
  EXPECT_EQ(window->Answer().SensitivityCriterion, 0);
  EXPECT_EQ(window->Answer().PortNumber, 9);
  EXPECT_EQ(window->Answer().BaudRate, 115200);
  EXPECT_EQ(window->Answer().Parity, "X");
  EXPECT_EQ(window->Answer().DataBits, 9);
  EXPECT_EQ(window->Answer().StopBits, "3");
  EXPECT_EQ(window->Answer().Handshake, 3);
}

TEST_F(HardwareSettingsWindow, GivesEachChoice) {
  Open(Question());
  List("cboSerialData").setCurrentIndex(12);
  List("cboSampling").setCurrentIndex(5);
  List("cboSamplingUnits").setCurrentIndex(2);
  Type("txtNumberOfParameters", "60");
  Type("txtSensitivityCriterion", "3");
  List("cboPort").setCurrentIndex(1);
  List("cboBaudRate").setCurrentIndex(0);
  List("cboParity").setCurrentIndex(4);
  List("cboDataBits").setCurrentIndex(0);
  List("cboStopBits").setCurrentIndex(1);
  List("cboHandshake").setCurrentIndex(2);
  Press("cmdOK");
  EXPECT_EQ(window->Answer().SerialData, "Data Taker b");
  EXPECT_DOUBLE_EQ(window->Answer().SamplingRate, 30.0 / 24);
  EXPECT_EQ(window->Answer().NumberOfParameters, 60);
  EXPECT_EQ(window->Answer().SensitivityCriterion, 3);
  EXPECT_EQ(window->Answer().PortNumber, 2);
  EXPECT_EQ(window->Answer().BaudRate, 2400);
  EXPECT_EQ(window->Answer().Parity, "S");
  EXPECT_EQ(window->Answer().DataBits, 5);
  EXPECT_EQ(window->Answer().StopBits, "1.5");
  EXPECT_EQ(window->Answer().Handshake, 2);
}

TEST_F(HardwareSettingsWindow, TurnsTheFirstEntryIntoTheSecondAndPassesOverTheLast) {
  Open(Question());
  List("cboSerialData").setCurrentIndex(15);
  EXPECT_EQ(List("cboSerialData").currentText(), "Data Taker a");
  List("cboSerialData").setCurrentIndex(0);
  EXPECT_EQ(List("cboSerialData").currentText(), "National Oil Well PLC");
  Press("cmdOK");
  EXPECT_EQ(window->Answer().SerialData, "National Oil Well PLC");
}

TEST_F(HardwareSettingsWindow, TakesTheFirstEntryPickedAnewAsAChoice) {
  HardwareQuestion question = Question();
  question.choices.SerialData = "formatted and at regular intervals";
  Open(question);
  EXPECT_EQ(List("cboSerialData").currentIndex(), 0);
  window->show();
  List("cboSerialData").showPopup();
  QTest::keyClick(List("cboSerialData").view(), Qt::Key_Return);
  EXPECT_EQ(List("cboSerialData").currentText(), "National Oil Well PLC");
  Press("cmdOK");
  EXPECT_EQ(window->Answer().SerialData, "National Oil Well PLC");
}

TEST_F(HardwareSettingsWindow, KeepsTheStoredFirstAndLastEntryThatIsNotTouched) {
  for (const char* stored : {"formatted and at regular intervals", "Any Serial Data"}) {
    HardwareQuestion question = Question();
    question.choices.SerialData = stored;
    Open(question);
    EXPECT_EQ(List("cboSerialData").currentText(), stored);
    Press("cmdOK");
    EXPECT_EQ(window->Answer().SerialData, stored);
  }
}

TEST_F(HardwareSettingsWindow, FixesTheLineOfAnOwnUnitAndGivesTheOldOneBackBehindIt) {
  Open(Question());
  List("cboSerialData").setCurrentIndex(5);
  Show(*window, "HardwareSettings-own-unit");
  for (const char* frame : kLineFrames) EXPECT_FALSE(Find<QGroupBox>(*window, frame).isEnabled()) << frame;
  EXPECT_TRUE(Find<QGroupBox>(*window, "fraPort").isEnabled());
  EXPECT_TRUE(Find<QGroupBox>(*window, "fraSampling").isEnabled());
  EXPECT_EQ(List("cboBaudRate").currentText(), "19200");
  EXPECT_EQ(List("cboParity").currentText(), "None");
  EXPECT_EQ(List("cboDataBits").currentText(), "8");
  EXPECT_EQ(List("cboStopBits").currentText(), "1");
  EXPECT_EQ(List("cboHandshake").currentText(), "Hardware");

  List("cboSerialData").setCurrentIndex(10);
  for (const char* frame : kLineFrames) EXPECT_TRUE(Find<QGroupBox>(*window, frame).isEnabled()) << frame;
  EXPECT_EQ(List("cboBaudRate").currentText(), "4800");
  Press("cmdOK");
  EXPECT_EQ(window->Answer().SerialData, "S&S DAS 104");
  EXPECT_EQ(window->Answer().BaudRate, 4800);
  EXPECT_EQ(window->Answer().Parity, "E");
  EXPECT_EQ(window->Answer().Handshake, 1);
}

TEST_F(HardwareSettingsWindow, TellsWhatIsBehindEachPort) {
  Open(Question());
  EXPECT_EQ(Find<QLabel>(*window, "lblDevice_1").text(), "1: /dev/ttyS0 - present");
  EXPECT_EQ(Find<QLabel>(*window, "lblDevice_2").text(), "2: /dev/ttyS1 - not present");
  EXPECT_TRUE(Find<QLabel>(*window, "lblDevice_3").text().endsWith(" - present"));
  EXPECT_TRUE(Find<QLabel>(*window, "lblDevice_3").text().startsWith("3: /dev/serial"));
  EXPECT_EQ(Find<QLabel>(*window, "lblDevice_3").toolTip(),
            "/dev/serial/by-id/usb-Prolific_Technology_Inc._USB-Serial_Controller_D-if00-port0");
  EXPECT_EQ(Find<QLabel>(*window, "lblDevice_4").text(), "4: /dev/ttyUSB1 - not present");
}

TEST_F(HardwareSettingsWindow, TellsWhyADeviceCantBeOpened) {
  HardwareQuestion question = Question();
  question.ports[0].isInUse = true;
  question.ports[3].exists = true;
  question.ports[3].group = "dialout";
  Open(question);
  EXPECT_EQ(Find<QLabel>(*window, "lblDevice_1").text(), "1: /dev/ttyS0 - in use by another program");
  EXPECT_EQ(Find<QLabel>(*window, "lblDevice_4").text(),
            "4: /dev/ttyUSB1 - no permission: join the group [dialout] and log in again");
}

TEST_F(HardwareSettingsWindow, OffersOtherDevicesForEachPortByTheirStableNames) {
  HardwareQuestion question = Question();
  question.ports[1].listed = "/dev/ttyS1";
  question.devices = {{"/dev/serial/by-id/usb-pump", "Acme Pump Controller"}, {"/dev/ttyACM0", ""}};
  Open(question);
  dialogs.ExpectChoice("Device of Com Port 2", "/dev/serial/by-id/usb-pump  (Acme Pump Controller)");
  Press("cmdDevice_2");
  EXPECT_EQ(dialogs.listsAsked.back().entries,
            (std::vector<std::string>{"As the list of ports has it: /dev/ttyS1",
                                      "/dev/serial/by-id/usb-pump  (Acme Pump Controller)", "/dev/ttyACM0"}));
  EXPECT_TRUE(dialogs.listsAsked.back().mayEnter) << "any path will do";
  EXPECT_EQ(Find<QLabel>(*window, "lblDevice_2").text(), "2: /dev/serial/by-id/usb-pump - not present");
  EXPECT_EQ(List("cboPort").currentText(), "Com Port 2") << "who chooses a device means its port";
  Press("cmdOK");
  EXPECT_EQ(window->Answer().PortNumber, 2);
  EXPECT_EQ(window->Answer().PortDevice, (std::map<int, std::string>{{2, "/dev/serial/by-id/usb-pump"}}));
}

TEST_F(HardwareSettingsWindow, TakesAnyPathForADeviceAndGoesBackToTheList) {
  HardwareQuestion question = Question();
  question.ports[0].listed = "/dev/ttyS0";
  Open(question);
  dialogs.ExpectChoice("Device of Com Port 1", "/dev/pts/77");
  Press("cmdDevice_1");
  EXPECT_EQ(Find<QLabel>(*window, "lblDevice_1").toolTip(), "/dev/pts/77");
  dialogs.ExpectChoice("Device of Com Port 1", std::nullopt);
  Press("cmdDevice_1");
  EXPECT_EQ(Find<QLabel>(*window, "lblDevice_1").toolTip(), "/dev/pts/77") << "Cancel leaves it";
  dialogs.ExpectChoice("Device of Com Port 1", "As the list of ports has it: /dev/ttyS0");
  Press("cmdDevice_1");
  EXPECT_EQ(Find<QLabel>(*window, "lblDevice_1").toolTip(), "/dev/ttyS0");
  Press("cmdOK");
  EXPECT_EQ(window->Answer().PortDevice, (std::map<int, std::string>{{1, ""}}));
}

TEST_F(HardwareSettingsWindow, FillsInTheChannelsOfAnOwnUnitThatIsPicked) {
  struct Entry {
    int place;
    const char* channels;
  };
  constexpr Entry kEntries[] = {{5, "18"}, {6, "18"}, {7, "22"}, {8, "4"}, {9, "10"}};
  for (const Entry& entry : kEntries) {
    HardwareQuestion question = Question();
    question.choices.NumberOfParameters = 7;
    Open(question);
    EXPECT_EQ(Find<QLineEdit>(*window, "txtNumberOfParameters").text(), "7") << "what is stored is shown";
    List("cboSerialData").setCurrentIndex(entry.place);
    EXPECT_EQ(Find<QLineEdit>(*window, "txtNumberOfParameters").text(), entry.channels) << entry.place;
    List("cboSerialData").setCurrentIndex(10);
    EXPECT_EQ(Find<QLineEdit>(*window, "txtNumberOfParameters").text(), entry.channels) << "no unit of its own";
  }
}

TEST_F(HardwareSettingsWindow, LeavesANumberOfChannelsThatWasTyped) {
  Open(Question());
  auto& box = Find<QLineEdit>(*window, "txtNumberOfParameters");
  box.selectAll();
  QTest::keyClicks(&box, "9");
  List("cboSerialData").setCurrentIndex(7);
  EXPECT_EQ(box.text(), "9");
}

TEST_F(HardwareSettingsWindow, SaysWhichTemplateServesWhereThePickedEntryDeliversNoValues) {
  HardwareQuestion question = Question();
  const char* const formatted = "formatted and at regular intervals";
  question.templates = {
      {"May", "Data Taker a"}, {"Blank, CR", formatted}, {"Запятая", formatted}, {"Все", "Any Serial Data"}};
  Open(question);
  window->show();
  auto& note = Find<QLabel>(*window, "lblProtocolNote");
  EXPECT_FALSE(note.isVisible());
  for (const int place : {0, 1}) {
    List("cboSerialData").setCurrentIndex(12);
    EXPECT_FALSE(note.isVisible());
    List("cboSerialData").setCurrentIndex(place);
    EXPECT_TRUE(note.isVisible()) << place;
    EXPECT_TRUE(note.text().endsWith(" no values. Load the template \"Blank, CR\" or \"Запятая\" by Edit Settings."));
  }
  List("cboSerialData").setCurrentIndex(12);
  List("cboSerialData").setCurrentIndex(15);
  EXPECT_EQ(note.text(), "This protocol can't be chosen here. Load the template \"Все\" by Edit Settings.");
}

TEST_F(HardwareSettingsWindow, NamesNoTemplateThatIsNotInTheList) {
  Open(Question());
  List("cboSerialData").setCurrentIndex(0);
  EXPECT_EQ(Find<QLabel>(*window, "lblProtocolNote").text(), "Lines of this protocol deliver no values.");
}

/// A port on which a test speaks.
struct ScriptedListening : PortListening {
  void Listen(const SerialSettings& line, std::function<void(const std::string&)> onBytes) override {
    if (!failure.empty()) throw RuntimeError(ErrorNumber::DeviceUnavailable, failure);
    listened.push_back(line.device + " " + std::to_string(line.baudRate));
    receive = std::move(onBytes);
    open = true;
  }
  void Stop() override { open = false; }

  std::vector<std::string> listened;
  std::function<void(const std::string&)> receive;
  std::string failure;
  bool open = false;
};

TEST_F(HardwareSettingsWindow, ShowsLinesAsTheyArriveAndCountsTheirValues) {
  ScriptedListening port;
  HardwareQuestion question = Question();
  question.listening = &port;
  question.choices.PortNumber = 1;
  Open(question);
  window->show();
  Press("cmdListen");
  EXPECT_EQ(port.listened, (std::vector<std::string>{"/dev/ttyS0 4800"}));
  auto& verdict = Find<QLabel>(*window, "lblLines");
  EXPECT_EQ(verdict.text(), "Listening. Nothing has come yet.");
  port.receive("12:00:00 1 2");
  EXPECT_EQ(verdict.text(), "Bytes have come, but no end of a line.");
  port.receive(" 3 4\r\n");
  EXPECT_EQ(Find<QPlainTextEdit>(*window, "txtLines").toPlainText(), "12:00:00 1 2 3 4");
  EXPECT_EQ(verdict.text(), "4 values where 18 are expected");
  Type("txtNumberOfParameters", "4");
  EXPECT_EQ(verdict.text(), "4 values");
  EXPECT_TRUE(Find<QPlainTextEdit>(*window, "txtLines").isReadOnly());
  EXPECT_TRUE(port.open);
  Press("cmdListen");
  EXPECT_FALSE(port.open) << "pressed again it lets go";
  Press("cmdListen");
  EXPECT_TRUE(port.open);
  window.reset();
  EXPECT_FALSE(port.open) << "the port is given back on closing";
}

TEST_F(HardwareSettingsWindow, ListensWhereTheChoicesLeadAndForgetsTheLinesOfBefore) {
  ScriptedListening port;
  HardwareQuestion question = Question();
  question.listening = &port;
  question.choices.PortNumber = 1;
  Open(question);
  window->show();
  Press("cmdListen");
  port.receive("1 2 3\r");
  List("cboPort").setCurrentIndex(1);
  EXPECT_EQ(port.listened.back(), "/dev/ttyS1 4800");
  EXPECT_EQ(Find<QPlainTextEdit>(*window, "txtLines").toPlainText(), "");
  EXPECT_EQ(Find<QLabel>(*window, "lblLines").text(), "Listening. Nothing has come yet.");
  List("cboBaudRate").setCurrentIndex(2);
  EXPECT_EQ(port.listened.back(), "/dev/ttyS1 9600");
  dialogs.ExpectChoice("Device of Com Port 2", "/dev/pts/77");
  Press("cmdDevice_2");
  EXPECT_EQ(port.listened.back(), "/dev/pts/77 9600");
  List("cboSerialData").setCurrentIndex(5);
  EXPECT_EQ(port.listened.back(), "/dev/pts/77 19200") << "as the unit fixes it";
  EXPECT_EQ(port.listened.size(), 5U);
  EXPECT_TRUE(Find<QPushButton>(*window, "cmdListen").isChecked());
  window.reset();
}

TEST_F(HardwareSettingsWindow, LeavesAPortOpenThatStaysAndJudgesItsLinesByThePickedProtocol) {
  ScriptedListening port;
  HardwareQuestion question = Question();
  question.listening = &port;
  question.choices.PortNumber = 1;
  Open(question);
  List("cboSerialData").setCurrentIndex(7);
  Press("cmdListen");
  port.receive("12:00:00 1 2 3\r");
  List("cboSerialData").setCurrentIndex(8);
  EXPECT_EQ(port.listened.size(), 1U) << "the same port and speed";
  EXPECT_EQ(Find<QLabel>(*window, "lblLines").text(), "3 values where 4 are expected");
  window.reset();
}

TEST_F(HardwareSettingsWindow, SaysWhyThePickedPortCantBeHeardAndListensNoMore) {
  ScriptedListening port;
  HardwareQuestion question = Question();
  question.listening = &port;
  question.choices.PortNumber = 1;
  Open(question);
  Press("cmdListen");
  port.failure = "/dev/ttyS1: the serial device is in use";
  List("cboPort").setCurrentIndex(1);
  EXPECT_FALSE(port.open);
  EXPECT_FALSE(Find<QPushButton>(*window, "cmdListen").isChecked());
  EXPECT_EQ(Find<QLabel>(*window, "lblLines").text(), "/dev/ttyS1: the serial device is in use");
  port.failure.clear();
  List("cboPort").setCurrentIndex(0);
  EXPECT_EQ(Find<QLabel>(*window, "lblLines").text(), "") << "that was the other port";
  EXPECT_EQ(port.listened.size(), 1U);
  window.reset();
}

TEST_F(HardwareSettingsWindow, ShowsFiveLinesAcrossItsWidthBesideTheBarOfLongOnes) {
  ScriptedListening port;
  HardwareQuestion question = Question();
  question.listening = &port;
  question.choices.PortNumber = 1;
  Open(question);
  Press("cmdListen");
  std::string line = "12:00:00";
  for (int i = 0; i < 22; ++i) line += " 1234.56";
  for (int i = 0; i < 5; ++i) port.receive(line + "\r\n");
  Show(*window, "HardwareSettings-lines");
  const auto& box = Find<QPlainTextEdit>(*window, "txtLines");
  EXPECT_TRUE(box.horizontalScrollBar()->isVisible());
  EXPECT_GE(box.viewport()->height(), 5 * box.fontMetrics().lineSpacing());
  EXPECT_EQ(box.verticalScrollBar()->maximum(), box.verticalScrollBar()->minimum()) << "all five are in view";
  EXPECT_GE(box.width(), window->width() * 9 / 10);
  EXPECT_GT(box.mapTo(window.get(), QPoint()).y(), Find<QGroupBox>(*window, "fraPort").geometry().bottom());
  window.reset();
}

TEST_F(HardwareSettingsWindow, FollowsDevicesThatComeAndGoWhileItStands) {
  HardwareQuestion question = Question();
  question.ports[1].listed = "/dev/ttyS1";
  bool isPlugged = false;
  question.look = [&] {
    PortsFound found{question.ports, {}};
    found.ports[1].exists = isPlugged;
    if (isPlugged) found.devices = {{"/dev/ttyS1", "Acme Pump Controller"}};
    return found;
  };
  Open(question);
  window->findChild<QTimer*>("lookTimer")->setInterval(1);  // so that the test need not wait for its second
  auto& label = Find<QLabel>(*window, "lblDevice_2");
  isPlugged = true;
  EXPECT_TRUE(QTest::qWaitFor([&] { return label.text() == "2: /dev/ttyS1 - present"; }));
  dialogs.ExpectChoice("Device of Com Port 1", "/dev/ttyS1  (Acme Pump Controller)");
  Press("cmdDevice_1");
  isPlugged = false;
  EXPECT_TRUE(QTest::qWaitFor([&] { return label.text() == "2: /dev/ttyS1 - not present"; }));
  EXPECT_EQ(Find<QLabel>(*window, "lblDevice_1").toolTip(), "/dev/ttyS1") << "what was chosen stays";
}

TEST_F(HardwareSettingsWindow, LooksForDevicesOnceASecond) {
  HardwareQuestion question = Question();
  Open(question);
  EXPECT_FALSE(window->findChild<QTimer*>("lookTimer")->isActive());
  question.look = [&] { return PortsFound{question.ports, {}}; };
  Open(question);
  EXPECT_TRUE(window->findChild<QTimer*>("lookTimer")->isActive());
  EXPECT_EQ(window->findChild<QTimer*>("lookTimer")->interval(), 1000);
}

TEST_F(HardwareSettingsWindow, TellsWhyItCantListen) {
  ScriptedListening port;
  port.failure = "/dev/ttyS0: the serial device is in use";
  HardwareQuestion question = Question();
  question.listening = &port;
  question.choices.PortNumber = 1;
  Open(question);
  Press("cmdListen");
  EXPECT_EQ(Find<QLabel>(*window, "lblLines").text(), "/dev/ttyS0: the serial device is in use");
  EXPECT_FALSE(Find<QPushButton>(*window, "cmdListen").isChecked());
  window.reset();  // lets go of the port, which ends with this scope
}

TEST(HeardLines, AreCutAtAnyLineEndAndShowWhatCantBeShown) {
  HeardLines heard;
  heard.Append(
      "a\rb\nc\r\n\x07"
      "d\n");
  EXPECT_EQ(heard.Shown(), (std::deque<std::string>{"a", "b", "c",
                                                    "\\x07"
                                                    "d"}));
  heard.Append("e\nf\n");
  EXPECT_EQ(heard.Shown().size(), HeardLines::kKept);
  EXPECT_EQ(heard.Shown().front(), "b");
}

TEST(HeardLines, HoldNoMoreOfALineThatNeverEnds) {
  HeardLines heard;
  for (int i = 0; i < 1000; ++i) heard.Append(std::string(1000, 'x'));
  EXPECT_TRUE(heard.HasBytes());
  heard.Append("\r");
  EXPECT_LE(heard.Shown().back().size(), 2000U);
}

TEST_F(HardwareSettingsWindow, StaysOpenUntilTheNumbersAreRight) {
  Open(Question());
  window->show();
  Type("txtNumberOfParameters", "65");
  dialogs.Expect("from 0 to 64", Answer::Ok);
  Press("cmdOK");
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(dialogs.shown.back().title, "Serial Port Protocol");
  EXPECT_EQ(window->focusWidget(), &Find<QLineEdit>(*window, "txtNumberOfParameters"));
  EXPECT_EQ(Find<QLineEdit>(*window, "txtNumberOfParameters").selectedText(), "65");

  Type("txtNumberOfParameters", "61");
  dialogs.Expect("more than 64. Additional parameters: 4", Answer::Ok);
  Press("cmdOK");
  EXPECT_TRUE(window->isVisible());

  Type("txtNumberOfParameters", "60");
  Type("txtSensitivityCriterion", "much");
  dialogs.Expect("sensitivity", Answer::Ok);
  Press("cmdOK");
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(window->focusWidget(), &Find<QLineEdit>(*window, "txtSensitivityCriterion"));

  Type("txtSensitivityCriterion", "5");
  Press("cmdOK");
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(window->result(), QDialog::Accepted);
  EXPECT_EQ(window->Answer().NumberOfParameters, 60);
}

TEST_F(HardwareSettingsWindow, IsLeftByEscapeAndByCancel) {
  Open(Question());
  window->show();
  QTest::keyClick(window.get(), Qt::Key_Escape);
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(window->result(), QDialog::Rejected);
  Open(Question());
  window->show();
  Press("cmdCancel");
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(window->result(), QDialog::Rejected);
}

TEST_F(HardwareSettingsWindow, IsReachedByKeyboardFromTopToBottom) {
  Open(Question());
  window->show();
  window->activateWindow();
  QApplication::processEvents();
  EXPECT_EQ(
      TabOrder(*window),
      "cboSerialData cboSampling cboSamplingUnits txtNumberOfParameters txtSensitivityCriterion cboPort "
      "cmdDevice_1 cmdDevice_2 cmdDevice_3 cmdDevice_4 cboBaudRate cboParity cboDataBits cboStopBits cboHandshake "
      "txtLines cmdOK cmdCancel");
}

TEST_F(HardwareSettingsWindow, SpeaksRussian) {
  Open(Question(), "Russian");
  Show(*window, "HardwareSettings-ru");
  EXPECT_EQ(window->windowTitle(), "Настройка оборудования");
  EXPECT_EQ(List("cboSamplingUnits").currentText(), "минуты");
  EXPECT_EQ(List("cboParity").itemText(2), "Нет");
  EXPECT_EQ(List("cboPort").currentText(), "Порт COM 3");
  EXPECT_EQ(Find<QLabel>(*window, "lblDevice_2").text(), "2: /dev/ttyS1 - нет");
  List("cboSerialData").setCurrentIndex(9);
  Press("cmdOK");
  EXPECT_EQ(window->Answer().SerialData, "LUMO version B");
}

TEST_F(HardwareSettingsWindow, FitsASmallScreenAtOneAndAHalf) {
  // 1366 x 768 at scale 1.5, a bar of the desktop taken off.
  for (const char* name : {"English", "Russian"}) {
    Open(Question(), name);
    EXPECT_LE(window->sizeHint().width(), 1366 / 1.5) << name;
    EXPECT_LE(window->sizeHint().height(), 700 / 1.5) << name;
  }
}

}  // namespace
}  // namespace velk
