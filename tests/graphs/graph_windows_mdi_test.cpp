#include "graphs/windows/graph_windows_mdi.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

#include "graphs/graph_form_fixture.h"

namespace velk::test {

namespace {

/// Curves 1 to 4 on graphs 5, 2, 5 and 9.
void SpreadOverThreeGraphs(GraphDesk& desk) {
  const int graphs[] = {0, 5, 2, 5, 9};
  for (int i = 1; i <= 4; ++i) desk.session.CurrentParameters[i].FormIndex = static_cast<std::int16_t>(graphs[i]);
  BuildGraphMap(desk.session, 4);
}

int OpenWindows(const Session& session) {
  int open = 0;
  for (int graph = 1; graph <= kMaxParameters; ++graph) open += session.GraphForms[graph] != nullptr;
  return open;
}

}  // namespace

TEST(GraphWindowsMdi, MakesAWindowForEachGraphNumber) {
  GraphDesk desk(4);
  SpreadOverThreeGraphs(desk);
  desk.Create();
  EXPECT_EQ(OpenWindows(desk.session), 3);
  EXPECT_EQ(desk.Form(5).windowTitle(), "Pressure 1");
  EXPECT_EQ(desk.Form(2).windowTitle(), "Pressure 2");
  EXPECT_EQ(desk.Form(9).windowTitle(), "Pressure 4");
  EXPECT_EQ(desk.Rows(5), 2);
  EXPECT_EQ(desk.Rows(2), 1);
}

TEST(GraphWindowsMdi, PlacesWindowsSideBySideInView) {
  GraphDesk desk(4);
  SpreadOverThreeGraphs(desk);
  desk.Create();
  const QRect room = desk.area.viewport()->rect();
  const auto all = desk.area.subWindowList();
  ASSERT_EQ(all.size(), 3);
  for (const QMdiSubWindow* a : all) {
    EXPECT_TRUE(room.contains(a->geometry()));
    for (const QMdiSubWindow* b : all) EXPECT_TRUE(a == b || !a->geometry().intersects(b->geometry()));
  }
}

TEST(GraphWindowsMdi, GivesASingleWindowAPlotOfAtLeast900By240) {
  GraphDesk desk;
  desk.Create();
  EXPECT_GE(desk.Find<QWidget>("Pic2")->width(), 900);
  EXPECT_GE(desk.Find<QWidget>("Picture1")->height(), desk.Find<QWidget>("Frame1")->geometry().bottom());
}

TEST(GraphWindowsMdi, UnloadsWhatIsOpenBeforeItMakesTheNewSet) {
  GraphDesk desk(4);
  SpreadOverThreeGraphs(desk);
  desk.Create();
  GiveCurves(desk.session, 1);
  desk.Create();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(OpenWindows(desk.session), 1);
  EXPECT_EQ(desk.area.subWindowList().size(), 1);
}

TEST(GraphWindowsMdi, UnloadsAllAndYieldsAfterEach) {
  GraphDesk desk(4);
  SpreadOverThreeGraphs(desk);
  desk.Create();
  const int before = desk.clock.yields;
  desk.windows.UnloadAll();
  EXPECT_EQ(desk.clock.yields, before + 3);
  EXPECT_EQ(OpenWindows(desk.session), 0);
  for (const GraphWindow* form : desk.session.GraphForms) EXPECT_EQ(form, nullptr);
}

TEST(GraphWindowsMdi, RebuildsAWindowInItsPlaceWithTheFrameOfItsBlock) {
  GraphDesk desk(2);
  desk.Create();
  desk.Form().parentWidget()->setGeometry(10, 20, 800, 400);
  desk.session.Times.GraphPageTime = JobStart();
  desk.Form().Picture2_Update(JobStart(), JobStart() + 120 * kSecond);
  desk.session.CurrentParameters[1].GraphVisible = false;
  BuildGraphMap(desk.session, 2);
  desk.windows.Rebuild(3);
  EXPECT_EQ(desk.Form().windowTitle(), "Pressure 2");
  EXPECT_EQ(desk.Form().parentWidget()->geometry(), QRect(10, 20, 800, 400));
  EXPECT_DOUBLE_EQ(desk.Form().TimeOrigin(), JobStart());
  const QImage plot = desk.Find<QWidget>("Pic2")->grab().toImage();
  EXPECT_EQ(plot.pixel(200, 60) & 0xFFFFFF, 0u);  // middle rule of the block
}

TEST(GraphWindowsMdi, RebuildsNoWindowThatIsClosedOrHasNoCurvesLeft) {
  GraphDesk desk(1);
  desk.windows.Rebuild(3);
  EXPECT_EQ(desk.session.GraphForms[3], nullptr);
  desk.Create();
  desk.session.CurrentParameters[1].GraphVisible = false;
  BuildGraphMap(desk.session, 1);
  desk.windows.Rebuild(3);
  EXPECT_EQ(desk.session.GraphForms[3], nullptr);
}

TEST(GraphWindowsMdi, LeavesAWindowThatTheUserClosedAlone) {
  GraphDesk desk;
  desk.Create();
  desk.Form().parentWidget()->close();
  desk.windows.UnloadAll();
  desk.Create();
  EXPECT_NE(desk.session.GraphForms[3], nullptr);
}

}  // namespace velk::test
