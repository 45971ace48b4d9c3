#include "graphs/windows/curve_desk.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QHelpEvent>
#include <QMdiSubWindow>
#include <QTest>
#include <QToolTip>

#include "graphs/graph_form_fixture.h"
#include "graphs/windows/curve_editor.h"
#include "model/texts.h"
#include "support/memory_folder.h"
#include "support/window_script.h"

namespace velk {
namespace {

/// Parameters on the graphs of a job, with the desk over their windows.
class CurvesOnTheDesk : public testing::Test {
 protected:
  void Open(const std::vector<int>& graphs) {
    for (std::size_t i = 1; i <= graphs.size(); ++i) {
      Parameter& curve = session.CurrentParameters[i];
      curve.name = "P" + std::to_string(i);
      curve.units = "bar";
      curve.max = 100;
      curve.color = 0xFF0000;
      curve.format = "#0.00";
      curve.GraphVisible = true;
      curve.FormIndex = static_cast<std::int16_t>(graphs[i - 1]);
    }
    session.NumberOfParameters = session.TotalParameters = static_cast<std::int16_t>(graphs.size());
    session.Times.GraphTimeStep = test::kSecond;
    session.AcquisitionMode = true;
    session.CurrentStatus = text::StatusReadyToAcquire;
    BuildGraphMap(session, session.TotalParameters);
    area.resize(1300, 760);
    area.show();
    windows.CreateGraphWindows();
    for (int graph = 1; graph <= kMaxParameters; ++graph)
      if (windows.Form(graph)) windows.Form(graph)->EnableToolbar();
  }

  GraphFormNew& Form(int graph) { return *windows.Form(graph); }
  bool IsOpen(int graph) { return windows.Form(graph) != nullptr; }
  QAction& Key(int graph, const char* key) { return *Form(graph).findChild<QAction*>(QLatin1String(key)); }
  void Press(int graph, const char* key) { Key(graph, key).trigger(); }
  Parameter& Curve(int parameter) { return session.CurrentParameters[static_cast<std::size_t>(parameter)]; }
  std::string Label(int graph, const char* name) {
    clock.Advance(40);
    return test::LabelText(Form(graph), name);
  }

  QWidget& Band(int graph) { return Form(graph).View().HeaderBand(); }
  /// A point of a header row, at a share of the room behind the axis.
  QPoint HeaderPoint(int graph, int row, double share) {
    const double width = Band(graph).width() * kTwipsPerPixel;
    const double x = kLeftMargin + share * (width - kLeftMargin);
    return QPointF(x / kTwipsPerPixel, (row - 0.5) * kHeaderRowHeight / kTwipsPerPixel).toPoint();
  }
  void ClickHeader(int graph, int row, double share) {
    QTest::mouseClick(&Band(graph), Qt::LeftButton, {}, HeaderPoint(graph, row, share));
  }
  void ClickLabel(int graph, const char* name, Qt::MouseButton button = Qt::LeftButton) {
    test::ClickLabel(Form(graph), name, button);
  }
  std::string TipAt(int graph, double share, double row = 1) {
    const QPoint point = HeaderPoint(graph, 1, share) + QPoint(0, static_cast<int>((row - 1) * 17));
    QHelpEvent help(QEvent::ToolTip, point, Band(graph).mapToGlobal(point));
    QApplication::sendEvent(&Band(graph), &help);
    return help.isAccepted() ? QToolTip::text().toStdString() : "";
  }

  Gate gate;
  test::FakeClock clock{gate};
  test::ScriptedDialogs dialogs{gate};
  test::MemoryFolder settingsFolder;
  SettingsStore settings{settingsFolder.Path()};
  Platform platform{clock, gate, dialogs, settings, test::English()};
  WindowHost host{dialogs, test::EnglishWindows()};
  test::WindowScript script;
  Session session;
  QMdiArea area;
  ScreenRefresh refresh{platform.clock};
  GraphWindowsMdi windows{session, platform, test::EnglishWindows(), area, refresh};
  int changes = 0;
  int failures = 0;  ///< how often what follows a change is still to fail
  CurveDesk desk{host, session, platform, windows, [this] {
                   if (failures > 0 && failures-- > 0) throw RuntimeError(ErrorNumber::Overflow);
                   ++changes;
                 }};
};

// --- On the header ---

TEST_F(CurvesOnTheDesk, TellWhatAClickOnTheHeaderDoes) {
  Open({1, 1});
  EXPECT_EQ(TipAt(1, 0.1), "Click here to change the minimum value");
  EXPECT_EQ(TipAt(1, 0.5), "Click here to change the curve color");
  EXPECT_EQ(TipAt(1, 0.9), "Click here to change the maximum value");
  EXPECT_EQ(TipAt(1, -0.2), "") << "left of the axis";
  EXPECT_EQ(TipAt(1, 0.5, 4), "") << "below the header";
}

TEST_F(CurvesOnTheDesk, ChangeTheirScaleByAClick) {
  Open({1, 1});
  dialogs.ExpectInput("Enter new minimum value", "-10");
  ClickHeader(1, 2, 0.1);
  EXPECT_EQ(Curve(2).min, -10);
  EXPECT_EQ(session.Parameters[2].min, -10) << "carried back";
  dialogs.ExpectInput("Enter new maximum value", "50");
  ClickHeader(1, 1, 0.9);
  EXPECT_EQ(Curve(1).max, 50);
  EXPECT_EQ(changes, 2);
  dialogs.ExpectInput("Enter new maximum value", "");
  ClickHeader(1, 1, 0.9);
  EXPECT_EQ(changes, 2);
}

TEST_F(CurvesOnTheDesk, StayAsTheyAreDrawnWhereTheirScaleChanges) {
  Open({1});
  const double begin = 46000, ahead = 30 * test::kSecond;
  GraphFormNew& form = Form(1);
  form.View().Chart().SetTimeOrigin(begin);
  form.Picture2_Update(begin, begin + 2 * ahead);
  const auto picture = [&] {
    clock.Advance(40);
    return form.View().PlotArea().grab().toImage();
  };
  const QImage empty = picture();
  form.PlotValue(begin, begin + ahead, 20, 80, Curve(1).min, Curve(1).max, 0xFF, false);
  const QImage drawn = picture();
  EXPECT_NE(drawn, empty);
  dialogs.ExpectInput("Enter new maximum value", "5000");
  ClickHeader(1, 1, 0.9);
  EXPECT_EQ(picture(), drawn);
  EXPECT_EQ(Curve(1).max, 5000) << "for what comes next";
}

TEST_F(CurvesOnTheDesk, ChangeTheirColourByAClickInTheMiddle) {
  Open({1});
  dialogs.ExpectColour("Select a color for P1", 0x00FF00);
  ClickHeader(1, 1, 0.5);
  EXPECT_EQ(Curve(1).color, 0x00FF00);
  EXPECT_EQ(session.Parameters[1].color, 0x00FF00);
}

TEST_F(CurvesOnTheDesk, TakeNoOtherButtonAndNoOtherPlace) {
  Open({1});
  QTest::mouseClick(&Band(1), Qt::RightButton, {}, HeaderPoint(1, 1, 0.5));
  QTest::mouseClick(&Band(1), Qt::LeftButton, {}, HeaderPoint(1, 1, -0.2));
  EXPECT_EQ(changes, 0);
}

TEST_F(CurvesOnTheDesk, AskNothingWhereTheMouseWasDrawnFromElsewhere) {
  Open({1, 1});
  QWidget& labels = Form(1).View().Labels();
  const auto label = [this](const char* name) { return test::LabelBox(Form(1), name).center(); };
  const auto drag = [](QWidget& widget, Qt::MouseButton button, QPoint from, QPoint to) {
    QTest::mousePress(&widget, button, {}, from);
    QTest::mouseRelease(&widget, button, {}, to);
  };
  drag(labels, Qt::LeftButton, label("Label1_0"), label("Label1_1"));
  drag(labels, Qt::LeftButton, label("Label1_0"), label("Label3_0"));
  drag(labels, Qt::RightButton, label("Label1_0"), label("Label1_1"));
  drag(Band(1), Qt::LeftButton, HeaderPoint(1, 1, 0.1), HeaderPoint(1, 2, 0.1));
  drag(Band(1), Qt::LeftButton, HeaderPoint(1, 1, 0.1), HeaderPoint(1, 1, 0.5));
  const QPoint onPlot = HeaderPoint(1, 2, 0.5) + QPoint(0, 100);
  drag(Band(1), Qt::LeftButton, onPlot, HeaderPoint(1, 2, 0.5));
  EXPECT_EQ(changes, 0);
}

// --- On the labels ---

TEST_F(CurvesOnTheDesk, ChangeTheirNameAndTheTitleOfTheWindow) {
  Open({1, 1});
  dialogs.ExpectInput("Enter parameter name", "Pump");
  ClickLabel(1, "Label1_0");
  EXPECT_EQ(Curve(1).name, "Pump");
  EXPECT_EQ(Form(1).windowTitle(), "Pump");
  EXPECT_EQ(Label(1, "Label1_0"), "Pump");
  dialogs.ExpectInput("Enter parameter name", "Flow");
  ClickLabel(1, "Label1_1");
  EXPECT_EQ(Curve(2).name, "Flow");
  EXPECT_EQ(Form(1).windowTitle(), "Pump") << "that of row 1";
}

TEST_F(CurvesOnTheDesk, ChangeTheirUnits) {
  Open({1});
  dialogs.ExpectInput("Enter parameter units", "kPa");
  ClickLabel(1, "Label3_0");
  EXPECT_EQ(Label(1, "Label3_0"), "kPa");
  EXPECT_EQ(session.Parameters[1].units, "kPa");
}

TEST_F(CurvesOnTheDesk, ShowTheirValueInAnotherFormat) {
  Open({1});
  session.Data.hasValues = true;
  session.CurrentValue[1] = 12.3456F;
  dialogs.ExpectChoice("Number Format", "123456.1");
  ClickLabel(1, "Label2_0");
  EXPECT_EQ(Label(1, "Label2_0"), "12.3");
}

TEST_F(CurvesOnTheDesk, ShowThePropertiesOfTheRowByTheRightButton) {
  Open({1, 1});
  script.Then("Properties", [](QDialog& window) {
    EXPECT_EQ(test::FindControl<QLineEdit>(window, "txtName")->text(), "P2");
    test::FindControl<QLineEdit>(window, "txtName")->setText("Flow");
    test::FindControl<QCheckBox>(window, "optWrapping")->setChecked(true);
    test::Click(window, "cmdOK");
  });
  ClickLabel(1, "Label2_1", Qt::RightButton);
  EXPECT_EQ(Curve(2).name, "Flow");
  EXPECT_TRUE(session.Parameters[2].Wrapping);
  EXPECT_EQ(Label(1, "Label1_1"), "Flow");
  EXPECT_EQ(changes, 1);
  script.ThenClick("Properties", "cmdCancel");
  ClickLabel(1, "Label1_0", Qt::RightButton);
  EXPECT_EQ(changes, 1);
}

TEST_F(CurvesOnTheDesk, ShowNoPropertiesWhileDataComeIn) {
  Open({1});
  for (const MessageText& status : {text::StatusAcquiringData, text::StatusAcquiringPaused}) {
    session.CurrentStatus = status;
    for (const char* label : {"Label1_0", "Label2_0", "Label3_0"}) ClickLabel(1, label, Qt::RightButton);
  }
  EXPECT_EQ(changes, 0);
}

TEST_F(CurvesOnTheDesk, TellWhichProcedureFailedAndTryAgain) {
  Open({1, 1});
  failures = 2;
  dialogs.ExpectInput("Enter parameter name", "Pump");
  dialogs.Expect("Overflow - Label1_Click", Answer::Retry);
  dialogs.Expect("Overflow - Label1_Click", Answer::Cancel);
  ClickLabel(1, "Label1_0");
  EXPECT_EQ(changes, 0);
  failures = 1;
  dialogs.ExpectChoice("Number Format", "123456.1");
  dialogs.Expect("Overflow - Label2_Click", Answer::Retry);
  ClickLabel(1, "Label2_0");
  EXPECT_EQ(changes, 1);
  failures = 1;
  dialogs.ExpectInput("Enter parameter units", "kPa");
  dialogs.Expect("Overflow - Label3_Click", Answer::Cancel);
  ClickLabel(1, "Label3_0");
  failures = 1;
  dialogs.ExpectInput("Enter new maximum value", "250");
  dialogs.Expect("Overflow - Picture1_Click", Answer::Cancel);
  ClickHeader(1, 1, 0.9);
  EXPECT_EQ(Curve(1).max, 250) << "what was entered stands";
}

TEST_F(CurvesOnTheDesk, TellTheButtonOfALabelThatFailed) {
  Open({1});
  for (const char* label : {"Label1", "Label2", "Label3"}) {
    failures = 1;
    script.ThenClick("Properties", "cmdOK");
    dialogs.Expect("Overflow - " + std::string(label) + "_MouseDown", Answer::Cancel);
    ClickLabel(1, (std::string(label) + "_0").c_str(), Qt::RightButton);
  }
}

TEST_F(CurvesOnTheDesk, TellThatTheirRemovalFailed) {
  Open({1, 1});
  failures = 1;
  dialogs.Expect("Overflow - RemoveParameter", Answer::Retry);
  Press(1, "Remove");
  EXPECT_TRUE(IsOpen(2));
  EXPECT_EQ(changes, 1);
}

TEST_F(CurvesOnTheDesk, TellThatAKeyOfTheirToolbarFailedAndTryAgain) {
  Open({1, 2});
  session.LogFileInUse = "/jobs/a.mdb";
  int printed = 0;
  desk.onPrint = [&](int) {
    if (++printed == 1) throw RuntimeError(ErrorNumber::Overflow);
  };
  dialogs.Expect("Overflow - Toolbar1_ButtonClick", Answer::Retry);
  Press(1, "Print");
  EXPECT_EQ(printed, 2);
  failures = 1;
  Press(1, "Copy");
  dialogs.Expect("Overflow - Toolbar1_ButtonClick", Answer::Retry);
  Press(2, "Paste");
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(Form(2).Curves().Count(), 2);
  EXPECT_FALSE(IsOpen(1));
  for (const Answer answer : {Answer::Retry, Answer::Cancel}) {
    dialogs.Expect("Must supply a file name", Answer::Ok, [] { throw RuntimeError(ErrorNumber::Overflow); });
    dialogs.Expect("Overflow - Toolbar1_ButtonClick", answer);
  }
  Press(2, "AddComment");
}

TEST_F(CurvesOnTheDesk, TellThatTheirWindowFailedToComeToTheFront) {
  Open({1, 2});
  area.setActiveSubWindow(qobject_cast<QMdiSubWindow*>(Form(2).parentWidget()));
  delete &Key(1, "ReadValue");
  dialogs.Expect(" - Form_Activate", Answer::Cancel);
  area.setActiveSubWindow(qobject_cast<QMdiSubWindow*>(Form(1).parentWidget()));
}

/// Curves that can't be counted.
class LostCurves : public CurveSource {
 public:
  int Count() const override { throw RuntimeError(ErrorNumber::Overflow); }
  const Parameter& Curve(int /*slot*/) const override { return curve_; }

 private:
  Parameter curve_;
};

TEST_F(CurvesOnTheDesk, TellThatTheTipOfTheirHeaderFailed) {
  const LostCurves curves;
  QWidget window;
  ChartView view(session.Times, {}, curves, window.font(), test::English(), refresh, &window);
  new CurveEditor(window, view, host, {});
  for (const Answer answer : {Answer::Retry, Answer::Cancel}) dialogs.Expect("Overflow - Picture1_MouseMove", answer);
  QHelpEvent help(QEvent::ToolTip, QPoint(300, 8), QPoint(300, 8));
  QApplication::sendEvent(&view.HeaderBand(), &help);
  EXPECT_FALSE(help.isAccepted());
}

// --- From window to window ---

TEST_F(CurvesOnTheDesk, OfferPasteInEveryOtherWindow) {
  Open({1, 2, 3});
  for (const int graph : {1, 2, 3}) EXPECT_FALSE(Key(graph, "Paste").isEnabled());
  Press(2, "Copy");
  EXPECT_EQ(session.CopySource, 2);
  EXPECT_TRUE(Key(1, "Paste").isEnabled());
  EXPECT_FALSE(Key(2, "Paste").isEnabled());
  EXPECT_TRUE(Key(3, "Paste").isEnabled());
}

TEST_F(CurvesOnTheDesk, OfferPasteNowhereOnceTheCopiedWindowHasNoCurves) {
  Open({1, 2, 3});
  Press(2, "Copy");
  Curve(2).FormIndex = 3;
  BuildGraphMap(session, session.TotalParameters);
  windows.Close(2);
  windows.Close(1);
  windows.Open(1, {0, 0, 400, 300}, 0);
  EXPECT_EQ(session.CopySource, 0);
  for (const int graph : {1, 3}) EXPECT_FALSE(Key(graph, "Paste").isEnabled()) << graph;
}

TEST_F(CurvesOnTheDesk, OfferPasteNowhereWhereTheOnlyCurveOfTheCopiedWindowIsHidden) {
  Open({1, 2, 3});
  Press(2, "Copy");
  Curve(2).FormIndex = 0;
  BuildGraphMap(session, session.TotalParameters);
  windows.Close(2);
  desk.UpdateToolbars();
  EXPECT_EQ(session.CopySource, 0);
  for (const int graph : {1, 3}) EXPECT_FALSE(Key(graph, "Paste").isEnabled()) << graph;
}

TEST_F(CurvesOnTheDesk, ArePastedFromAWindowThatTheOperatorHasClosed) {
  Open({1, 2});
  Press(1, "Copy");
  windows.Close(1);
  Press(2, "Paste");
  EXPECT_EQ(Curve(1).FormIndex, 2);
  EXPECT_EQ(session.GraphCurveCount[2], 2);
}

TEST_F(CurvesOnTheDesk, HaveTheirKeysInAWindowThatIsMadeDuringTheJob) {
  session.AcquireStarted = true;
  Open({1, 1, 2});
  Press(2, "Copy");
  Press(1, "Remove");
  ASSERT_TRUE(IsOpen(3)) << "2 is taken, 1 keeps a curve";
  for (const char* key : {"AddComment", "Print", "Copy", "Paste"}) EXPECT_TRUE(Key(3, key).isEnabled()) << key;
  EXPECT_EQ(Key(3, "ReadValue").isEnabled(), Key(1, "ReadValue").isEnabled());
  EXPECT_FALSE(Key(3, "Remove").isEnabled()) << "its only curve";
}

TEST_F(CurvesOnTheDesk, TakeTheTimeOfTheirPageToTheirNewWindow) {
  Open({1, 1});
  session.AcquireStarted = true;
  const double origin = 45000 + 9.5 / 24;
  Form(1).Picture2_Update(origin, origin + 120 * test::kSecond);
  ASSERT_NE(Form(1).TimeOrigin(), 0);
  Press(1, "Remove");
  EXPECT_EQ(Form(2).TimeOrigin(), Form(1).TimeOrigin());
}

TEST_F(CurvesOnTheDesk, MoveBehindTheOthersAndCloseAWindowThatIsEmpty) {
  Open({1, 2, 3});
  Press(1, "Copy");
  Press(3, "Paste");
  EXPECT_FALSE(IsOpen(1));
  EXPECT_EQ(session.GraphSlots[2][3], 1);
  EXPECT_EQ(Curve(1).FormIndex, 3);
  EXPECT_EQ(session.Parameters[1].FormIndex, 3);
  EXPECT_EQ(Label(3, "Label1_1"), "P1");
  EXPECT_EQ(session.CopySource, 0);
  for (const int graph : {2, 3}) EXPECT_FALSE(Key(graph, "Paste").isEnabled());
  EXPECT_EQ(changes, 1);
}

TEST_F(CurvesOnTheDesk, StayInAWindowWhoseFirstCurveWasMoved) {
  Open({5, 5, 7});
  Press(5, "Copy");
  Press(7, "Paste");
  ASSERT_TRUE(IsOpen(5));
  EXPECT_EQ(Form(5).windowTitle(), "P2");
  EXPECT_EQ(Curve(2).FormIndex, 5);
  EXPECT_EQ(Curve(1).FormIndex, 7);
}

TEST_F(CurvesOnTheDesk, KeepTheTitleOfTheWindowTheyComeTo) {
  Open({1, 2});
  Press(1, "Copy");
  Press(2, "Paste");
  EXPECT_EQ(Form(2).windowTitle(), "P2");
  EXPECT_EQ(Form(2).Curves().Count(), 2);
}

TEST_F(CurvesOnTheDesk, AreRefusedByAWindowThatIsFull) {
  Open({1, 2});
  session.GraphCurveCount[2] = 64;
  Press(1, "Copy");
  dialogs.Expect("Unable to Paste on this Graph, max. number of curves is 64", Answer::Ok);
  Press(2, "Paste");
  EXPECT_EQ(dialogs.shown.back().title, "VELK Graphs");
  EXPECT_EQ(Curve(1).FormIndex, 1);
  session.GraphCurveCount[2] = 1;
}

TEST_F(CurvesOnTheDesk, LeaveAWindowOfTwoWithoutAQuestion) {
  Open({1, 1});
  Press(1, "Remove");
  ASSERT_TRUE(IsOpen(2));
  EXPECT_EQ(Curve(2).FormIndex, 2);
  EXPECT_EQ(session.Parameters[2].FormIndex, 2);
  EXPECT_EQ(Form(2).windowTitle(), "P2");
  EXPECT_EQ(Form(1).Curves().Count(), 1);
  EXPECT_FALSE(Key(1, "Remove").isEnabled()) << "nothing is left to remove";
  EXPECT_EQ(changes, 1);
}

TEST_F(CurvesOnTheDesk, AreChosenFromAListOfMoreThanTwo) {
  Open({1, 1, 1});
  dialogs.ExpectChoice("Remove Parameter from Graph", "P3");
  Press(1, "Remove");
  EXPECT_EQ(dialogs.listsAsked.back().prompt, "Select the Parameter to Remove");
  EXPECT_EQ(dialogs.listsAsked.back().entries, (std::vector<std::string>{"P1", "P2", "P3"}));
  EXPECT_TRUE(IsOpen(3));
  dialogs.ExpectChoice("Remove Parameter from Graph", std::nullopt);
  Open({1, 1, 1});
  Press(1, "Remove");
  EXPECT_EQ(session.GraphCurveCount[1], 3);
}

TEST_F(CurvesOnTheDesk, GetAFreeNumberWhereTheirsIsTaken) {
  Open({2, 2, 2, 1});
  dialogs.ExpectChoice("Remove", "P2");
  Press(2, "Remove");
  EXPECT_EQ(Curve(2).FormIndex, 3) << "2 keeps curves, 1 is another's";
  EXPECT_TRUE(IsOpen(3));
}

TEST_F(CurvesOnTheDesk, GoWithTheWindowsThatStandOpenAtTheEnd) {
  auto ownArea = std::make_unique<QMdiArea>();
  GraphWindowsMdi ownWindows{session, platform, test::EnglishWindows(), *ownArea, refresh};
  const CurveDesk ownDesk{host, session, platform, ownWindows, [] {}};
  Open({1});
  windows.UnloadAll();
  ownWindows.CreateGraphWindows();
  ownArea->show();
  QApplication::processEvents();
  EXPECT_NE(ownWindows.Form(1), nullptr);
  ownArea.reset();  // with the window in it, as the main window goes
  EXPECT_EQ(ownWindows.Form(1), nullptr);
}

// --- Print ---

TEST_F(CurvesOnTheDesk, OfferOnlyPrintAheadOfAJob) {
  Open({1, 1});
  windows.UnloadAll();
  windows.CreateGraphWindows();
  EXPECT_TRUE(Key(1, "Print").isEnabled());
  for (const char* key : {"AddComment", "Copy", "Paste", "Remove", "ReadValue"})
    EXPECT_FALSE(Key(1, key).isEnabled()) << key;
}

TEST_F(CurvesOnTheDesk, ArePrintedFromTheirOwnWindow) {
  Open({1, 2});
  session.LogFileInUse = "/jobs/a.mdb";
  int printed = 0;
  desk.onPrint = [&](int graph) { printed = graph; };
  Press(2, "Print");
  EXPECT_EQ(printed, 2);
}

TEST_F(CurvesOnTheDesk, SayThatPrintingWantsAFile) {
  Open({1});
  dialogs.Expect("File Name should be Supplied first.", Answer::Ok);
  Press(1, "Print");
}

}  // namespace
}  // namespace velk
