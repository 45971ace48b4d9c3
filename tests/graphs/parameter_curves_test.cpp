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
  GiveCurves(session, 2);
  session.PlaybackParameterCount = 2;
  session.UnitParameters = 1;
  for (int i = 1; i <= 2; ++i) session.CurrentParameters[i].max = 1000 + i;
  CarryBack(session, ParameterCurves(session, 3));
  for (int i = 1; i <= 2; ++i) EXPECT_EQ(session.PlaybackParameters[i].max, 1000 + i);
  EXPECT_EQ(session.Parameters[1].max, 0) << "the unit's set-up is left";
}

TEST(CarryBack, PutsComputedChannelsBehindAFileToTheirConfigurationButForTheirGraph) {
  Session session;
  GiveCurves(session, 3);
  session.NumberOfParameters = session.PlaybackParameterCount = 2;
  session.UnitParameters = 5;
  session.AdditionalParameters.resize(2);
  session.AdditionalParameters[1].FormIndex = 6;
  session.AdditionalParameters[1].AverageCount = 7;
  session.CurrentParameters[3].max = 1003;
  session.CurrentParameters[3].Wrapping = true;
  CarryBack(session, ParameterCurves(session, 3));
  EXPECT_EQ(session.AdditionalParameters[1].max, 1003);
  EXPECT_EQ(session.AdditionalParameters[1].FormIndex, 6) << "beside the channels of the unit";
  EXPECT_FALSE(session.AdditionalParameters[1].GraphVisible);
  EXPECT_EQ(session.AdditionalParameters[1].AverageCount, 7);
  EXPECT_FALSE(session.PlaybackParameters[3].Wrapping) << "the place of a channel of the next file";
  EXPECT_EQ(session.Parameters[3].max, 0);
}

TEST(CarryBack, LeavesComputedChannelsOnceTheFileHasGivenItsPlaceBack) {
  Session session;
  GiveCurves(session, 3);
  session.PlaybackParameterCount = 2;
  session.NumberOfParameters = 1;  // of the unit
  session.AdditionalParameters.resize(2);
  session.CurrentParameters[3].max = 1003;
  CarryBack(session, ParameterCurves(session, 3));
  EXPECT_EQ(session.AdditionalParameters[1].max, 0) << "another template may have been loaded";
  EXPECT_EQ(session.PlaybackParameters[3].max, 0);
}

TEST(CarryBack, PassesOverAComputedChannelThatIsGone) {
  Session session;
  GiveCurves(session, 2);
  session.NumberOfParameters = 1;
  CarryBack(session, ParameterCurves(session, 3));
  EXPECT_EQ(session.AdditionalParameters.size(), 1u);
}

}  // namespace velk::test
