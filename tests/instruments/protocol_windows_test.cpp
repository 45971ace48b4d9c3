#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>

#include "instruments/windows/formatted_data.h"
#include "instruments/windows/frm_hpt_honeywell_ez_trend.h"
#include "instruments/windows/hardware_settings.h"
#include "instruments/windows/intermittent.h"
#include "instruments/windows/requested_data.h"
#include "instruments/windows_fixture.h"

namespace velk {
namespace {

using test::Find;
using test::Show;
using test::TabOrder;

/// What both windows of separators have in common.
template <class Window>
class SeparatorWindows : public testing::Test {
 protected:
  void Open(const Separators& separators, const std::string& name = "English") {
    language = test::In(name);
    window = std::make_unique<Window>(host, separators);
    window->show();
    window->activateWindow();
    QApplication::processEvents();
  }
  QRadioButton& Option(const char* list, int option) {
    return Find<QRadioButton>(*window, QStringLiteral("opt%1_%2").arg(list).arg(option));
  }
  int Checked(const char* list, int count) {
    for (int i = 0; i < count; ++i)
      if (Option(list, i).isChecked()) return i;
    return -1;
  }
  int Delimiter() { return Checked("Delimiter", 5); }
  int Terminator() { return Checked("Terminator", 4); }
  QString Typed() { return Find<QLabel>(*window, "lblTyped").text(); }

  Gate gate;
  test::ScriptedDialogs dialogs{gate};
  Translation language;
  WindowHost host{dialogs, language};
  std::unique_ptr<Window> window;
};

using BothWindows = testing::Types<FormattedData, Intermittent>;

class NamesOfWindows {
 public:
  template <class Window>
  static std::string GetName(int) {
    return std::is_same_v<Window, FormattedData> ? "FormattedData" : "Intermittent";
  }
};
TYPED_TEST_SUITE(SeparatorWindows, BothWindows, NamesOfWindows);

TYPED_TEST(SeparatorWindows, ShowWhatIsStored) {
  const char* const delimiters[] = {" ", "\t", ",", ";", "|"};
  const char* const terminators[] = {"\r", "\n", "\r\n", "\n\r"};
  for (int delimiter = 0; delimiter < 5; ++delimiter) {
    const int terminator = delimiter % 4;
    this->Open({delimiters[delimiter], terminators[terminator]});
    EXPECT_EQ(this->Delimiter(), delimiter);
    EXPECT_EQ(this->Terminator(), terminator);
    EXPECT_EQ(this->Typed(), delimiter == 4 ? "|" : "");
    Find<QPushButton>(*this->window, "cmdOK").click();
    EXPECT_EQ(this->window->result(), QDialog::Accepted);
    EXPECT_EQ(this->window->Answer().Delimiter, delimiters[delimiter]);
    EXPECT_EQ(this->window->Answer().Terminator, terminators[terminator]);
  }
}

TYPED_TEST(SeparatorWindows, KeepATerminatorThatIsNoOption) {
  this->Open({" ", "\x03"});
  EXPECT_EQ(this->Terminator(), -1);
  Find<QPushButton>(*this->window, "cmdOK").click();
  EXPECT_EQ(this->window->Answer().Terminator, "\x03");
}

TYPED_TEST(SeparatorWindows, GiveEachOption) {
  this->Open({";", "\n\r"});
  const char* const delimiters[] = {" ", "\t", ",", ";"};
  const char* const terminators[] = {"\r", "\n", "\r\n", "\n\r"};
  for (int i = 0; i < 4; ++i) {
    this->Option("Delimiter", i).click();
    this->Option("Terminator", i).click();
    EXPECT_EQ(this->window->Answer().Delimiter, delimiters[i]);
    EXPECT_EQ(this->window->Answer().Terminator, terminators[i]);
  }
}

TYPED_TEST(SeparatorWindows, AskForADelimiterThatIsTyped) {
  this->Open({",", "\r"});
  this->dialogs.ExpectInput("Please speicfy the demiliter character by typing it", "#");
  this->Option("Delimiter", 4).click();
  EXPECT_EQ(this->dialogs.inputTitles.back(), "Serial Port Protocol");
  EXPECT_EQ(this->window->Answer().Delimiter, "#");
  EXPECT_EQ(this->Delimiter(), 4);
  EXPECT_EQ(this->Typed(), "#");
}

TYPED_TEST(SeparatorWindows, RefuseATextThatIsNotOneCharacter) {
  for (const char* typed : {"", "::"}) {
    this->Open({",", "\r"});
    this->dialogs.ExpectInput("Please speicfy", typed);
    this->dialogs.Expect("Delimiter is not valid", Answer::Ok);
    this->Option("Delimiter", 4).click();
    EXPECT_EQ(this->dialogs.shown.back().text, "Delimiter is not valid");
    EXPECT_EQ(this->Delimiter(), 2);
    EXPECT_EQ(this->window->Answer().Delimiter, ",");
  }
}

TYPED_TEST(SeparatorWindows, KeepTheDelimiterWhenTypingIsCancelled) {
  this->Open({"|", "\r"});
  this->dialogs.ExpectInput("Please speicfy", std::nullopt);
  this->Option("Delimiter", 4).click();
  EXPECT_EQ(this->window->Answer().Delimiter, "|");
  EXPECT_EQ(this->Delimiter(), 4);
}

TYPED_TEST(SeparatorWindows, MarkTheOptionOfACharacterThatHasOne) {
  this->Open({"|", "\r"});
  this->dialogs.ExpectInput("Please speicfy", ";");
  this->Option("Delimiter", 4).click();
  EXPECT_EQ(this->Delimiter(), 3);
  EXPECT_EQ(this->Typed(), "");
}

TYPED_TEST(SeparatorWindows, AreReachedByKeyboard) {
  this->Open({",", "\r\n"});
  EXPECT_EQ(TabOrder(*this->window), "optDelimiter_2 optTerminator_2 cmdOK cmdCancel");
  QTest::keyClick(this->window->focusWidget(), Qt::Key_Down);
  EXPECT_EQ(this->window->Answer().Delimiter, ";");
  QTest::keyClick(this->window->focusWidget(), Qt::Key_Escape);
  EXPECT_FALSE(this->window->isVisible());
  EXPECT_EQ(this->window->result(), QDialog::Rejected);
}

TYPED_TEST(SeparatorWindows, SpeakBothLanguages) {
  this->Open({"|", "\r\n"});
  const QString name = this->window->objectName();
  EXPECT_EQ(QString::fromStdString(NamesOfWindows::GetName<TypeParam>(0)), name);
  Show(*this->window, name + "-en");
  EXPECT_EQ(this->Option("Delimiter", 0).text(), "&Blank");
  EXPECT_EQ(this->Option("Terminator", 2).text().remove('&'), "CR LF");
  this->Open({"|", "\r\n"}, "Russian");
  Show(*this->window, name + "-ru");
  EXPECT_EQ(this->Option("Delimiter", 0).text(), "&Пробел");
  EXPECT_EQ(Find<QPushButton>(*this->window, "cmdOK").text(), "ОК");
}

// --- RequestedData ---

std::vector<ParameterCommands> Commands(int count) {
  std::vector<ParameterCommands> commands;
  for (int i = 1; i <= count; ++i)
    commands.push_back({"Давление & расход № " + std::to_string(i), "READ " + std::to_string(i) + "\r\n", "SET=\r"});
  return commands;
}

TEST(RequestedDataWindow, ShowsTheCommandsAndWhatTheyEndWith) {
  const std::vector<ParameterCommands> commands = {{"Flow", "F?\r\n", "F=\n"}, {"<b>Level</b>", "L?", "L=\r"}};
  RequestedData window(test::EnglishHost(), commands);
  Show(window, "RequestedData-en");
  EXPECT_EQ(window.objectName(), "RequestedData");
  EXPECT_EQ(Find<QLabel>(window, "lblName_1").text(), "Flow");
  EXPECT_EQ(Find<QLabel>(window, "lblName_2").textFormat(), Qt::PlainText);
  EXPECT_EQ(Find<QLineEdit>(window, "txtCommand_1").text(), "F?");
  EXPECT_TRUE(Find<QCheckBox>(window, "chkCommandCR_1").isChecked());
  EXPECT_TRUE(Find<QCheckBox>(window, "chkCommandLF_1").isChecked());
  EXPECT_EQ(Find<QLineEdit>(window, "txtReset_1").text(), "F=");
  EXPECT_FALSE(Find<QCheckBox>(window, "chkResetCR_1").isChecked());
  EXPECT_TRUE(Find<QCheckBox>(window, "chkResetLF_1").isChecked());
  EXPECT_FALSE(Find<QCheckBox>(window, "chkCommandCR_2").isChecked());
  EXPECT_FALSE(Find<QCheckBox>(window, "chkCommandLF_2").isChecked());
  EXPECT_TRUE(Find<QCheckBox>(window, "chkResetCR_2").isChecked());
  EXPECT_EQ(window.findChild<QLineEdit*>("txtCommand_3"), nullptr);
}

TEST(RequestedDataWindow, GivesTheTextsWithTheEndsThatTheBoxesSay) {
  RequestedData window(test::EnglishHost(), {{"Flow", "F?\r\n", ""}, {"Level", "L?", "L=\r"}});
  window.show();
  Find<QLineEdit>(window, "txtCommand_1").setText("Q 1");
  Find<QCheckBox>(window, "chkCommandCR_1").click();
  Find<QCheckBox>(window, "chkCommandCR_2").click();
  Find<QCheckBox>(window, "chkCommandLF_2").click();
  Find<QLineEdit>(window, "txtReset_1").setText("Z");
  Find<QPushButton>(window, "cmdOK").click();
  EXPECT_EQ(window.result(), QDialog::Accepted);
  const auto commands = window.Answer();
  ASSERT_EQ(commands.size(), 2U);
  EXPECT_EQ(commands[0].CommandString, "Q 1\n");
  EXPECT_EQ(commands[0].ResetCommand, "Z");
  EXPECT_EQ(commands[1].CommandString, "L?\r\n");
  EXPECT_EQ(commands[1].ResetCommand, "L=\r");
}

TEST(RequestedDataWindow, LeavesWhatWasNotTouchedToItsLastByte) {
  // Bytes that are no text, line ends inside, and the order LF CR.
  const std::vector<ParameterCommands> commands = {{"a", "\x02\xFF READ\n\r", "A\rB\r"}, {"b", "", "\r\n"}};
  RequestedData window(test::EnglishHost(), commands);
  const auto same = window.Answer();
  for (std::size_t i = 0; i < commands.size(); ++i) {
    EXPECT_EQ(same[i].CommandString, commands[i].CommandString);
    EXPECT_EQ(same[i].ResetCommand, commands[i].ResetCommand);
  }
}

TEST(RequestedDataWindow, BringsEveryBoxOf64ParametersIntoViewByKeyboard) {
  RequestedData window(test::EnglishHost(), Commands(64));
  Show(window, "RequestedData-64");
  const auto& area = Find<QScrollArea>(window, "scrollArea");
  for (int i = 1; i <= 64; ++i) {
    for (const char* what : {"txtCommand", "chkCommandCR", "chkCommandLF", "txtReset", "chkResetCR", "chkResetLF"}) {
      QWidget* const box = window.focusWidget();
      EXPECT_EQ(box->objectName(), QStringLiteral("%1_%2").arg(what).arg(i));
      const QRect seen(box->mapTo(area.viewport(), QPoint(0, 0)), box->size());
      EXPECT_TRUE(area.viewport()->rect().contains(seen)) << box->objectName().toStdString();
      QTest::keyClick(box, Qt::Key_Tab);
    }
  }
  EXPECT_EQ(window.focusWidget()->objectName(), "cmdOK");
}

TEST(RequestedDataWindow, OpensWithoutParameters) {
  RequestedData window(test::EnglishHost(), std::vector<ParameterCommands>{});
  Show(window, "RequestedData-none");
  EXPECT_EQ(window.focusWidget()->objectName(), "cmdOK");
  EXPECT_TRUE(window.Answer().empty());
}

TEST(RequestedDataWindow, SpeaksRussian) {
  const Translation russian = test::In("Russian");
  test::Host host(russian);
  RequestedData window(host, Commands(5));
  Show(window, "RequestedData-ru");
  EXPECT_EQ(window.windowTitle(), "Передача по запросу");
  EXPECT_EQ(Find<QLabel>(window, "lblReset").text(), "Команда сброса");
}

// --- frmHPTHoneywellEZtrend ---

TEST(EthernetConfigurationWindow, EditsAddressAndPage) {
  frmHPTHoneywellEZtrend window(test::EnglishHost(), {"192.168.0.100", "pens.htm"});
  Show(window, "frmHPTHoneywellEZtrend-en");
  EXPECT_EQ(window.objectName(), "frmHPTHoneywellEZtrend");
  EXPECT_EQ(window.windowTitle(), "Ethernet Configuration");
  EXPECT_EQ(Find<QLabel>(window, "lblIPAddress").text(), "IP Address:");
  EXPECT_EQ(Find<QLabel>(window, "lblHTML").text(), "HTML:");
  EXPECT_EQ(Find<QLineEdit>(window, "txtIPAddress").text(), "192.168.0.100");
  EXPECT_EQ(Find<QLineEdit>(window, "txtHTML").text(), "pens.htm");
  EXPECT_EQ(TabOrder(window), "txtIPAddress txtHTML cmdOK cmdCancel");
  Find<QLineEdit>(window, "txtIPAddress").setText(" 10.1.2.3 ");
  Find<QLineEdit>(window, "txtHTML").setText("auto/002/");
  QTest::keyClick(&window, Qt::Key_Return);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !window.isVisible(); }));
  EXPECT_EQ(window.result(), QDialog::Accepted);
  EXPECT_EQ(window.Answer().daqIPAddress, "10.1.2.3");
  EXPECT_EQ(window.Answer().daqHTML, "auto/002/");
}

TEST(EthernetConfigurationWindow, FillsThePageThatIsNotStored) {
  const frmHPTHoneywellEZtrend window(test::EnglishHost(), {"", ""});
  EXPECT_EQ(window.Answer().daqIPAddress, "");
  EXPECT_EQ(window.Answer().daqHTML, "auto/001/");
}

TEST(EthernetConfigurationWindow, SpeaksRussian) {
  const Translation russian = test::In("Russian");
  test::Host host(russian);
  frmHPTHoneywellEZtrend window(host, {"192.168.0.100", "pens.htm"});
  Show(window, "frmHPTHoneywellEZtrend-ru");
  EXPECT_EQ(window.windowTitle(), "Настройка Ethernet");
  EXPECT_EQ(Find<QLabel>(window, "lblIPAddress").text(), "IP-адрес:");
}

}  // namespace
}  // namespace velk
