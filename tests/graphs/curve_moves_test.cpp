#include "graphs/curve_moves.h"

#include <gtest/gtest.h>

#include "model/graph_map.h"

namespace velk {
namespace {

/// A session whose parameters 1, 2, ... stand on these graphs.
Session On(const std::vector<int>& graphs) {
  Session session;
  for (std::size_t i = 1; i <= graphs.size(); ++i) {
    session.CurrentParameters[i].name = "P" + std::to_string(i);
    session.CurrentParameters[i].GraphVisible = true;
    session.CurrentParameters[i].FormIndex = static_cast<std::int16_t>(graphs[i - 1]);
  }
  session.TotalParameters = static_cast<std::int16_t>(graphs.size());
  BuildGraphMap(session, session.TotalParameters);
  return session;
}

std::vector<int> Slots(const Session& session, int graph) {
  std::vector<int> parameters;
  for (int slot = 1; slot <= session.GraphCurveCount[graph]; ++slot)
    parameters.push_back(session.GraphSlots[slot][graph]);
  return parameters;
}

std::vector<int> List(const Session& session) {
  return {session.GraphList.begin() + 1, session.GraphList.begin() + 1 + session.GraphCount};
}

using Numbers = std::vector<int>;

TEST(MoveFirstCurve, PutsItBehindTheLastOfTheOtherWindow) {
  Session session = On({1, 2, 2});
  MoveFirstCurve(session, 1, 2);
  EXPECT_EQ(Slots(session, 2), (Numbers{2, 3, 1}));
  EXPECT_EQ(Slots(session, 1), Numbers{});
  EXPECT_EQ(session.CurrentParameters[1].FormIndex, 2);
  EXPECT_EQ(List(session), Numbers{2});
}

TEST(MoveFirstCurve, LeavesTheOthersInTheirWindow) {
  Session session = On({5, 5, 5, 7});
  MoveFirstCurve(session, 5, 7);
  EXPECT_EQ(Slots(session, 5), (Numbers{2, 3}));
  EXPECT_EQ(Slots(session, 7), (Numbers{4, 1}));
  EXPECT_EQ(session.CurrentParameters[2].FormIndex, 5);
  EXPECT_EQ(List(session), (Numbers{5, 7}));
}

TEST(MoveFirstCurve, DoesNothingForAWindowWithoutCurves) {
  Session session = On({1});
  MoveFirstCurve(session, 9, 1);
  EXPECT_EQ(Slots(session, 1), Numbers{1});
}

TEST(TakeCurveOut, GivesACurveTheWindowOfItsNumber) {
  Session session = On({1, 1, 1});
  EXPECT_EQ(TakeCurveOut(session, 1, 2), 2);
  EXPECT_EQ(Slots(session, 1), (Numbers{1, 3})) << "the gap is closed";
  EXPECT_EQ(Slots(session, 2), Numbers{2});
  EXPECT_EQ(session.CurrentParameters[2].FormIndex, 2);
  EXPECT_EQ(List(session), (Numbers{1, 2}));
}

TEST(TakeCurveOut, TakesTheFirstFreeNumberWhereItsOwnStandsForAnotherWindow) {
  Session session = On({1, 4, 4, 2});
  EXPECT_EQ(TakeCurveOut(session, 4, 1), 3) << "2 is the window of the fourth parameter";
  EXPECT_EQ(Slots(session, 3), Numbers{2});
  EXPECT_EQ(Slots(session, 4), Numbers{3});
}

TEST(TakeCurveOut, TakesTheFirstFreeNumberWhereItsOwnIsThatOfThisWindow) {
  Session session = On({1, 1});
  EXPECT_EQ(TakeCurveOut(session, 1, 1), 2);
  EXPECT_EQ(Slots(session, 1), Numbers{2});
  EXPECT_EQ(Slots(session, 2), Numbers{1});
}

TEST(TakeCurveOut, FindsAWindowForEachOfSixtyFour) {
  Session session = On(Numbers(64, 7));
  EXPECT_FALSE(HasRoomForCurve(session, 7));
  while (session.GraphCurveCount[7] > 1) TakeCurveOut(session, 7, 1);
  EXPECT_EQ(session.GraphCount, 64);
  for (int graph = 1; graph <= 64; ++graph) EXPECT_EQ(session.GraphCurveCount[graph], 1) << graph;
}

TEST(TakeCurveOut, LeavesAMapThatTheParametersWouldGiveToo) {
  Session session = On({3, 3, 3, 1});
  TakeCurveOut(session, 3, 3);
  MoveFirstCurve(session, 1, 3);
  Session anew = session;
  BuildGraphMap(anew, anew.TotalParameters);
  for (int graph = 1; graph <= 64; ++graph) EXPECT_EQ(anew.GraphCurveCount[graph], session.GraphCurveCount[graph]);
  EXPECT_EQ(anew.GraphCount, session.GraphCount);
}

TEST(CurveNames, StandInTheOrderOfTheSlots) {
  Session session = On({2, 1, 1});
  MoveFirstCurve(session, 2, 1);
  EXPECT_EQ(CurveNames(session, 1), (std::vector<std::string>{"P2", "P3", "P1"}));
}

}  // namespace
}  // namespace velk
