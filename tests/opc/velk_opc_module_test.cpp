#include "opc/velk_opc_module.h"

#include <gtest/gtest.h>

#include "support/fake_clock.h"
#include "support/fake_opc.h"
#include "support/temporary_folder.h"

namespace velk {
namespace {

/// The items of a stored list as channels, over servers in memory.
class OpcChannels : public testing::Test {
 protected:
  OpcChannels() {
    opc.known["A"] = {};
    opc.known["B"] = {};
  }

  void Store(const std::vector<std::string>& ids) {
    SaveOPCConfiguration(settings, {{"Plant", "10.0.0.5", {{"Pumps", 0, 250, ids}}}});
  }
  /// Connects the stored items and lets what is posted run.
  void Connect(std::size_t most = 64) {
    module.ConnectOPCItems(most);
    clock.Advance(5);
  }
  std::string Line() const { return module.Line(0.5, " ", "\r").value_or("none"); }

  Gate gate;
  test::FakeClock clock{gate};
  test::TemporaryFolder folder;
  SettingsStore settings{folder.File("settings")};
  test::FakeOpc opc;
  VELKOPCModule module{opc, clock, settings};
};

TEST_F(OpcChannels, HaveTheTimeAloneWhereNoItemsAreStored) {
  EXPECT_FALSE(module.IsConnected());
  Connect();
  EXPECT_TRUE(module.IsConnected());
  EXPECT_EQ(module.Count(), 0U);
  EXPECT_EQ(Line(), "12:00:00\r");
}

TEST_F(OpcChannels, AreJoinedInTheOrderOfServerGroupAndItem) {
  SaveOPCConfiguration(settings, {{"Plant", "", {{"Two", 0, 100, {"B"}}, {"One", 0, 100, {"A"}}}},
                                  {"Rig", "10.0.0.6:4841", {{"Two", 0, 100, {"C"}}}}});
  opc.known["C"] = {};
  Connect();
  opc.Report("A", OpcValue(1.5));
  opc.Report("B", OpcValue(2.5));
  opc.Report("C", OpcValue(true));
  EXPECT_EQ(Line(), "12:00:00 2.5 1.5 1\r");
  ASSERT_EQ(opc.places.size(), 3U);
  EXPECT_EQ(opc.places[0], (OpcPlace{"Plant", ""}));
  EXPECT_EQ(opc.places[2], (OpcPlace{"Rig", "10.0.0.6:4841"}));
}

TEST_F(OpcChannels, SubscribeAsTheGroupIsStoredEachItemForItself) {
  SaveOPCConfiguration(settings, {{"Plant", "", {{"Pumps", 2.5F, 250, {"A", "B"}}}}});
  Connect();
  ASSERT_EQ(opc.groups.size(), 2U);
  for (const test::FakeOpc::Group* const group : opc.groups) {
    EXPECT_EQ(group->wish.name, "Pumps");
    EXPECT_EQ(group->wish.updateRate, 250);
    EXPECT_EQ(group->wish.deadBand, 2.5F);
    EXPECT_TRUE(group->wish.isActive);
    EXPECT_TRUE(group->wish.mayBeShared);
    ASSERT_EQ(group->items.size(), 1U);
    EXPECT_EQ(group->items[0].wish.clientHandle, 1);
    EXPECT_TRUE(group->items[0].wish.isActive);
  }
}

TEST_F(OpcChannels, GiveNoLineBeforeEachHasReported) {
  Store({"A", "B"});
  Connect();
  EXPECT_EQ(Line(), "none");
  opc.Report("B", OpcValue(2.0));
  EXPECT_EQ(Line(), "none");
  opc.Report("A", OpcValue(1.0));
  EXPECT_EQ(Line(), "12:00:00 1 2\r");
}

TEST_F(OpcChannels, RepeatTheLastValueAndTakeABadOneLikeAGoodOne) {
  Store({"A"});
  Connect();
  opc.Report("A", OpcValue(1.0));
  EXPECT_EQ(Line(), "12:00:00 1\r");
  EXPECT_EQ(Line(), "12:00:00 1\r");
  opc.Report("A", OpcValue(7.0), kOpcQualityBad);
  EXPECT_EQ(Line(), "12:00:00 7\r");
}

TEST_F(OpcChannels, KeepTheLastValueWhereABadOneIsEmptyAndNameTheItem) {
  Store({"A"});
  Connect();
  opc.Report("A", OpcValue(7.0));
  EXPECT_TRUE(module.TroubleText().IsEmpty());
  opc.Report("A", OpcValue(), kOpcQualityBad);
  EXPECT_EQ(Line(), "12:00:00 7\r");
  EXPECT_EQ(module.TroubleText().English(), "no value from A");
  opc.Report("A", OpcValue(8.0));
  EXPECT_TRUE(module.TroubleText().IsEmpty());
}

TEST_F(OpcChannels, KeepThePlaceOfAnItemThatTheServerHasNot) {
  Store({"A", "none", "B"});
  Connect();
  opc.Report("A", OpcValue(1.0));
  opc.Report("B", OpcValue(2.0));
  EXPECT_EQ(Line(), "12:00:00 1  2\r");
  EXPECT_EQ(module.TroubleText().English(), "no value from none");
}

TEST_F(OpcChannels, AreTriedAgainWithPausesThatGrowToHalfAMinute) {
  Store({"late"});
  opc.failures.assign(3, kOpcNoServer);
  Connect();
  EXPECT_EQ(opc.places.size(), 1U);
  clock.Advance(1000);
  EXPECT_EQ(opc.places.size(), 2U);
  clock.Advance(1900);
  EXPECT_EQ(opc.places.size(), 2U);
  clock.Advance(200);
  EXPECT_EQ(opc.places.size(), 3U);
  // From here on the server is there, and has no such item yet: that alone is asked for.
  clock.Advance(4100);
  EXPECT_EQ(opc.places.size(), 4U);
  EXPECT_EQ(Line(), "12:00:00 \r");
  clock.Advance(60'000);
  EXPECT_EQ(opc.places.size(), 4U);
  opc.known["late"] = {};
  opc.firstValue = OpcValue(3.0);
  clock.Advance(30'100);
  EXPECT_EQ(Line(), "12:00:00 3\r");
  EXPECT_TRUE(module.TroubleText().IsEmpty());
}

TEST_F(OpcChannels, NameAServerThatIsGoneUntilItIsBack) {
  Store({"A"});
  Connect();
  opc.Report("A", OpcValue(1.0));
  opc.events.onLost();
  EXPECT_EQ(module.TroubleText().English(), "no connection to Plant");
  EXPECT_EQ(Line(), "12:00:00 1\r");
  opc.events.onBack();
  EXPECT_TRUE(module.TroubleText().IsEmpty());
}

TEST_F(OpcChannels, NameAServerThatIsNotThereYet) {
  Store({"A", "B"});
  opc.failures.assign(4, kOpcNoServer);
  Connect();
  EXPECT_EQ(module.TroubleText().English(), "no connection to Plant");
  EXPECT_EQ(Line(), "12:00:00  \r");
  clock.Advance(1100);
  EXPECT_EQ(module.TroubleText().English(), "no connection to Plant") << "while it is tried again";
  opc.firstValue = OpcValue(3.0);
  clock.Advance(3000);
  EXPECT_EQ(Line(), "12:00:00 3 3\r");
  EXPECT_TRUE(module.TroubleText().IsEmpty());
}

TEST_F(OpcChannels, AreNamedThreeAtMostInTheTrouble) {
  Store({"p", "q", "r", "s"});
  Connect();
  EXPECT_EQ(module.TroubleText().English(), "no value from p, q, r, \u2026");
}

TEST_F(OpcChannels, EndInTheOrderOfItemGroupAndSession) {
  Store({"A"});
  Connect();
  module.DisconnectOPCItems();
  EXPECT_FALSE(module.IsConnected());
  EXPECT_EQ(opc.ended, (std::vector<std::string>{"group Pumps", "session"}));
  EXPECT_TRUE(opc.groups.empty());
}

TEST_F(OpcChannels, LeaveAnswersToOthersThatComeBehindTheirEnd) {
  Store({"A"});
  opc.isSilent = true;
  module.ConnectOPCItems(64);
  module.DisconnectOPCItems();
  opc.AnswerLate();
  clock.Advance(60'000);
  EXPECT_TRUE(opc.groups.empty());
  EXPECT_EQ(opc.places.size(), 1U);
}

TEST_F(OpcChannels, AreNoMoreThanAJobHas) {
  Store({"A", "B", "A"});
  Connect(2);
  EXPECT_EQ(module.Count(), 2U);
}

TEST_F(OpcChannels, AreConnectedAnewByASecondCall) {
  Store({"A"});
  Connect();
  Store({"B"});
  Connect();
  ASSERT_EQ(opc.groups.size(), 1U);
  EXPECT_EQ(opc.groups[0]->items.at(0).wish.id, "B");
}

TEST_F(OpcChannels, HaveTheIdentifiersAsTags) {
  SaveOPCConfiguration(settings, {{"Plant", "", {{"Two", 0, 100, {"B", "D"}}, {"One", 0, 100, {"A"}}}},
                                  {"Rig", "", {{"Two", 0, 100, {"C"}}}}});
  EXPECT_EQ(OpcTags(settings), (std::vector<std::string>{"B", "D", "A", "C"}));
}

}  // namespace
}  // namespace velk
