#include <gtest/gtest.h>

#include "core/rig.h"

namespace velk {
namespace {

using test::Rig;

class ComputedChannels : public testing::Test {
 protected:
  void Add(const std::string& formula, const std::string& name = "Computed") {
    ++rig.session.NumberOfFormulae;
    rig.session.Formula.push_back(formula);
    Parameter computed;
    computed.name = name;
    computed.max = 100;
    computed.format = "#0.000";
    computed.FormIndex = static_cast<std::int16_t>(8 + rig.session.NumberOfFormulae);
    computed.GraphVisible = true;
    rig.session.AdditionalParameters.push_back(computed);
  }

  Rig rig;
};

TEST_F(ComputedChannels, AreComputedFromTheSamplesOwnValuesAndDrawn) {
  Add("{channel 1}*2-{channel 3}");
  rig.ConnectAndStart();
  rig.Sample(10, 20, 30);
  EXPECT_EQ(rig.session.CurrentValue[4], -10.0f);
  ASSERT_EQ(rig.graphs.windows[9].plots.size(), 1u);
  EXPECT_EQ(rig.graphs.windows[9].plots[0].value, -10.0f);
  EXPECT_EQ(rig.graphs.windows[9].labels[4], -10.0f);
  rig.Sample(40, 20, 30);
  EXPECT_EQ(rig.session.CurrentValue[4], 50.0f);
}

TEST_F(ComputedChannels, MayReferToComputedChannelsAheadOfThem) {
  Add("{channel 1}+1", "First");
  Add("{first}*10", "Second");
  rig.ConnectAndStart();
  rig.Sample(4, 20, 30);
  EXPECT_EQ(rig.session.CurrentValue[5], 50.0f);
}

TEST_F(ComputedChannels, ThatAreLinkedKeepWhatTheDecoderGave) {
  Add("Linked Parameter");
  rig.ConnectAndStart();
  rig.session.CurrentValue[4] = 12.5f;
  rig.Sample(1, 2, 3);
  EXPECT_EQ(rig.session.CurrentValue[4], 12.5f);
  EXPECT_EQ(rig.graphs.windows[9].plots[0].value, 12.5f);
}

TEST_F(ComputedChannels, ThatAreHiddenAreNotComputed) {
  Add("avg({channel 1})");
  rig.session.AdditionalParameters[1].GraphVisible = false;
  rig.ConnectAndStart();
  rig.Sample(1, 2, 3);
  EXPECT_EQ(rig.session.AdditionalParameters[1].AverageCount, 0);
}

TEST_F(ComputedChannels, KeepTheirStatisticsOverStopAndStart) {
  Add("avg({channel 1})");
  rig.ConnectAndStart();
  rig.Sample(10, 2, 3);
  rig.acquisition.mnuAcquireStop_Click();
  rig.ConnectAndStart();
  rig.Sample(20, 2, 3);
  EXPECT_EQ(rig.session.CurrentValue[4], 15.0f);
}

TEST_F(ComputedChannels, AreWatchedForAlarmsLikeInputs) {
  Add("{channel 1}*2");
  rig.session.AdditionalParameters[1].upperalarm = "50";
  rig.ConnectAndStart();
  rig.Sample(30, 2, 3);
  EXPECT_TRUE(rig.session.AlarmTriggered[4]);
  EXPECT_EQ(rig.view.beeps, 1);
}

TEST_F(ComputedChannels, AreNotLogged) {
  Add("{channel 1}*2");
  rig.Connect();
  rig.ChooseFile();
  rig.acquisition.mnuAcquireStart_Click();
  rig.Sample(30, 2, 3);
  rig.acquisition.mnuAcquireStop_Click();
  ASSERT_EQ(rig.Rows(rig.Path("job.mdb")).size(), 1u);
}

TEST_F(ComputedChannels, ThatFailAreToldByNameInTheBoxOfTheSampleAndCostNoRow) {
  Add("1/{channel 2}", "Ratio");
  rig.Connect();
  rig.ChooseFile();
  rig.acquisition.mnuAcquireStart_Click();
  rig.dialogs.Expect("Ratio", Answer::Cancel);
  rig.Sample(10, 0, 30);
  EXPECT_EQ(rig.dialogs.shown.back().title, "Acquiring data ... error");
  EXPECT_NE(rig.dialogs.shown.back().text.find("Division by zero"), std::string::npos);
  EXPECT_EQ(rig.graphs.windows[2].plots.size(), 1u) << "what stood ahead of it is drawn";
  rig.acquisition.mnuAcquireStop_Click();
  const auto rows = rig.Rows(rig.Path("job.mdb"));
  ASSERT_EQ(rows.size(), 1u);
  EXPECT_EQ(rows[0].c, 30.0);
}

TEST_F(ComputedChannels, BeyondThe32BitRangeOverflow) {
  Add("1e+30*1e+30", "Huge");
  rig.ConnectAndStart();
  rig.dialogs.Expect("Huge", Answer::Cancel);
  rig.Sample(1, 2, 3);
  EXPECT_NE(rig.dialogs.shown.back().text.find("Overflow"), std::string::npos);
}

}  // namespace
}  // namespace velk
