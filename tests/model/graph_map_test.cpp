#include "model/graph_map.h"

#include <gtest/gtest.h>

#include "support/fake_graphs.h"
#include "support/recording_graphs.h"

namespace velk {
namespace {

void Curve(Session& session, int parameter, std::int16_t graph, bool visible = true) {
  session.CurrentParameters[parameter].FormIndex = graph;
  session.CurrentParameters[parameter].GraphVisible = visible;
  session.CurrentParameters[parameter].name = "P" + std::to_string(parameter);
}

TEST(GraphMap, ListsGraphNumbersInOrderOfFirstAppearance) {
  Session session;
  Curve(session, 1, 7);
  Curve(session, 2, 3);
  Curve(session, 3, 7);
  Curve(session, 4, 64);
  BuildGraphMap(session, 4);
  ASSERT_EQ(session.GraphCount, 3);
  EXPECT_EQ(session.GraphList[1], 7);
  EXPECT_EQ(session.GraphList[2], 3);
  EXPECT_EQ(session.GraphList[3], 64);
  EXPECT_EQ(session.GraphCurveCount[7], 2);
  EXPECT_EQ(session.GraphSlots[1][7], 1);
  EXPECT_EQ(session.GraphSlots[2][7], 3);
  EXPECT_EQ(session.GraphSlots[1][3], 2);
  EXPECT_EQ(session.GraphSlots[1][64], 4);
}

TEST(GraphMap, SkipsParametersWithoutAGraphAndInvisibleOnes) {
  Session session;
  Curve(session, 1, 0);
  Curve(session, 2, 1, false);
  Curve(session, 3, 1);
  Curve(session, 4, 65);
  BuildGraphMap(session, 4);
  ASSERT_EQ(session.GraphCount, 1);
  EXPECT_EQ(session.GraphCurveCount[1], 1);
  EXPECT_EQ(session.GraphSlots[1][1], 3);
}

TEST(GraphMap, HoldsSixtyFourCurvesOnOneGraph) {
  Session session;
  for (int i = 1; i <= 64; ++i) Curve(session, i, 64);
  BuildGraphMap(session, 64);
  EXPECT_EQ(session.GraphCount, 1);
  EXPECT_EQ(session.GraphCurveCount[64], 64);
  EXPECT_EQ(session.GraphSlots[64][64], 64);
}

TEST(GraphMap, ForgetsTheMapBeforeEvenForHighGraphNumbers) {
  Session session;
  Curve(session, 1, 40);
  Curve(session, 2, 40);
  BuildGraphMap(session, 2);
  BuildGraphMap(session, 1);
  EXPECT_EQ(session.GraphCurveCount[40], 1);
  EXPECT_EQ(session.GraphSlots[1][40], 1);
  EXPECT_EQ(GraphSlotOf(session, 2, 40), 0);
}

TEST(GraphMap, FindsTheSlotOfAParameterOnItsGraph) {
  Session session;
  Curve(session, 1, 2);
  Curve(session, 2, 2);
  BuildGraphMap(session, 2);
  EXPECT_EQ(GraphSlotOf(session, 1, 2), 1);
  EXPECT_EQ(GraphSlotOf(session, 2, 2), 2);
  EXPECT_EQ(GraphSlotOf(session, 3, 2), 0);
}

TEST(GraphMap, ShowNonBlankSetsAndHideBlankOnlyClears) {
  Session session;
  Curve(session, 1, 1, false);
  Curve(session, 2, 1, true);
  session.CurrentParameters[2].name = "BLANK";
  Curve(session, 3, 1, false);
  ShowNonBlank(session, 2);
  EXPECT_TRUE(session.CurrentParameters[1].GraphVisible);
  EXPECT_FALSE(session.CurrentParameters[2].GraphVisible);
  EXPECT_FALSE(session.CurrentParameters[3].GraphVisible) << "beyond the count";

  session.CurrentParameters[1].GraphVisible = false;
  session.CurrentParameters[2].GraphVisible = true;
  HideBlank(session, 2);
  EXPECT_FALSE(session.CurrentParameters[1].GraphVisible) << "HideBlank shows nothing";
  EXPECT_FALSE(session.CurrentParameters[2].GraphVisible);
}

TEST(GraphMap, IsRebuiltOverAllParametersTogetherWithTheWindows) {
  Session session;
  test::RecordingGraphs graphs;
  Curve(session, 1, 7);
  Curve(session, 2, 3);
  Curve(session, 3, 5);
  session.TotalParameters = 2;
  RebuildGraphs(session, graphs);
  EXPECT_EQ(session.GraphCount, 2);
  EXPECT_EQ(session.GraphSlots[1][3], 2);
  EXPECT_EQ(graphs.created, 1);
}

TEST(GraphMap, CallsForEveryOpenWindowInOrderOfTheirNumbers) {
  Session session;
  test::FakeGraphWindow second, seventh, last;
  session.GraphForms[7] = &seventh;
  session.GraphForms[2] = &second;
  session.GraphForms[64] = &last;
  std::vector<const GraphWindow*> called;
  ForEachGraphWindow(session, [&](const GraphWindow& window) { called.push_back(&window); });
  EXPECT_EQ(called, (std::vector<const GraphWindow*>{&second, &seventh, &last}));
}

TEST(GraphMap, LeavesOutAWindowThatWasClosedByTheCallBefore) {
  Session session;
  test::FakeGraphWindow first, second;
  session.GraphForms[1] = &first;
  session.GraphForms[2] = &second;
  ForEachGraphWindow(session, [&](GraphWindow& window) {
    window.EnableToolbar();
    session.GraphForms[2] = nullptr;
  });
  EXPECT_EQ(first.toolbarsEnabled, 1);
  EXPECT_EQ(second.toolbarsEnabled, 0);
}

}  // namespace
}  // namespace velk
