#include "settings/windows/parameters_table.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTableView>
#include <QTest>

#include "settings/texts.h"
#include "support/host.h"

namespace velk {
namespace {

/// The window over so many channels named P1, P2, ..., each on the graph of its number.
class ParametersTableWindow : public testing::Test {
 protected:
  static Session SessionOf(int count) {
    Session session;
    session.AcquisitionMode = true;
    session.NumberOfParameters = session.TotalParameters = static_cast<std::int16_t>(count);
    for (int i = 1; i <= count; ++i) {
      Parameter& parameter = session.CurrentParameters[static_cast<std::size_t>(i)];
      parameter.name = "P" + std::to_string(i);
      parameter.max = 100;
      parameter.format = "#0.00";
      parameter.FormIndex = static_cast<std::int16_t>(i);
      parameter.Gain = 1;
    }
    return session;
  }

  void Open(int count = 3) {
    window = std::make_unique<ParametersTable>(host, ParameterTable(SessionOf(count)), &widths);
    window->show();
    window->activateWindow();
    QApplication::processEvents();
    grid = window->findChild<QTableView*>("Grid1");
  }

  int PlaceOf(TableColumn column) const { return window->Answer().PlaceOf(column); }
  void GoTo(int row, TableColumn column) { grid->setCurrentIndex(grid->model()->index(row, PlaceOf(column))); }
  void Select(int top, TableColumn left, int bottom, TableColumn right) {
    GoTo(top, left);
    grid->selectionModel()->select(
        QItemSelection(grid->model()->index(top, PlaceOf(left)), grid->model()->index(bottom, PlaceOf(right))),
        QItemSelectionModel::ClearAndSelect);
  }
  void Press(int key, Qt::KeyboardModifiers with = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key), with);
    QApplication::processEvents();
  }
  /// Each letter goes to whoever has the keyboard by then.
  void Type(const char* text) {
    for (const char* letter = text; *letter != '\0'; ++letter) QTest::keyClick(QApplication::focusWidget(), *letter);
  }
  QLineEdit* Editor() const { return grid->findChild<QLineEdit*>("TheGridEditor"); }
  bool IsEditing() const { return QApplication::focusWidget() != grid && Editor() != nullptr; }
  std::string Cell(int row, TableColumn column) const { return window->Answer().Cell(row, column); }
  QPoint CenterOf(int row, TableColumn column) const {
    return grid->visualRect(grid->model()->index(row, PlaceOf(column))).center();
  }
  void ClickCell(int row, TableColumn column) {
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, CenterOf(row, column));
  }
  void OpenMenu() {
    auto* menu = window->findChild<QMenu*>("mnuGridCopyPaste");
    QMetaObject::invokeMethod(grid, "customContextMenuRequested", Q_ARG(QPoint, CenterOf(0, TableColumn::Graph)));
    EXPECT_TRUE(menu->isVisible());
    menu->close();
  }
  std::string Remark() const { return window->findChild<QLabel*>("lblFault")->text().toStdString(); }

  test::Host host;
  ColumnWidths widths;
  std::unique_ptr<ParametersTable> window;
  QTableView* grid = nullptr;
};

// --- Keys ---

TEST_F(ParametersTableWindow, BeginsEditingWithTheFirstKey) {
  Open();
  Type("Pump");
  EXPECT_TRUE(IsEditing());
  EXPECT_EQ(Cell(0, TableColumn::Name), "P1") << "not stored yet";
  Press(Qt::Key_Return);
  EXPECT_FALSE(IsEditing());
  EXPECT_EQ(Cell(0, TableColumn::Name), "Pump");
  EXPECT_TRUE(grid->hasFocus());
  EXPECT_EQ(grid->currentIndex().row(), 1) << "the next cell of the column";
}

TEST_F(ParametersTableWindow, LeavesTheCellAsItWasByEscape) {
  Open();
  Type("Pump");
  Press(Qt::Key_Escape);
  EXPECT_FALSE(IsEditing());
  EXPECT_EQ(Cell(0, TableColumn::Name), "P1");
  EXPECT_TRUE(window->isVisible());
  EXPECT_TRUE(grid->hasFocus());
}

TEST_F(ParametersTableWindow, StoresAndMovesByTheArrowsUpAndDown) {
  Open();
  Type("A");
  Press(Qt::Key_Down);
  Type("B");
  Press(Qt::Key_Down);
  Type("C");
  Press(Qt::Key_Down);
  EXPECT_EQ(grid->currentIndex().row(), 2) << "no row is below";
  Type("D");
  Press(Qt::Key_Up);
  EXPECT_EQ(grid->currentIndex().row(), 1);
  EXPECT_EQ(Cell(0, TableColumn::Name), "A");
  EXPECT_EQ(Cell(1, TableColumn::Name), "B");
  EXPECT_EQ(Cell(2, TableColumn::Name), "D");
}

TEST_F(ParametersTableWindow, StoresAndGoesOnByTab) {
  Open();
  Type("A");
  Press(Qt::Key_Tab);
  Type("bar");
  Press(Qt::Key_Tab);
  EXPECT_EQ(Cell(0, TableColumn::Units), "bar");
  EXPECT_EQ(grid->currentIndex().column(), PlaceOf(TableColumn::Minimum));
  Press(Qt::Key_Backtab);
  EXPECT_EQ(grid->currentIndex().column(), PlaceOf(TableColumn::Units));
}

TEST_F(ParametersTableWindow, GoesOnInTheNextRowByTab) {
  Open();
  GoTo(0, TableColumn::Offset);
  Type("2");
  Press(Qt::Key_Tab);
  EXPECT_EQ(Cell(0, TableColumn::Offset), "2");
  EXPECT_EQ(grid->currentIndex().row(), 1);
  EXPECT_EQ(grid->currentIndex().column(), 0);
  Type("B");
  Press(Qt::Key_Backtab);
  EXPECT_EQ(Cell(1, TableColumn::Name), "B");
  EXPECT_EQ(grid->currentIndex().row(), 0);
  EXPECT_EQ(grid->currentIndex().column(), PlaceOf(TableColumn::Offset));
  GoTo(2, TableColumn::Offset);
  Type("3");
  Press(Qt::Key_Tab);
  EXPECT_EQ(grid->currentIndex(), grid->model()->index(2, PlaceOf(TableColumn::Offset))) << "there is no next row";
  GoTo(0, TableColumn::Name);
  Type("A");
  Press(Qt::Key_Backtab);
  EXPECT_EQ(grid->currentIndex(), grid->model()->index(0, 0));
}

TEST_F(ParametersTableWindow, EditsThePresentTextByF2) {
  Open();
  Press(Qt::Key_F2);
  ASSERT_TRUE(IsEditing());
  EXPECT_EQ(Editor()->text(), "P1");
  Press(Qt::Key_End);
  Type(" in");
  Press(Qt::Key_Return);
  EXPECT_EQ(Cell(0, TableColumn::Name), "P1 in");
}

TEST_F(ParametersTableWindow, ClearsByDeleteAndTakesItBack) {
  Open();
  Select(0, TableColumn::Name, 1, TableColumn::Format);
  Press(Qt::Key_Delete);
  EXPECT_EQ(Cell(0, TableColumn::Name), "");
  EXPECT_EQ(Cell(1, TableColumn::Maximum), "");
  EXPECT_EQ(Cell(0, TableColumn::Format), "12345.12") << "there is always one";
  Press(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Cell(0, TableColumn::Name), "P1");
  EXPECT_EQ(Cell(1, TableColumn::Maximum), "100");
}

// --- Choices ---

TEST_F(ParametersTableWindow, AsksForTheColourByAClick) {
  Open();
  host.dialogs.ExpectColour("Select a color for P2", 0x00FF00);
  ClickCell(1, TableColumn::Color);
  EXPECT_EQ(Cell(1, TableColumn::Color), "#00FF00");
  host.dialogs.ExpectColour("Select a color for P2", std::nullopt);
  ClickCell(1, TableColumn::Color);
  EXPECT_EQ(Cell(1, TableColumn::Color), "#00FF00");
}

TEST_F(ParametersTableWindow, FramesAColourThatIsLikeItsGround) {
  Open();
  host.dialogs.ExpectColour("Select a color for P2", 0xFFFFFF);
  ClickCell(1, TableColumn::Color);
  GoTo(0, TableColumn::Name);
  const QImage picture = grid->viewport()->grab().toImage();
  const QRect cell = grid->visualRect(grid->model()->index(1, PlaceOf(TableColumn::Color)));
  EXPECT_EQ(picture.pixelColor(cell.left() + 4, cell.center().y()), QColor(128, 128, 128));
  EXPECT_EQ(picture.pixelColor(cell.left() + 5, cell.center().y()), QColor(Qt::white));
}

TEST_F(ParametersTableWindow, AsksOnceForTheColourByADoubleClick) {
  Open();
  host.dialogs.ExpectColour("Select a color for P2", 0x00FF00);
  ClickCell(1, TableColumn::Color);
  QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, CenterOf(1, TableColumn::Color));
  EXPECT_EQ(Cell(1, TableColumn::Color), "#00FF00");
  EXPECT_FALSE(IsEditing());
}

TEST_F(ParametersTableWindow, AsksForTheFormatByAClick) {
  Open();
  host.dialogs.ExpectChoice("Number Format", "123456.1");
  ClickCell(0, TableColumn::Format);
  EXPECT_EQ(Cell(0, TableColumn::Format), "123456.1");
  const ShownListQuestion& asked = host.dialogs.listsAsked.back();
  EXPECT_EQ(asked.prompt, "Select Number Format");
  EXPECT_EQ(asked.entries, (std::vector<std::string>{"12345678", "123456.1", "12345.12", "1234.123", "123.1234",
                                                     "12.12345", "1.23456E+01"}));
}

TEST_F(ParametersTableWindow, GivesSeveralRowsOneColourFormatAndGraph) {
  Open();
  Select(0, TableColumn::Color, 1, TableColumn::Color);
  host.dialogs.ExpectColour("P1", 0x0000FF);
  Press(Qt::Key_F2);
  Select(1, TableColumn::Format, 2, TableColumn::Format);
  host.dialogs.ExpectChoice("Number Format", "12345678");
  Press(Qt::Key_Space);
  Select(0, TableColumn::Graph, 2, TableColumn::Graph);
  Type("7");
  Press(Qt::Key_Return);
  for (int row = 0; row < 3; ++row) {
    EXPECT_EQ(Cell(row, TableColumn::Color), row < 2 ? "#FF0000" : "#000000");
    EXPECT_EQ(Cell(row, TableColumn::Format), row > 0 ? "12345678" : "12345.12");
    EXPECT_EQ(Cell(row, TableColumn::Graph), "7");
  }
}

TEST_F(ParametersTableWindow, AsksWhereALetterIsTypedIntoAColourOrAFormat) {
  Open();
  GoTo(1, TableColumn::Color);
  host.dialogs.ExpectColour("P2", 0x0000FF);
  Type("P");
  EXPECT_EQ(Cell(1, TableColumn::Color), "#FF0000");
  EXPECT_EQ(grid->currentIndex().row(), 1);
  GoTo(1, TableColumn::Format);
  host.dialogs.ExpectChoice("Number Format", "12345678");
  Type("1");
  EXPECT_EQ(Cell(1, TableColumn::Format), "12345678");
}

// --- Widths ---

TEST_F(ParametersTableWindow, KeepsTheWidthThatAColumnWasDrawnTo) {
  Open();
  const int units = PlaceOf(TableColumn::Units);
  EXPECT_TRUE(widths.empty()) << "nothing was drawn yet";
  grid->setColumnWidth(units, 333);
  EXPECT_EQ(widths, (ColumnWidths{{"Units", 333}}));
  GoTo(0, TableColumn::Units);
  Type("a unit with a very, very long name that would want much more room than the operator has given to it");
  Press(Qt::Key_Return);
  EXPECT_EQ(grid->columnWidth(units), 333);
  Open();
  EXPECT_EQ(grid->columnWidth(units), 333);
}

TEST_F(ParametersTableWindow, GivesAColumnBackToItsTextsByADoubleClickOnItsEdge) {
  widths = {{"Gain", 400}};
  Open();
  auto* header = grid->horizontalHeader();
  const int gain = PlaceOf(TableColumn::Gain);
  const QPoint edge(header->sectionViewportPosition(gain) + header->sectionSize(gain) - 1, header->height() / 2);
  QTest::mouseDClick(header->viewport(), Qt::LeftButton, {}, edge);
  EXPECT_LT(grid->columnWidth(gain), 200);
  EXPECT_TRUE(widths.empty());
}

TEST_F(ParametersTableWindow, GrowsWithATextThatNobodyHasGivenAWidth) {
  Open();
  const int before = grid->columnWidth(PlaceOf(TableColumn::Units));
  GoTo(0, TableColumn::Units);
  Type("a unit with a long name");
  Press(Qt::Key_Return);
  EXPECT_GT(grid->columnWidth(PlaceOf(TableColumn::Units)), before);
  EXPECT_TRUE(widths.empty());
}

// --- The menu, and other programs ---

TEST_F(ParametersTableWindow, OffersItsMenuOfTheRightButton) {
  Open();
  Select(0, TableColumn::Graph, 1, TableColumn::Graph);
  OpenMenu();
  host.dialogs.ExpectInput("Enter the graph number of the selected rows", "4");
  window->findChild<QAction*>("mnuChange")->trigger();
  EXPECT_EQ(Cell(0, TableColumn::Graph), "4");
  EXPECT_EQ(Cell(1, TableColumn::Graph), "4");
  OpenMenu();
  window->findChild<QAction*>("mnuUndo")->trigger();
  EXPECT_EQ(Cell(1, TableColumn::Graph), "2");
}

TEST_F(ParametersTableWindow, CopiesCutsAndPastesARange) {
  Open();
  Select(0, TableColumn::Name, 1, TableColumn::Minimum);
  window->findChild<QAction*>("mnuCopy")->trigger();
  EXPECT_EQ(QApplication::clipboard()->text(), "P1\t\t0\nP2\t\t0\n");
  Press(Qt::Key_X, Qt::ControlModifier);
  EXPECT_EQ(Cell(1, TableColumn::Name), "");
  GoTo(1, TableColumn::Name);
  Press(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(Cell(1, TableColumn::Name), "P1");
  EXPECT_EQ(Cell(2, TableColumn::Name), "P2");
}

TEST_F(ParametersTableWindow, TakesSixtyFourRowsOfASpreadsheet) {
  Open(64);
  QString text;
  for (int i = 1; i <= 64; ++i) text += QStringLiteral("Channel %1\tbar\t-%1,5\t%1,5\r\n").arg(i);
  QApplication::clipboard()->setText(text);
  GoTo(0, TableColumn::Name);
  Press(Qt::Key_V, Qt::ControlModifier);
  Session session = SessionOf(64);
  EXPECT_FALSE(StoreTable(session, window->Answer()));
  for (int i = 1; i <= 64; ++i) {
    const Parameter& parameter = session.CurrentParameters[static_cast<std::size_t>(i)];
    EXPECT_EQ(parameter.name, "Channel " + std::to_string(i));
    EXPECT_EQ(parameter.units, "bar");
    EXPECT_EQ(parameter.min, -i - 0.5);
    EXPECT_EQ(parameter.max, i + 0.5);
  }
}

TEST_F(ParametersTableWindow, SaysThatAPasteHadNoRoom) {
  Open();
  QApplication::clipboard()->setText("A\r\nB\r\nC\r\nD\r\n");
  Press(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(Cell(2, TableColumn::Name), "C");
  EXPECT_EQ(Remark(), "What was copied is larger than the table from this cell on: the rest was left out.");
  GoTo(1, TableColumn::Name);
  EXPECT_EQ(Remark().find("What was copied"), std::string::npos);
}

// --- Closing ---

TEST_F(ParametersTableWindow, StaysOpenWhileAScaleIsUpsideDown) {
  Open();
  GoTo(1, TableColumn::Maximum);
  Type("0");
  Press(Qt::Key_Return);
  host.dialogs.Expect("Graph maximum scales must be greater than minimum scales", Answer::Ok);
  window->close();
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(host.dialogs.shown.back().icon, BoxIcon::Critical);
  EXPECT_EQ(grid->currentIndex().row(), 1);
  EXPECT_EQ(grid->currentIndex().column(), PlaceOf(TableColumn::Maximum));
  EXPECT_EQ(Remark(), "Graph maximum scales must be greater than minimum scales");
  Type("5");
  Press(Qt::Key_Return);
  window->close();
  EXPECT_FALSE(window->isVisible());
}

TEST_F(ParametersTableWindow, StoresAnOpenEditorWhenItIsClosed) {
  Open();
  Type("Pump");
  window->close();
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(Cell(0, TableColumn::Name), "Pump");
}

TEST_F(ParametersTableWindow, StoresAnOpenEditorWhereTheProgramEnds) {
  Open();
  Type("Pump");
  host.dialogs.SetEnding();
  window->close();
  EXPECT_EQ(Cell(0, TableColumn::Name), "Pump");
}

TEST_F(ParametersTableWindow, HasNothingForTheKeysToDoWithoutChannels) {
  Open(0);
  QApplication::clipboard()->setText("before");
  Press(Qt::Key_C, Qt::ControlModifier);
  Press(Qt::Key_X, Qt::ControlModifier);
  Press(Qt::Key_V, Qt::ControlModifier);
  Press(Qt::Key_Delete);
  EXPECT_EQ(QApplication::clipboard()->text(), "before");
  window->close();
  EXPECT_FALSE(window->isVisible());
}

TEST_F(ParametersTableWindow, SaysWhatIsWrongWithANumber) {
  Open();
  GoTo(0, TableColumn::Gain);
  Type("1e999");
  Press(Qt::Key_Return);
  GoTo(0, TableColumn::Gain);
  EXPECT_EQ(Remark(), "This number is too large.");
  GoTo(1, TableColumn::Gain);
  Type("1.234.567");
  Press(Qt::Key_Return);
  GoTo(1, TableColumn::Gain);
  EXPECT_EQ(Remark().substr(0, 37), "This number can be read in two ways. ");
}

TEST_F(ParametersTableWindow, ShowsInPlaceWhatCannotStand) {
  Open();
  GoTo(2, TableColumn::Graph);
  Type("65");
  Press(Qt::Key_Return);
  GoTo(0, TableColumn::Name);
  window->close();
  EXPECT_TRUE(window->isVisible()) << "without a box";
  EXPECT_EQ(grid->currentIndex().row(), 2);
  EXPECT_NE(Remark().find("0 to 64"), std::string::npos) << Remark();
  EXPECT_EQ(Cell(2, TableColumn::Graph), "65") << "what was typed stays";
  EXPECT_TRUE(grid->currentIndex().data(FaultRole).toBool());
}

TEST_F(ParametersTableWindow, SaysAtANameThatThereIsAnother) {
  Open();
  GoTo(1, TableColumn::Name);
  Type("P1");
  Press(Qt::Key_Down);
  GoTo(1, TableColumn::Name);
  EXPECT_EQ(Remark(), "Cannot have two parameters with the same name, please change name of (P1)");
  window->close();
  EXPECT_FALSE(window->isVisible());
}

TEST_F(ParametersTableWindow, ClosesAtTheEndOfTheProgramWhateverItHolds) {
  Open();
  GoTo(1, TableColumn::Maximum);
  Type("0");
  Press(Qt::Key_Return);
  host.dialogs.SetEnding();
  window->reject();
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(window->result(), QDialog::Accepted) << "it is stored";
}

}  // namespace
}  // namespace velk
