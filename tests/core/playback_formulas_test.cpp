// Additional parameters of the unit beside the channels of a file that is played back.

#include "core/playback_fixture.h"
#include "formula/additional_parameters.h"
#include "formula/formula_entry.h"
#include "formula/include_in_graphs.h"
#include "graphs/parameter_curves.h"
#include "model/graph_map.h"

namespace velk {
namespace {

class PlaybackFormulas : public test::PlaybackFixture {
 protected:
  /// A computed channel of the unit, as the settings hold it.
  void Add(const std::string& formula) {
    Session& session = rig.session;
    session.Formula.push_back(formula);
    Parameter channel;
    channel.name = "Computed " + std::to_string(++session.NumberOfFormulae);
    channel.max = 100;
    channel.FormIndex = static_cast<std::int16_t>(3 + session.NumberOfFormulae);
    channel.GraphVisible = true;
    session.AdditionalParameters.push_back(channel);
  }
  void Define(const std::string& formula) {
    const FormulaReport report{rig.dialogs, rig.platform.language, [] {}};
    if (AddFormula(rig.session, report, formula, [](const std::string&) {})) RebuildGraphs(rig.session, rig.graphs);
  }
  void Include(const std::vector<bool>& included) {
    auto channels = ComputedChannels(rig.session);
    for (std::size_t i = 0; i < included.size(); ++i) channels[i].included = included[i];
    IncludeInGraphs(rig.session, channels);
    RebuildGraphs(rig.session, rig.graphs);
  }
  /// Five channels A to E on a graph each, two rows.
  std::string FiveChannels() {
    std::string settings = "CREATE TABLE GraphSettings (ParameterName);";
    for (const char* name : {"A", "B", "C", "D", "E"})
      settings += std::string("INSERT INTO GraphSettings VALUES ('") + name + "');";
    return Make("five.mdb", Rows("A DOUBLE, B DOUBLE, C DOUBLE, D DOUBLE, E DOUBLE",
                                 {{0, "1, 2, 3, 4, 5"}, {1, "10, 20, 30, 40, 50"}}) +
                                settings);
  }
};

TEST_F(PlaybackFormulas, TakeNoPartUnlessTheyAreWanted) {
  Add("{a}*2");
  Choose(FiveChannels());
  EXPECT_EQ(rig.session.TotalParameters, 5);
  PlayAll();
  EXPECT_EQ(rig.session.CurrentValue[6], 0.0f);
}

TEST_F(PlaybackFormulas, StandBehindTheFilesChannelsOnceTheyAreIncluded) {
  Add("{a}*2");
  Add("{b}+{c}");
  Choose(FiveChannels());
  EXPECT_EQ(ComputedChannels(rig.session)[1].name, "Computed 2");
  Include({true, true});
  EXPECT_EQ(rig.session.TotalParameters, 7);
  EXPECT_EQ(rig.session.CurrentParameters[7].name, "Computed 2");
  EXPECT_EQ(rig.session.CurrentParameters[7].FormIndex, 7) << "a graph of its own";
  EXPECT_EQ(rig.session.AdditionalParameters[2].FormIndex, 5) << "the unit's stays where it is";
  PlayAll();
  EXPECT_EQ(rig.graphs.windows[6].labels[6], 20.0f);
  EXPECT_EQ(rig.graphs.windows[7].labels[7], 50.0f);
}

TEST_F(PlaybackFormulas, ThatAreLeftOutAreHiddenForTheFileOnly) {
  Add("{a}*2");
  Choose(FiveChannels());
  Include({false});
  EXPECT_FALSE(rig.session.CurrentParameters[6].GraphVisible);
  EXPECT_TRUE(rig.session.AdditionalParameters[1].GraphVisible);
  PlayAll();
  EXPECT_EQ(rig.graphs.windows.count(6), 0u);
  rig.ConnectAndStart();
  EXPECT_TRUE(rig.session.CurrentParameters[4].GraphVisible);
}

TEST_F(PlaybackFormulas, LeaveNothingInThePlacesOfTheNextFilesChannels) {
  Add("{a}*2");
  rig.session.AdditionalParameters[1].Gain = 0;
  rig.session.AdditionalParameters[1].Wrapping = true;
  rig.session.AdditionalParameters[1].upperalarm = "1";
  Choose(Make("one.mdb", Rows("A DOUBLE", {{0, "1"}, {1, "2"}}) + "CREATE TABLE GraphSettings (ParameterName);"
                                                                  "INSERT INTO GraphSettings VALUES ('A')"));
  Include({true});
  for (const int graph : {1, 2}) CarryBack(rig.session, ParameterCurves(rig.session, graph));
  PlayAll();
  Choose(FiveChannels());
  EXPECT_FALSE(rig.session.CurrentParameters[2].Wrapping);
  EXPECT_EQ(rig.session.CurrentParameters[2].upperalarm, "None");
  PlayAll();
  EXPECT_EQ(rig.graphs.windows[2].labels[2], 20.0f) << "as it stands in the file";
}

TEST_F(PlaybackFormulas, ADefinedOneComesBehindThoseThatAreThere) {
  Add("{a}*2");
  Choose(FiveChannels());
  Define("{e}-{d}");
  EXPECT_EQ(rig.session.NumberOfFormulae, 2);
  EXPECT_EQ(rig.session.TotalParameters, 7);
  EXPECT_EQ(rig.session.CurrentParameters[6].name, "Computed 1");
  EXPECT_EQ(rig.session.AdditionalParameters[2].FormIndex, 5) << "beside the unit's three channels and the other one";
  PlayAll();
  EXPECT_EQ(rig.graphs.windows[7].labels[7], 10.0f);
  EXPECT_EQ(rig.session.TotalParameters, 0) << "as before the file";
  rig.ConnectAndStart();
  EXPECT_EQ(rig.session.TotalParameters, 5);
}

TEST_F(PlaybackFormulas, MoreThan64AreRefused) {
  Choose(FiveChannels());
  for (int i = 1; i <= 59; ++i) Define("{a}");
  EXPECT_EQ(rig.session.TotalParameters, 64);
  rig.dialogs.Expect("There is room for 64 parameters in all", Answer::Ok);
  Define("{a}");
  EXPECT_EQ(rig.session.NumberOfFormulae, 59);
}

TEST_F(PlaybackFormulas, MoreThanTheUnitHasRoomForAreRefused) {
  rig.session.NumberOfParameters = 62;
  Choose(FiveChannels());
  Define("{a}");
  Define("{b}");
  rig.dialogs.Expect("There is room for 64 parameters in all", Answer::Ok);
  Define("{c}");
  EXPECT_EQ(rig.session.NumberOfFormulae, 2);
  rig.dialogs.Expect("Playback is Stopped", Answer::Ok);
  Stop();
}

TEST_F(PlaybackFormulas, OneThatIsRemovedLeavesTheFilesChannels) {
  Add("{a}*2");
  Add("{b}*2");
  Choose(FiveChannels());
  RemoveAdditional(rig.session, 1);
  EXPECT_EQ(rig.session.TotalParameters, 5) << "they did not stand there";
  EXPECT_EQ(rig.session.CurrentParameters[5].name, "E");
  Include({true});
  EXPECT_EQ(rig.session.CurrentParameters[6].name, "Computed 2");
  RemoveAdditional(rig.session, 1);
  EXPECT_EQ(rig.session.TotalParameters, 5);
  EXPECT_EQ(rig.session.NumberOfFormulae, 0);
}

TEST_F(PlaybackFormulas, HaveStatisticsOfTheirOwnAndLeaveThoseOfTheUnit) {
  Add("avg({a})");
  rig.session.AdditionalParameters[1].AverageCount = 4;
  rig.session.AdditionalParameters[1].AverageSum = 100;
  const std::string file = FiveChannels();
  for (int time = 0; time < 2; ++time) {
    Choose(file);
    Include({true});
    PlayAll();
    EXPECT_EQ(rig.graphs.windows[6].labels[6], 5.5f) << "(1 + 10) / 2, each time anew";
    EXPECT_EQ(rig.session.AdditionalParameters[1].AverageCount, 4);
    EXPECT_EQ(rig.session.AdditionalParameters[1].AverageSum, 100);
  }
}

TEST_F(PlaybackFormulas, HaveNoValueWhereARowLeavesOutWhatTheyAskFor) {
  Add("max({a})");
  Choose(Make("gap.mdb", Rows("A DOUBLE", {{0, "5"}, {1, "NULL"}, {2, "3"}}) +
                             "CREATE TABLE GraphSettings (ParameterName);"
                             "INSERT INTO GraphSettings VALUES ('A')"));
  Include({true});
  PlayAll();
  const auto& plots = rig.graphs.windows[2].plots;
  ASSERT_EQ(plots.size(), 3u);
  EXPECT_TRUE(std::isnan(plots[1].value));
  EXPECT_EQ(plots[2].value, 5.0f) << "and the row without it is no part of a statistic";
}

TEST_F(PlaybackFormulas, ThatAreLinkedStayWithoutAValue) {
  Add("Linked Parameter");
  Choose(FiveChannels());
  Include({true});
  PlayAll();
  EXPECT_EQ(rig.graphs.windows[6].labels[6], 0.0f);
}

TEST_F(PlaybackFormulas, AFaultIsToldByTheNameOfItsChannel) {
  Add("1/{a}");
  Choose(Make("zero.mdb", Rows("A DOUBLE", {{0, "0"}, {1, "1"}}) + "CREATE TABLE GraphSettings (ParameterName);"
                                                                   "INSERT INTO GraphSettings VALUES ('A')"));
  Include({true});
  Press();
  rig.dialogs.Expect("Computed 1", Answer::Cancel);
  Tick();
  EXPECT_TRUE(rig.graphs.windows[1].plots.empty()) << "computed ahead of anything that is drawn";
  rig.dialogs.Expect("Playback is Stopped", Answer::Ok);
  Tick();
  ExpectReady();
}

}  // namespace
}  // namespace velk
