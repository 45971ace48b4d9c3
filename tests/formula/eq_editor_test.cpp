#include "formula/windows/eq_editor.h"

#include <gtest/gtest.h>

#include <QContextMenuEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QScreen>
#include <QTest>

#include "formula/computed_session.h"
#include "support/host.h"
#include "support/window_driving.h"

namespace velk {
namespace {

using test::Click;
using test::FindControl;
using test::ShowWindow;

class Calculator : public testing::Test, protected test::ComputedSession {
 protected:
  void Open(const char* picture = "EqEditor") {
    window_ = std::make_unique<EqEditor>(test::EnglishHost(), state,
                                         FormulaReport{dialogs, test::English(), [this] { view.Beep(); }}, graphs);
    ShowWindow(*window_, picture);
  }

  void Press(std::initializer_list<const char*> buttons) {
    for (const char* button : buttons) Click(*window_, button);
  }

  QLineEdit& Box() { return *FindControl<QLineEdit>(*window_, "Text1"); }
  QListWidget& List() { return *FindControl<QListWidget>(*window_, "List1"); }
  std::string Text() { return Box().text().toStdString(); }

  std::vector<std::string> Entries() {
    std::vector<std::string> entries;
    for (int row = 0; row < List().count(); ++row) entries.push_back(List().item(row)->text().toStdString());
    return entries;
  }

  QPoint PlaceOf(int row) { return List().visualItemRect(List().item(row)).center(); }

  void DoubleClick(int row) {
    QWidget* port = List().viewport();
    QTest::mouseClick(port, Qt::LeftButton, {}, PlaceOf(row));
    QTest::mouseDClick(port, Qt::LeftButton, {}, PlaceOf(row));
  }

  void RightClickAt(const QPoint& where) {
    QContextMenuEvent event(QContextMenuEvent::Mouse, where, List().viewport()->mapToGlobal(where));
    QApplication::sendEvent(List().viewport(), &event);
  }

  std::unique_ptr<EqEditor> window_;
};

TEST_F(Calculator, ShowsItsTexts) {
  Add("{depth}*2", "Hook load & torque");
  Open();
  EXPECT_EQ(window_->objectName(), "EqEditor");
  EXPECT_EQ(window_->windowTitle(), "Formula Calculator");
  EXPECT_EQ(FindControl<QLabel>(*window_, "Label1")->text(), "Enter formula in the box below");
  EXPECT_EQ(List().toolTip(), "Double click on parameter to include in formula, right click to see formula");
  EXPECT_EQ(FindControl<QPushButton>(*window_, "cmdClear")->text(), "Clear");
  EXPECT_EQ(FindControl<QPushButton>(*window_, "Equals")->text(), "Add Parameter");
  EXPECT_EQ(FindControl<QPushButton>(*window_, "cmdClose")->text(), "Close");
  EXPECT_TRUE(Box().hasFocus());
}

TEST_F(Calculator, AddsNoEmptyFormula) {
  Open();
  const auto* add = FindControl<QPushButton>(*window_, "Equals");
  EXPECT_FALSE(add->isEnabled());
  Box().setText("2");
  EXPECT_TRUE(add->isEnabled());
  Box().setText("  ");
  EXPECT_FALSE(add->isEnabled());
}

TEST_F(Calculator, ListsEveryParameterButBlank) {
  Add("{depth}*2", "Hook load");
  Open();
  EXPECT_EQ(Entries(), (std::vector<std::string>{"Depth", "Pump Rate", "Hook load"}));
}

TEST_F(Calculator, HasAKeyForEachDigitOperatorAndFunction) {
  Open();
  for (const char* digit : {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"}) {
    Box().clear();
    Press({(std::string("cmdDigit_") + digit).c_str()});
    EXPECT_EQ(Text(), digit);
  }
  Press({"cmdDigit_10"});
  EXPECT_EQ(Text(), "9.");
  const char* const operators[] = {"^", "/", "*", "\\", "mod", "-", "+"};
  for (int i = 0; i < 7; ++i) {
    Box().setText("2");
    Press({("cmdOperator_" + std::to_string(i)).c_str()});
    EXPECT_EQ(Text(), std::string("2") + operators[i]);
  }
  const char* const functions[] = {"pi",    "ln()",  "log()", "sin()", "cos()",
                                   "tan()", "exp()", "Avg()", "Max()", "Min()"};
  for (int i = 0; i < 10; ++i) {
    Box().clear();
    Press({("cmdFunction_" + std::to_string(i)).c_str()});
    EXPECT_EQ(Text(), functions[i]);
  }
}

TEST_F(Calculator, InsertsAtTheCursorAndMovesItOn) {
  Open();
  Box().setText("{ж}*24");
  Box().setCursorPosition(5);
  Press({"cmdDigit_3", "cmdDigit_10"});
  EXPECT_EQ(Text(), "{ж}*23.4");
  EXPECT_EQ(Box().cursorPosition(), 7);
}

TEST_F(Calculator, AppendsWhileTheCursorStandsAtTheFront) {
  Open();
  Box().setText("24");
  Box().setCursorPosition(0);
  Press({"cmdDigit_3"});
  EXPECT_EQ(Text(), "243");
  EXPECT_EQ(Box().cursorPosition(), 3);
}

TEST_F(Calculator, GivesAMinusBehindAnOperatorABracket) {
  Open();
  Press({"cmdDigit_2", "cmdOperator_2", "cmdOperator_5", "cmdDigit_3"});
  EXPECT_EQ(Text(), "2*(-3");
}

TEST_F(Calculator, CountsCharactersThatTheToolkitKeepsInTwoUnits) {
  state.CurrentParameters[1].name = "\xF0\x9F\x9B\xA2 level";
  Open();
  DoubleClick(0);
  Press({"cmdOperator_2", "cmdOperator_5"});
  EXPECT_EQ(Text(), "{\xF0\x9F\x9B\xA2 level}*(-");
}

TEST_F(Calculator, WritesInsideTheBracketsOfAFunctionAndFocusesTheText) {
  Open();
  FindControl<QPushButton>(*window_, "cmdFunction_3")->setFocus();
  Press({"cmdFunction_3"});
  EXPECT_TRUE(Box().hasFocus());
  EXPECT_EQ(Box().selectedText(), "");
  DoubleClick(0);
  EXPECT_EQ(Text(), "sin({Depth})");
  EXPECT_EQ(Box().cursorPosition(), 11);
}

TEST_F(Calculator, RefusesAnotherStatistic) {
  Open();
  Box().setText("max(");
  dialogs.Expect("Cannot insert another statistical function", Answer::Ok);
  Press({"cmdFunction_7"});
  EXPECT_EQ(Text(), "max(");
  dialogs.Expect("Cannot insert another statistical function", Answer::Ok);
  Press({"cmdFunction_3"});
  EXPECT_EQ(Text(), "max(");
  Box().setText("sin(");
  Press({"cmdFunction_8"});
  EXPECT_EQ(Text(), "sin(Max()");
}

TEST_F(Calculator, InsertsTheNameOfADoubleClickedParameterAsItIsWritten) {
  Open();
  Press({"cmdDigit_2", "cmdOperator_2"});
  DoubleClick(1);
  EXPECT_EQ(Text(), "2*{Pump Rate}");
  EXPECT_EQ(Box().cursorPosition(), 13);
}

TEST_F(Calculator, TakesEnterInTheListAsADoubleClick) {
  Open();
  List().setFocus();
  List().setCurrentRow(1);
  QTest::keyClick(&List(), Qt::Key_Return);
  EXPECT_EQ(Text(), "{Pump Rate}");
  EXPECT_EQ(state.NumberOfFormulae, 0);
}

TEST_F(Calculator, ShowsTheFormulaOfAComputedChannelOnARightClick) {
  Add("{depth}*2", "One");
  Add("avg({depth})", "Two");
  Open();
  RightClickAt(PlaceOf(2));
  EXPECT_EQ(Text(), "{depth}*2");
  RightClickAt(PlaceOf(3));
  EXPECT_EQ(Text(), "avg({depth})");
}

TEST_F(Calculator, ClearsTheTextOnARightClickOnAnInput) {
  Add("{depth}*2", "One");
  Open();
  Box().setText("2*3");
  RightClickAt(PlaceOf(1));
  EXPECT_EQ(Text(), "");
}

TEST_F(Calculator, LeavesTheTextOnARightClickBelowTheEntries) {
  Open();
  Box().setText("2*3");
  RightClickAt(QPoint(20, List().viewport()->height() - 2));
  EXPECT_EQ(Text(), "2*3");
}

TEST_F(Calculator, ClearsTheTextAndCentresItself) {
  Open();
  Box().setText("2*3");
  window_->move(1, 1);
  Press({"cmdClear"});
  EXPECT_EQ(Text(), "");
  const QPoint apart = window_->frameGeometry().center() - window_->screen()->availableGeometry().center();
  EXPECT_LE(apart.manhattanLength(), 2);
}

TEST_F(Calculator, ClosesByItsButton) {
  Open();
  Press({"cmdClose"});
  EXPECT_FALSE(window_->isVisible());
}

TEST_F(Calculator, AddsAChannelAndRebuildsTheGraphs) {
  Open();
  Box().setText("Avg({DEPTH}");
  Press({"Equals"});
  EXPECT_EQ(Text(), "avg({depth})");
  ASSERT_EQ(state.NumberOfFormulae, 1);
  EXPECT_EQ(state.Formula[1], "avg({depth})");
  EXPECT_EQ(graphs.created, 1);
  EXPECT_EQ(state.GraphCount, 2);
  EXPECT_EQ(state.GraphSlots[1][4], 4);
  EXPECT_EQ(Entries(), (std::vector<std::string>{"Depth", "Pump Rate", "Additional Parameter 1"}));
  EXPECT_EQ(List().currentRow(), 2);
}

TEST_F(Calculator, LeavesChannelsThatAreSwitchedOffSwitchedOff) {
  Add("1", "One");
  state.CurrentParameters[4].GraphVisible = state.AdditionalParameters[1].GraphVisible = false;
  Open();
  Box().setText("2");
  Press({"Equals"});
  EXPECT_FALSE(state.CurrentParameters[4].GraphVisible);
  EXPECT_EQ(state.GraphSlots[1][4], 0);
}

TEST_F(Calculator, TakesEnterInTheTextAsAddParameter) {
  Open();
  Box().setText("2");
  QTest::keyClick(&Box(), Qt::Key_Return);
  EXPECT_EQ(state.NumberOfFormulae, 1);
  EXPECT_TRUE(window_->isVisible());
}

TEST_F(Calculator, KeepsTheTextOfAFormulaThatFailed) {
  Open();
  Box().setText("SIN(2))");
  dialogs.Expect("number of left brackets", Answer::Ok);
  Press({"Equals"});
  EXPECT_EQ(Text(), "SIN(2))");
  EXPECT_EQ(view.beeps, 0);

  Box().setText("FOO");
  dialogs.Expect("string foo is not valid string", Answer::Ok);
  Press({"Equals"});
  EXPECT_EQ(Text(), "foo");
  EXPECT_EQ(view.beeps, 1);

  Box().setText("{torque}");
  dialogs.Expect("Parameter {torque} does not exist", Answer::Ok);
  Press({"Equals"});
  EXPECT_EQ(state.NumberOfFormulae, 0);
  EXPECT_EQ(graphs.created, 0);
}

TEST_F(Calculator, ReachesEveryKeyByTab) {
  Open();
  Box().setText("2");  // an empty formula can't be added
  QStringList reached;
  for (int i = 0; i < 40; ++i) {
    reached.append(QApplication::focusWidget()->objectName());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  }
  for (const QPushButton* button : window_->findChildren<QPushButton*>())
    EXPECT_TRUE(reached.contains(button->objectName())) << button->objectName().toStdString();
  EXPECT_TRUE(reached.contains("List1"));
}

TEST_F(Calculator, ShowsRussianNames) {
  state.CurrentParameters[1].name = "Давление на входе насоса";
  state.CurrentParameters[3].name = "Температура в затрубном пространстве";
  Open("EqEditor-russian");
  DoubleClick(1);
  EXPECT_EQ(Text(), "{Температура в затрубном пространстве}");
  ShowWindow(*window_, "EqEditor-russian-formula");
}

}  // namespace
}  // namespace velk
