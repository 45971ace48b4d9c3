// The windows of a unit's table and of its tools, by clicks and keys.

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QSpinBox>
#include <QTableView>
#include <QTest>
#include <fstream>

#include "instruments/windows/orben_hardware.h"
#include "instruments/windows/orben_settings.h"
#include "platform/windows/cell_roles.h"
#include "support/host.h"
#include "support/temporary_folder.h"
#include "support/window_driving.h"

namespace velk {
namespace {

using test::Click;
using test::FindControl;

struct OrbenSettingsWindow : testing::Test {
  OrbenSettingsWindow() {
    work.unit = "LUMO version A";
    for (int i = 1; i <= 4; ++i) work.table.push_back({std::to_string(i), "0", "1", "", "", ""});
    work.directory = folder.Path().string();
    const auto note = [this](const std::string& what) {
      done += what + " ";
      if (meanwhile) meanwhile();
    };
    work.send = [this, note](const UnitRows& table) {
      sent = table;
      note("send");
      return takes;
    };
    work.reset = [note] { note("reset"); };
    work.setClock = [note] { note("clock"); };
    work.sendCommand = [note](const std::string& command) { note("[" + command + "]"); };
    work.tools = [note] { note("tools"); };
    work.cancel = [this] { ++cancels; };
    work.clock = [this] { return clock; };
    work.issued = [this] { return issued; };
    work.beep = [] {};
  }
  void Open() {
    window = std::make_unique<OrbenSettings>(host, work);
    test::ShowWindow(*window, "OrbenSettings");
  }
  QTableView& Grid() { return *FindControl<QTableView>(*window, "Grid1"); }
  std::string Cell(int row, int column) { return Grid().model()->index(row, column).data().toString().toStdString(); }
  void Type(int row, int column, const char* text) {
    Grid().setCurrentIndex(Grid().model()->index(row, column));
    Grid().setFocus();
    QTest::keyClicks(&Grid(), QString::fromLatin1(text).left(1));
    QWidget* editor = QApplication::focusWidget();
    QTest::keyClicks(editor, QString::fromLatin1(text).mid(1));
    QTest::keyClick(editor, Qt::Key_Return);
  }
  std::string Text(const char* label) { return FindControl<QLabel>(*window, label)->text().toStdString(); }

  test::Host host;
  test::TemporaryFolder folder;
  OrbenSettingsWork work;
  std::unique_ptr<OrbenSettings> window;
  std::function<void()> meanwhile;
  UnitRows sent;
  bool takes = true;  ///< the unit
  std::string done, clock = "–", issued;
  int cancels = 0;
};

TEST_F(OrbenSettingsWindow, ShowsTheTableInItsSixColumns) {
  Open();
  EXPECT_EQ(window->windowTitle(), "ORBEN's Hardware Settings");
  const QAbstractItemModel& model = *Grid().model();
  QStringList headings;
  for (int i = 0; i < model.columnCount(); ++i) headings << model.headerData(i, Qt::Horizontal).toString();
  EXPECT_EQ(headings.join("|"), "Channel|Offset|Gain|No. format|U-alarm|L-alarm");
  EXPECT_EQ(model.rowCount(), 4);
  EXPECT_EQ(Cell(3, 0), "4");
  EXPECT_FALSE(model.flags(model.index(0, 0)) & Qt::ItemIsEditable) << "the number of a channel";
}

TEST_F(OrbenSettingsWindow, SendsWhatWasTyped) {
  Open();
  Type(1, unit_column::Gain, "2,5");
  Type(1, unit_column::UpperAlarm, "100");
  Click(*window, "Command1");
  EXPECT_EQ(done, "send ");
  EXPECT_EQ(sent[1], (UnitRows::value_type{"2", "0", "2,5", "", "100", ""}));
}

TEST_F(OrbenSettingsWindow, SendsNothingWhileACellIsNoNumberAndLeadsThere) {
  Open();
  Type(2, unit_column::Offset, "zero");
  Grid().setCurrentIndex(Grid().model()->index(0, 1));
  Click(*window, "Command1");
  EXPECT_EQ(done, "");
  EXPECT_EQ(Grid().currentIndex(), Grid().model()->index(2, unit_column::Offset));
  EXPECT_EQ(Text("lblFault"), "This is no number");
}

TEST_F(OrbenSettingsWindow, WarnsOfExponentsAheadOfTheSend) {
  Open();
  Type(0, unit_column::Offset, "0.00005");
  host.dialogs.Expect("read back as others: 1. Send them all the same?", Answer::No);
  Click(*window, "Command1");
  EXPECT_EQ(done, "");
  host.dialogs.Expect("Send them all the same?", Answer::Yes);
  Click(*window, "Command1");
  EXPECT_EQ(done, "send ");
}

TEST_F(OrbenSettingsWindow, WarnsOfNoExponentThatTheUnitHasUntilACommandMayHaveChangedIt) {
  work.table[0][unit_column::Offset] = "5E-05";
  Open();
  Click(*window, "Command1");
  EXPECT_EQ(done, "send ");
  FindControl<QLineEdit>(*window, "Text1")->setText("o 1 0");
  Click(*window, "Command8");
  host.dialogs.Expect("Send them all the same?", Answer::Yes);
  Click(*window, "Command1");
  takes = false;
  Click(*window, "Command1");
  host.dialogs.Expect("Send them all the same?", Answer::No);
  Click(*window, "Command1");
  EXPECT_EQ(done, "send [o 1 0] send send ");
}

TEST_F(OrbenSettingsWindow, ResetsBehindAQuestionSetsTheClockAndSendsATypedCommand) {
  Open();
  host.dialogs.Expect("Reset it?", Answer::No);
  Click(*window, "Command3");
  host.dialogs.Expect("Reset it?", Answer::Yes);
  Click(*window, "Command3");
  Click(*window, "Command4");
  EXPECT_FALSE(FindControl<QPushButton>(*window, "Command8")->isEnabled()) << "there is no command yet";
  auto* command = FindControl<QLineEdit>(*window, "Text1");
  command->setFocus();
  QTest::keyClicks(command, "  g 1 2 ");
  Click(*window, "Command8");
  QTest::keyClick(command, Qt::Key_Return);
  Click(*window, "cmdTools");
  EXPECT_EQ(done, "reset clock [g 1 2] [g 1 2] tools ");
}

TEST_F(OrbenSettingsWindow, TakesNoOtherCommandWhileOneRunsAndIsClosedBehindIt) {
  Open();
  meanwhile = [this] {
    for (const char* button : {"Command1", "Command3", "Command4", "Command8", "cmdTools", "cmdOpen", "cmdSaveAs"})
      EXPECT_FALSE(FindControl<QPushButton>(*window, button)->isEnabled()) << button;
    EXPECT_FALSE(Grid().isEnabled());
    window->close();
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(cancels, 1);
  };
  Click(*window, "Command4");
  EXPECT_FALSE(window->isVisible());
}

TEST_F(OrbenSettingsWindow, AsksBeforeChangesAreLost) {
  Open();
  Type(0, unit_column::Gain, "7");
  takes = false;
  Click(*window, "Command1");
  host.dialogs.Expect("neither sent to the unit nor saved. Close it all the same?", Answer::No);
  window->close();
  EXPECT_TRUE(window->isVisible());
  EXPECT_TRUE(host.dialogs.shown.back().safeDefault);
  host.dialogs.Expect("Close it all the same?", Answer::Yes);
  Click(*window, "cmdClose");
  EXPECT_FALSE(window->isVisible());
}

TEST_F(OrbenSettingsWindow, AsksNothingWhereTheUnitOrAFileHasTheTable) {
  const std::string path = folder.File("mine.txt");
  const std::vector<std::function<void()>> ways = {[] {},
                                                   [&] {
                                                     Type(0, unit_column::Gain, "7");
                                                     Click(*window, "Command1");
                                                   },
                                                   [&] {
                                                     Type(0, unit_column::Gain, "8");
                                                     host.dialogs.ExpectSaveFile(path);
                                                     Click(*window, "cmdSaveAs");
                                                   },
                                                   [&] {
                                                     Type(0, unit_column::Gain, "9");
                                                     host.dialogs.ExpectOpenFile(path);
                                                     Click(*window, "cmdOpen");
                                                   },
                                                   [&] {
                                                     Type(0, unit_column::Gain, "9");
                                                     host.dialogs.SetEnding();
                                                   }};
  for (const auto& way : ways) {
    Open();
    way();
    window->close();
    EXPECT_FALSE(window->isVisible());
  }
}

TEST_F(OrbenSettingsWindow, AsksBehindWorkThatWasEndedByTheClosing) {
  Open();
  Type(0, unit_column::Gain, "7");
  takes = false;
  meanwhile = [this] { window->close(); };
  host.dialogs.Expect("Close it all the same?", Answer::No);
  Click(*window, "Command1");
  EXPECT_TRUE(window->isVisible());
  EXPECT_TRUE(FindControl<QPushButton>(*window, "Command1")->isEnabled());
}

TEST_F(OrbenSettingsWindow, ShowsTheUnitsTimeAndTheLastCommand) {
  Open();
  EXPECT_EQ(Text("lblClock"), "–");
  EXPECT_EQ(Text("lblIssued"), "");
  clock = "14-Mar-2026  09:30:00";
  issued = "s ";
  Click(*window, "Command4");
  EXPECT_EQ(Text("lblClock"), "14-Mar-2026  09:30:00");
  EXPECT_EQ(Text("lblIssued"), "Command issued: s ");
}

TEST_F(OrbenSettingsWindow, SavesAndOpensTemplates) {
  Open();
  Type(0, unit_column::Gain, "7");
  EXPECT_FALSE(FindControl<QPushButton>(*window, "cmdSave")->isEnabled());
  const std::string path = folder.File("mine.txt");
  host.dialogs.ExpectSaveFile(path);
  Click(*window, "cmdSaveAs");
  EXPECT_EQ(window->windowTitle(), "Orben Hardware Settings - Template: mine.txt");
  Type(0, unit_column::Gain, "8");
  Click(*window, "cmdSave");
  Type(0, unit_column::Gain, "9");
  host.dialogs.ExpectOpenFile(path);
  Click(*window, "cmdOpen");
  EXPECT_EQ(Cell(0, unit_column::Gain), "8");
  EXPECT_EQ(done, "") << "nothing goes to the unit";
}

TEST_F(OrbenSettingsWindow, SavesNoTemplateThatCouldNotBeOpened) {
  Open();
  Type(2, unit_column::Offset, "zero");
  Grid().setCurrentIndex(Grid().model()->index(0, 1));
  Click(*window, "cmdSaveAs");
  EXPECT_EQ(Grid().currentIndex(), Grid().model()->index(2, unit_column::Offset));
  EXPECT_EQ(Text("lblFault"), "This is no number");
}

TEST_F(OrbenSettingsWindow, RefusesATemplateOfAnotherUnitWithItsLine) {
  Open();
  const std::string path = folder.File("other.txt");
  std::ofstream(path) << "KESTA version 4\n";
  host.dialogs.ExpectOpenFile(path);
  host.dialogs.Expect("This template is of another unit; its name stands in line 1", Answer::Ok);
  Click(*window, "cmdOpen");
  EXPECT_EQ(Cell(0, unit_column::Gain), "1");
  EXPECT_EQ(window->windowTitle(), "ORBEN's Hardware Settings");
}

TEST_F(OrbenSettingsWindow, TellsWhereATemplateCannotBeWritten) {
  Open();
  host.dialogs.ExpectSaveFile("/proc/none.txt");
  host.dialogs.Expect(" - cmdSave_Click", Answer::Cancel);
  Click(*window, "cmdSaveAs");
  EXPECT_EQ(window->windowTitle(), "ORBEN's Hardware Settings");
}

TEST_F(OrbenSettingsWindow, CopiesPastesAndTakesBack) {
  Open();
  QGuiApplication::clipboard()->setText("5\t6\n7\t8\n");
  Grid().setCurrentIndex(Grid().model()->index(0, 1));
  QTest::keyClick(&Grid(), Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(Cell(1, 2), "8");
  QTest::keyClick(&Grid(), Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QGuiApplication::clipboard()->text(), "5\t6\n7\t8\n");
  QTest::keyClick(&Grid(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Cell(1, 2), "1");
}

TEST_F(OrbenSettingsWindow, SaysThatTheTableWasNotRead) {
  work.wasRead = false;
  for (int i = 0; i < 4; ++i) work.table[static_cast<std::size_t>(i)] = {std::to_string(i + 1), "", "", "", "", ""};
  Open();
  EXPECT_EQ(Text("lblFault"), "The unit's table was not read. It is read ahead of the next send.");
  const QModelIndex gain = Grid().model()->index(3, unit_column::Gain);
  EXPECT_FALSE(gain.data(FaultRole).toBool()) << "nobody could have filled it";
  Click(*window, "Command1");
  EXPECT_EQ(done, "");
  EXPECT_EQ(Text("lblFault"), "This is no number");
  EXPECT_TRUE(gain.data(FaultRole).toBool());
}

// --- The tools ---

struct ToolsWindow : testing::Test {
  ToolsWindow() {
    work.lastChannel = 13;
    work.isReady = [this] { return isReady; };
    work.send = [this](const UnitCommand& command, int channel, const std::string& preset) {
      sent += std::string(1, command.letter) + std::to_string(channel) + "(" + preset + ") ";
      if (meanwhile) meanwhile();
      return answer;
    };
    work.cancel = [this] { ++cancels; };
  }
  void Open() {
    window = std::make_unique<ORBENHardware>(host, work);
    test::ShowWindow(*window, "ORBENHardware");
  }
  QListWidget& List() { return *FindControl<QListWidget>(*window, "List1"); }
  QLineEdit& Value() { return *FindControl<QLineEdit>(*window, "Text1"); }

  test::Host host;
  OrbenHardwareWork work;
  std::unique_ptr<ORBENHardware> window;
  std::function<void()> meanwhile;
  std::optional<std::string> answer;
  std::string sent;
  bool isReady = true;
  int cancels = 0;
};

TEST_F(ToolsWindow, ListsTheCommandsInTheirOrderWithTheLastOneChosen) {
  Open();
  EXPECT_EQ(window->windowTitle(), "ORBEN Hardware Tools");
  QStringList texts;
  for (int i = 0; i < List().count(); ++i) texts << List().item(i)->text();
  EXPECT_EQ(texts.join("|"),
            "Calibrate|Set Gain|Set Offset|Set Lower Alarm|Set Upper Alarm|Remove Lower Alarm|Remove Upper Alarm|"
            "Set Number Format|Reset Counters");
  EXPECT_EQ(List().currentRow(), 8);
  EXPECT_EQ(Value().text(), "");
  const auto* channel = FindControl<QSpinBox>(*window, "UpDown1");
  EXPECT_EQ(channel->minimum(), 1);
  EXPECT_EQ(channel->maximum(), 13);
}

TEST_F(ToolsWindow, ShowsTheValueBoxForTheFiveCommandsThatTakeOne) {
  Open();
  std::string shown;
  for (int i = 0; i < List().count(); ++i) {
    List().setCurrentRow(i);
    if (Value().isVisible()) shown += UnitCommands()[static_cast<std::size_t>(i)].letter;
  }
  EXPECT_EQ(shown, "golui") << "in the order of the list";
}

TEST_F(ToolsWindow, SendsTheChosenCommandToTheChannelAndKeepsTheValue) {
  Open();
  List().setCurrentRow(1);
  FindControl<QSpinBox>(*window, "UpDown1")->setValue(5);
  QTest::keyClicks(&Value(), "2.5");
  answer = "3.5";
  QTest::keyClick(&Value(), Qt::Key_Return);
  EXPECT_EQ(sent, "g5(2.5) ");
  EXPECT_EQ(Value().text(), "3.5");
}

TEST_F(ToolsWindow, LetsACalibrationBeCancelledAndNothingElseMeanwhile) {
  Open();
  List().setCurrentRow(0);
  EXPECT_FALSE(FindControl<QPushButton>(*window, "Command3")->isEnabled());
  meanwhile = [this] {
    EXPECT_FALSE(FindControl<QPushButton>(*window, "Command2")->isEnabled());
    EXPECT_FALSE(FindControl<QPushButton>(*window, "Command1")->isEnabled());
    EXPECT_FALSE(List().isEnabled());
    Click(*window, "Command3");
    EXPECT_EQ(cancels, 1);
  };
  Click(*window, "Command2");
  EXPECT_TRUE(window->isVisible());
  EXPECT_TRUE(List().isEnabled());
}

TEST_F(ToolsWindow, IsClosedOnlyOnceTheCommandHasEnded) {
  Open();
  meanwhile = [this] {
    window->close();
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(cancels, 1);
  };
  Click(*window, "Command2");
  EXPECT_FALSE(window->isVisible());
}

TEST_F(ToolsWindow, OffersNothingButCloseWhereTheUnitTakesNoCommands) {
  isReady = false;
  Open();
  EXPECT_FALSE(FindControl<QPushButton>(*window, "Command2")->isEnabled());
  EXPECT_FALSE(List().isEnabled());
  EXPECT_EQ(
      FindControl<QLabel>(*window, "lblFault")->text(),
      "The unit could not be brought to command mode, so no command can be sent. Close this window and try again.");
  Click(*window, "Command1");
  EXPECT_FALSE(window->isVisible());
}

}  // namespace
}  // namespace velk
