#include "formula/include_in_graphs.h"

#include <gtest/gtest.h>

#include "formula/computed_session.h"

namespace velk {
namespace {

class IncludingInGraphs : public testing::Test, protected test::ComputedSession {
 protected:
  IncludingInGraphs() {
    Add("{depth}*2", "One");
    Add("{depth}*3", "Two");
  }

  /// Channel 1 or 2 as it stands behind the inputs.
  const Parameter& Current(int index) const { return state.CurrentParameters[3 + index]; }
};

TEST_F(IncludingInGraphs, ShowsEachChannelAsItIsDrawn) {
  state.CurrentParameters[5].GraphVisible = false;
  const auto channels = ComputedChannels(state);
  ASSERT_EQ(channels.size(), 2U);
  EXPECT_EQ(channels[0].name, "One");
  EXPECT_TRUE(channels[0].included);
  EXPECT_EQ(channels[1].name, "Two");
  EXPECT_FALSE(channels[1].included);
}

TEST_F(IncludingInGraphs, SwitchesAChannelOffInBothPlacesAndLeavesItsGraphNumber) {
  IncludeInGraphs(state, {{"One", false}, {"Two", true}});
  EXPECT_FALSE(Current(1).GraphVisible);
  EXPECT_FALSE(state.AdditionalParameters[1].GraphVisible);
  EXPECT_EQ(Current(1).FormIndex, 4);
  EXPECT_TRUE(Current(2).GraphVisible);
}

TEST_F(IncludingInGraphs, GivesAChannelThatIsOnTheGraphOfItsPosition) {
  state.CurrentParameters[5].GraphVisible = state.AdditionalParameters[2].GraphVisible = false;
  state.CurrentParameters[5].FormIndex = state.AdditionalParameters[2].FormIndex = 1;
  IncludeInGraphs(state, {{"One", true}, {"Two", true}});
  for (const Parameter* channel : {&state.CurrentParameters[5], &state.AdditionalParameters[2]}) {
    EXPECT_TRUE(channel->GraphVisible);
    EXPECT_EQ(channel->FormIndex, 5);
  }
}

TEST_F(IncludingInGraphs, CountsTheParametersAnew) {
  state.TotalParameters = 3;
  IncludeInGraphs(state, ComputedChannels(state));
  EXPECT_EQ(state.TotalParameters, 5);
}

TEST_F(IncludingInGraphs, LeavesInputsAsTheyAre) {
  IncludeInGraphs(state, {{"One", false}, {"Two", false}});
  EXPECT_TRUE(state.CurrentParameters[1].GraphVisible);
  EXPECT_TRUE(state.CurrentParameters[3].GraphVisible);
  EXPECT_EQ(state.CurrentParameters[3].FormIndex, 1);
}

TEST_F(IncludingInGraphs, KeepsAChannelThatWasAddedMeanwhile) {
  IncludeInGraphs(state, {{"One", false}});
  EXPECT_FALSE(Current(1).GraphVisible);
  EXPECT_TRUE(Current(2).GraphVisible);
}

}  // namespace
}  // namespace velk
