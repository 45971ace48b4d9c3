#include "graphs/parameter_curves.h"

#include <gtest/gtest.h>

#include "graphs/chart_fixture.h"

namespace velk::test {

TEST(CarryBack, PutsEditedCurvesWhereTheyWereConfigured) {
  Session session;
  GiveCurves(session, 3);
  session.NumberOfParameters = 2;
  session.AdditionalParameters.resize(2);
  session.AdditionalParameters[1].AverageCount = 7;
  for (int i = 1; i <= 3; ++i) session.CurrentParameters[i].max = 1000 + i;
  CarryBack(session, ParameterCurves(session, 3));
  EXPECT_EQ(session.Parameters[1].max, 1001);
  EXPECT_EQ(session.Parameters[2].max, 1002);
  EXPECT_EQ(session.Parameters[3].max, 0) << "a computed channel is no input";
  EXPECT_EQ(session.AdditionalParameters[1].max, 1003);
  EXPECT_EQ(session.AdditionalParameters[1].AverageCount, 7) << "statistics are not edited";
}

TEST(CarryBack, LeavesTheCurvesOfOtherGraphs) {
  Session session;
  GiveCurves(session, 2);
  session.CurrentParameters[2].FormIndex = 4;
  BuildGraphMap(session, 2);
  for (int i = 1; i <= 2; ++i) session.CurrentParameters[i].max = 1000 + i;
  CarryBack(session, ParameterCurves(session, 3));
  EXPECT_EQ(session.Parameters[1].max, 1001);
  EXPECT_EQ(session.Parameters[2].max, 0);
}

TEST(CarryBack, PutsCurvesOfAFileToThoseThatAreSavedForPlayback) {
  Session session;
  GiveCurves(session, 3);
  session.NumberOfParameters = 2;
  session.PlaybackParameterCount = 2;
  session.AdditionalParameters.resize(2);
  for (int i = 1; i <= 3; ++i) session.CurrentParameters[i].max = 1000 + i;
  CarryBack(session, ParameterCurves(session, 3));
  for (int i = 1; i <= 3; ++i) EXPECT_EQ(session.PlaybackParameters[i].max, 1000 + i);
  EXPECT_EQ(session.Parameters[1].max, 0) << "the unit's set-up is left";
  EXPECT_EQ(session.AdditionalParameters[1].max, 0);
}

TEST(CarryBack, PassesOverAComputedChannelThatIsGone) {
  Session session;
  GiveCurves(session, 2);
  session.NumberOfParameters = 1;
  CarryBack(session, ParameterCurves(session, 3));
  EXPECT_EQ(session.AdditionalParameters.size(), 1u);
}

}  // namespace velk::test
