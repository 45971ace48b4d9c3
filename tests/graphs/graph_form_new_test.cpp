#include "graphs/windows/graph_form_new.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QPointer>

#include "graphs/graph_form_fixture.h"

namespace velk::test {

namespace {

void RunDeletions() {
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

/// Pixels of a colour in what a control shows.
int CountOf(QWidget* widget, QRgb colour) {
  const QImage picture = widget->grab().toImage();
  int count = 0;
  for (int y = 0; y < picture.height(); ++y)
    for (int x = 0; x < picture.width(); ++x) count += (picture.pixel(x, y) & 0xFFFFFF) == colour;
  return count;
}

}  // namespace

TEST(GraphFormNew, IsCalledAfterItsFirstCurveAndStandsInTheSession) {
  GraphDesk desk(2);
  desk.Create();
  EXPECT_EQ(desk.Form().windowTitle(), "Pressure 1");
  EXPECT_NE(desk.session.GraphForms[3], nullptr);
  EXPECT_EQ(desk.Form().FormIndex(), 3);
}

TEST(GraphFormNew, ShowsNameValueAndUnitsOfEachCurve) {
  GraphDesk desk(3);
  desk.session.CurrentValue[2] = 1.5f;
  desk.Create();
  desk.Refresh();
  EXPECT_EQ(desk.Text("Label1_0"), "Pressure 1");
  EXPECT_EQ(desk.Text("Label1_2"), "Pressure 3");
  EXPECT_EQ(desk.Text("Label2_1"), "1.500");
  EXPECT_EQ(desk.Text("Label3_2"), "psi");
  EXPECT_EQ(desk.Rows(), 3);
}

TEST(GraphFormNew, WritesAValueByThePictureOfItsParameter) {
  GraphDesk desk(2);
  desk.session.CurrentParameters[2].format = "#0.0";
  desk.Create();
  desk.Form().WriteValuesToLabels(1, 12.3456f);
  desk.Form().WriteValuesToLabels(2, -0.25f);
  desk.Form().WriteValuesToLabels(5, 99);  // no curve of this window
  desk.Refresh();
  EXPECT_EQ(desk.Text("Label2_0"), "12.346");
  EXPECT_EQ(desk.Text("Label2_1"), "-0.3");
}

TEST(GraphFormNew, ShowsValuesAtMostThirtyTimesASecond) {
  GraphDesk desk;
  desk.Create();
  desk.Refresh();
  int changes = 0;
  std::string before = desk.Text("Label2_0");
  for (int millisecond = 0; millisecond < 1000; ++millisecond) {
    desk.Form().WriteValuesToLabels(1, static_cast<float>(millisecond));
    desk.clock.Advance(1);
    const std::string now = desk.Text("Label2_0");
    changes += now != before;
    before = now;
  }
  EXPECT_LE(changes, 30);
  EXPECT_GE(changes, 25);
}

TEST(GraphFormNew, PlacesEachLabelRowBelowTheLastAndTheValueBesideTheName) {
  GraphDesk desk(3);
  desk.session.CurrentParameters[2].name = "Treating Pressure";
  desk.Create();
  const QRect first = desk.Box("Label1_0");
  const QRect second = desk.Box("Label1_1");
  const QRect third = desk.Box("Label1_2");
  EXPECT_EQ(second.top(), first.top() + std::ceil(1.05 * first.height()));
  EXPECT_EQ(third.top(), second.top() + std::ceil(1.05 * second.height()));
  const QRect value = desk.Box("Label2_0");
  EXPECT_EQ(value.left(), first.right() + 1 + 2);  // 30 twips
  EXPECT_LT(value.right(), desk.Box("Label3_0").left());
}

TEST(GraphFormNew, DoublesTheHeightOfANameThatIsAsWideAsItsLabel) {
  GraphDesk desk(2);
  desk.session.CurrentParameters[1].name = "Rate";
  desk.session.CurrentParameters[2].name = "Treating Pressure";
  desk.Create();
  const int single = desk.Box("Label1_0").height();
  EXPECT_EQ(desk.Box("Label1_1").height(), 2 * single);
}

TEST(GraphFormNew, FollowsTheSizeOfTheWindow) {
  GraphDesk desk;
  desk.Create();
  desk.ResizeWindow(800, 400);                               // 12000 x 6000 twips
  EXPECT_EQ(desk.Find<QWidget>("Picture1")->width(), 613);   // 9200
  EXPECT_EQ(desk.Find<QWidget>("Picture1")->height(), 321);  // 4815
  EXPECT_EQ(desk.Find<QWidget>("Frame1")->width(), 606);     // 9100
  EXPECT_EQ(desk.Find<QWidget>("Pic2")->width(), 606);
  EXPECT_EQ(desk.Find<QScrollBar>("VScroll1")->x(), 766);  // 11500
  EXPECT_EQ(desk.Find<QScrollBar>("VScroll1")->height(), 321);
}

TEST(GraphFormNew, KeepsItsWidthsBelow2900TwipsAndItsHeightBelow1185) {
  GraphDesk desk;
  desk.Create();
  desk.Form().parentWidget()->setMinimumSize(1, 1);
  desk.ResizeWindow(800, 400);
  desk.ResizeWindow(193, 78);  // 2895 x 1170
  EXPECT_EQ(desk.Find<QWidget>("Picture1")->width(), 613);
  EXPECT_EQ(desk.Find<QWidget>("Picture1")->height(), 321);
  desk.ResizeWindow(194, 79);  // 2910 x 1185
  EXPECT_EQ(desk.Find<QWidget>("Picture1")->width(), 7);
  EXPECT_EQ(desk.Find<QWidget>("Pic2")->width(), 0);
  EXPECT_EQ(desk.Find<QWidget>("Picture1")->height(), 0);
}

TEST(GraphFormNew, PutsThePlotBelowTheHeader) {
  GraphDesk desk(4);
  desk.Create();
  EXPECT_EQ(desk.Find<QWidget>("Frame1")->y(), 73);        // 4 x 250 + 100
  EXPECT_EQ(desk.Find<QWidget>("Frame1")->height(), 246);  // 3600 + 100
  EXPECT_EQ(desk.Find<QWidget>("Pic2")->height(), 240);
  EXPECT_EQ(desk.Find<QWidget>("Picture3")->width(), 64);  // 963
  EXPECT_EQ(desk.Find<QWidget>("Picture3")->pos(), QPoint(0, 0));
}

TEST(GraphFormNew, RedrawsTheFrameOfThePageAtAResizeWhileAcquisitionRuns) {
  GraphDesk desk;
  desk.Create();
  desk.session.AcquireStarted = true;
  desk.Form().Picture2_Update(JobStart(), JobStart() + 120 * kSecond);
  desk.Form().PlotValue(JobStart(), JobStart() + 10 * kSecond, 20, 30, 0, 100, 0x0000FF, false);
  EXPECT_GT(CountOf(desk.Find<QWidget>("Pic2"), 0xFF0000), 0);
  desk.ResizeWindow(900, 400);
  EXPECT_EQ(CountOf(desk.Find<QWidget>("Pic2"), 0xFF0000), 0);
  const QImage plot = desk.Find<QWidget>("Pic2")->grab().toImage();
  // The plot is 13500 - 2900 twips wide: the last grey column lies at 966 + 0.9 x 9634, the middle rule is black.
  EXPECT_EQ(plot.pixel(642, 60) & 0xFFFFFF, 0xC0C0C0u);
  EXPECT_EQ(plot.pixel(200, 120) & 0xFFFFFF, 0u);
}

TEST(GraphFormNew, KeepsWhatWasDrawnAtAResizeBeforeTheStart) {
  GraphDesk desk;
  desk.Create();
  desk.Form().PlotValue(JobStart(), JobStart() + 10 * kSecond, 20, 30, 0, 100, 0x0000FF, false);
  const int before = CountOf(desk.Find<QWidget>("Pic2"), 0xFF0000);
  desk.ResizeWindow(1310, 400);
  EXPECT_EQ(CountOf(desk.Find<QWidget>("Pic2"), 0xFF0000), before);
}

TEST(GraphFormNew, SetsTheRangeOfTheScrollBar) {
  GraphDesk desk;
  desk.session.StartTime = JobStart();
  desk.session.RecordToDB = true;
  desk.Create();
  auto* bar = desk.Find<QScrollBar>("VScroll1");
  EXPECT_EQ(bar->minimum(), 0);
  EXPECT_EQ(bar->singleStep(), 1);
  EXPECT_EQ(bar->pageStep(), 4);
  desk.Form().UpdateScroll(JobStart() + 12 * 60 * kSecond);
  EXPECT_EQ(bar->maximum(), 7);
  EXPECT_EQ(bar->value(), 7);
  EXPECT_TRUE(bar->isEnabled());
  desk.session.RecordToDB = false;
  desk.Form().UpdateScroll(JobStart() + 14 * 60 * kSecond);
  EXPECT_FALSE(bar->isEnabled());
}

TEST(GraphFormNew, ShowsAnErrorOnceWithTheNameOfTheOperation) {
  GraphDesk desk;
  desk.Create();
  desk.dialogs.Expect("Division by zero - PlotValue", Answer::Cancel);
  desk.Form().PlotValue(JobStart(), JobStart(), 5, 5, 7, 7, 0, false);
  EXPECT_EQ(desk.dialogs.shown.back().buttons, Buttons::RetryCancel);
  desk.session.Times.GraphTimeStep = 0;
  desk.dialogs.Expect("Division by zero - Picture2_Update", Answer::Cancel);
  desk.Form().Picture2_Update(JobStart(), JobStart() + 120 * kSecond);
  desk.dialogs.Expect("Division by zero - WriteDate", Answer::Cancel);
  desk.Form().WriteDate(JobStart(), JobStart() + 120 * kSecond);
}

TEST(GraphFormNew, RunsTheFailedStatementAgainOnRetry) {
  GraphDesk desk;
  desk.Create();
  desk.session.Times.GraphTimeStep = 0;
  desk.dialogs.Expect(" - PlotValue", Answer::Retry, [&] { desk.session.Times.GraphTimeStep = kSecond; });
  desk.Form().PlotValue(JobStart(), JobStart() + 10 * kSecond, 20, 30, 0, 100, 0x0000FF, false);
  EXPECT_GT(CountOf(desk.Find<QWidget>("Pic2"), 0xFF0000), 0);
}

TEST(GraphFormNew, ShowsOneBoxAtATimeForOneProcedure) {
  GraphDesk desk;
  desk.Create();
  const auto fail = [&] { desk.Form().PlotValue(JobStart(), JobStart(), 5, 5, 7, 7, 0, false); };
  desk.dialogs.Expect(" - PlotValue", Answer::Cancel, fail);
  fail();
  EXPECT_EQ(desk.dialogs.shown.size(), 1u);
}

TEST(GraphFormNew, LivesUntilItsBoxIsAnsweredWhenItIsClosedMeanwhile) {
  GraphDesk desk;
  desk.Create();
  const QPointer<GraphFormNew> form = &desk.Form();
  desk.dialogs.Expect(" - PlotValue", Answer::Retry, [&] {
    desk.windows.UnloadAll();
    RunDeletions();
    EXPECT_FALSE(form.isNull());
  });
  desk.dialogs.Expect(" - PlotValue", Answer::Cancel);
  form->PlotValue(JobStart(), JobStart(), 5, 5, 7, 7, 0, false);
  EXPECT_EQ(desk.session.GraphForms[3], nullptr);
  RunDeletions();
  EXPECT_TRUE(form.isNull());
}

TEST(GraphFormNew, CarriesCurvesBackToInputsAndFormulas) {
  GraphDesk desk(3);
  desk.session.NumberOfParameters = 2;
  desk.session.NumberOfFormulae = 1;
  desk.session.AdditionalParameters.resize(2);
  desk.Create();
  for (int i = 1; i <= 3; ++i) desk.session.CurrentParameters[i].max = 1000 + i;
  desk.Form().UpdateParametersDefs();
  EXPECT_EQ(desk.session.Parameters[1].max, 1001);
  EXPECT_EQ(desk.session.Parameters[2].max, 1002);
  EXPECT_EQ(desk.session.Parameters[3].max, 0);
  EXPECT_EQ(desk.session.AdditionalParameters[1].max, 1003);
}

TEST(GraphFormNew, LeavesTheSessionWhenTheUserClosesIt) {
  GraphDesk desk;
  desk.Create();
  const QPointer<GraphFormNew> form = &desk.Form();
  desk.session.CurrentParameters[1].max = 55;
  form->parentWidget()->close();
  EXPECT_EQ(desk.session.GraphForms[3], nullptr);
  EXPECT_EQ(desk.session.Parameters[1].max, 55);
  RunDeletions();
  EXPECT_TRUE(form.isNull());
  EXPECT_TRUE(desk.area.subWindowList().isEmpty());
}

TEST(GraphFormNew, StoresTheCurvesWhenItsHeaderIsDrawn) {
  GraphDesk desk;
  desk.Create();
  const int loaded = desk.headersStored;
  EXPECT_GE(loaded, 1);
  desk.Form().InitialHeader();
  EXPECT_EQ(desk.headersStored, loaded + 1);
}

TEST(GraphFormNew, StoresTheCurvesOnceAfterAResizeHasSettled) {
  GraphDesk desk;
  desk.Create();
  desk.clock.Advance(1000);
  const int before = desk.headersStored;
  for (int width = 700; width < 800; width += 10) {
    desk.ResizeWindow(width, 400);
    desk.clock.Advance(20);
  }
  EXPECT_EQ(desk.headersStored, before);
  desk.clock.Advance(1000);
  EXPECT_EQ(desk.headersStored, before + 1);
}

TEST(GraphFormNew, RewritesItsLabelsWhenCurvesWereEdited) {
  GraphDesk desk(2);
  desk.Create();
  desk.session.CurrentParameters[1].name = "Density";
  desk.session.CurrentParameters[1].units = "lb/gal";
  desk.session.CurrentParameters[1].format = "#0.0";
  desk.Form().WriteValuesToLabels(1, 8.34f);
  desk.session.CurrentValue[1] = 8.34f;
  desk.Form().RefreshForm();
  desk.Refresh();
  EXPECT_EQ(desk.Text("Label1_0"), "Density");
  EXPECT_EQ(desk.Text("Label3_0"), "lb/gal");
  EXPECT_EQ(desk.Text("Label2_0"), "8.3");
  EXPECT_EQ(desk.Form().windowTitle(), "Density");
}

TEST(GraphFormNew, ShowsNoValueOfAnEarlierJobBeforeTheFirstSample) {
  GraphDesk desk;
  desk.session.AcquisitionMode = true;
  desk.session.CurrentValue[1] = 42;
  desk.session.CurrentParameters[1].format = "#0.0";
  desk.Create();
  desk.Refresh();
  EXPECT_EQ(desk.Text("Label2_0"), "\u2013");
  desk.Form().WriteValuesToLabels(1, 43);
  desk.Refresh();
  EXPECT_EQ(desk.Text("Label2_0"), "43.0");
}

TEST(GraphFormNew, KeepsTheDateWithinTheAxisStripForAllFontSizes) {
  for (const int points : {6, 8, 10, 14, 20}) {
    GraphDesk desk;
    desk.session.intFontSize = static_cast<std::int16_t>(points);
    desk.Create();
    desk.session.Times.GraphPageTime = JobStart();
    desk.Form().WriteDate(JobStart(), JobStart() + 120 * kSecond);
    const QImage strip = desk.Find<QWidget>("Picture3")->grab().toImage();
    int dark = 0;
    for (int y = 0; y < strip.height(); ++y) dark += (strip.pixel(0, y) & 0xFFFFFF) == 0;
    EXPECT_EQ(dark, 0) << points;  // nothing is cut at the left edge
  }
}

}  // namespace velk::test
