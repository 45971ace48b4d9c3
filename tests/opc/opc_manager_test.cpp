#include "opc/opc_manager.h"

#include "opc/opc_rig.h"
#include "support/temporary_folder.h"

namespace velk {
namespace {

/// The list while it is edited, over servers in memory.
class OpcList : public test::OpcRig {
 protected:
  OpcList() {
    for (const char* id : {"A", "B"}) opc.known[id] = {.serverHandle = 0, .canonicalType = {OpcType::Double}};
  }

  OpcManager Open() { return {calls, settings}; }
  static OPCServers TwoServers() {
    return {{"Plant", "10.0.0.5", {{"Pumps", 2.5F, 250, {"A", "none", "B"}}, {"Empty", 0, 100, {}}}}, {"Rig", "", {}}};
  }

  test::TemporaryFolder folder;
  SettingsStore settings{folder.File("settings")};
};

TEST_F(OpcList, BeginsWithWhatIsStoredAndConnectsNothing) {
  SaveOPCConfiguration(settings, TwoServers());
  const OpcManager list = Open();
  ASSERT_EQ(list.Servers().size(), 2U);
  EXPECT_EQ(list.Servers()[0].key, "Server 1");
  EXPECT_EQ(list.Servers()[1].key, "Server 2");
  EXPECT_EQ(list.Servers()[0].groups.at(1).key, "Group 2 1");
  EXPECT_EQ(list.Servers()[0].server, nullptr);
  EXPECT_EQ(list.GroupOf(0, 0), nullptr);
  EXPECT_EQ(list.ItemOf(0, 0, 0), nullptr);
  EXPECT_TRUE(opc.places.empty());
  EXPECT_EQ(list.Stored(), TwoServers());
}

TEST_F(OpcList, ConnectsAServerWithItsGroupsAndItemsAndKeepsWhatIsRefused) {
  SaveOPCConfiguration(settings, TwoServers());
  OpcManager list = Open();
  ASSERT_TRUE(list.ConnectServer(0));
  ASSERT_NE(list.GroupOf(0, 0), nullptr);
  EXPECT_EQ(list.GroupOf(0, 0)->GetGroupUpdateRate(), 250);
  EXPECT_EQ(list.GroupOf(0, 0)->GetGroupDeadBand(), 2.5F);
  ASSERT_NE(list.ItemOf(0, 0, 0), nullptr);
  EXPECT_EQ(list.ItemOf(0, 0, 0)->GetItemID(), "A");
  EXPECT_EQ(list.ItemOf(0, 0, 1), nullptr);
  ASSERT_NE(list.ItemOf(0, 0, 2), nullptr);
  EXPECT_EQ(list.ItemOf(0, 0, 2)->GetItemID(), "B");
  EXPECT_EQ(list.Stored(), TwoServers());
}

TEST_F(OpcList, LeavesAServerThatCanNotBeConnectedAsItIs) {
  SaveOPCConfiguration(settings, TwoServers());
  OpcManager list = Open();
  ExpectBox("Connect");
  EXPECT_FALSE(list.ConnectServer(0));
  EXPECT_EQ(list.Servers()[0].server, nullptr);
  EXPECT_EQ(list.Stored(), TwoServers());
}

TEST_F(OpcList, MixesUpNoGroupsWhereTheFirstIsRefused) {
  SaveOPCConfiguration(settings, {{"Plant", "", {{"One", 0, 100, {"A"}}, {"Two", 0, 100, {"B"}}}}});
  OpcManager list = Open();
  opc.failures = {kOpcGood, 0x80020000};
  ASSERT_TRUE(list.ConnectServer(0));
  EXPECT_EQ(list.GroupOf(0, 0), nullptr);
  ASSERT_NE(list.GroupOf(0, 1), nullptr);
  EXPECT_EQ(list.GroupOf(0, 1)->GetGroupName(), "Two");
}

TEST_F(OpcList, AsksForItemsAHundredAtATime) {
  SaveOPCConfiguration(settings, {{"Plant", "", {{"Many", 0, 100, std::vector<std::string>(250, "A")}}}});
  OpcManager list = Open();
  opc.holdsAdditions = true;
  std::vector<std::size_t> asked;
  clock.onYield = [&] {
    asked.push_back(opc.Held());
    opc.AnswerLate();
  };
  ASSERT_TRUE(list.ConnectServer(0));
  EXPECT_EQ(asked, (std::vector<std::size_t>{100, 100, 50}));
  for (std::size_t item = 0; item < 250; ++item) ASSERT_NE(list.ItemOf(0, 0, item), nullptr) << item;
  EXPECT_EQ(list.ItemOf(0, 0, 249)->GetItemIndex(), 250);
}

TEST_F(OpcList, AsksForNothingMoreBehindCancel) {
  SaveOPCConfiguration(settings,
                       {{"Plant", "", {{"One", 0, 100, std::vector<std::string>(150, "A")}, {"Two", 0, 100, {"B"}}}}});
  OpcManager list = Open();
  opc.holdsAdditions = true;
  clock.onYield = [&] { calls.Cancel(); };
  ASSERT_TRUE(list.ConnectServer(0));
  EXPECT_EQ(opc.Held(), 100U);
  EXPECT_NE(list.GroupOf(0, 0), nullptr);
  EXPECT_EQ(list.GroupOf(0, 1), nullptr);
  EXPECT_EQ(list.ItemOf(0, 0, 0), nullptr);
  clock.onYield = {};
  ASSERT_EQ(opc.groups.size(), 1U);
  opc.AnswerLate();
  EXPECT_TRUE(opc.groups[0]->items.empty()) << "what comes too late is taken away again";
}

TEST_F(OpcList, AsksASilentServerOnce) {
  SaveOPCConfiguration(settings, {{"Plant", "", {{"One", 0, 100, std::vector<std::string>(150, "A")}}}});
  OpcManager list = Open();
  opc.holdsAdditions = true;
  const std::int64_t start = clock.Ticks();
  ASSERT_TRUE(list.ConnectServer(0));
  EXPECT_LT(clock.Ticks() - start, 5100);
  EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(OpcList, GrowsByServerGroupAndItem) {
  OpcManager list = Open();
  ASSERT_TRUE(list.AddSelectedOPCServerMain("Plant", "10.0.0.5"));
  EXPECT_EQ(list.Servers()[0].key, "Server 1");
  ASSERT_TRUE(list.AddOPCGroupMain(0, "", 250, 5, true));
  EXPECT_EQ(list.Servers()[0].groups.at(0).name, "Named by the server");
  EXPECT_EQ(list.Servers()[0].groups.at(0).key, "Group 1 1");
  ASSERT_TRUE(list.AddOPCItemMain(0, 0, "A", {}, true));
  EXPECT_EQ(list.Stored(), (OPCServers{{"Plant", "10.0.0.5", {{"Named by the server", 5, 250, {"A"}}}}}));
  list.SaveOPCConfiguration();
  EXPECT_EQ(LoadOPCConfiguration(settings), list.Stored());
}

TEST_F(OpcList, StaysAsItIsWhereSomethingCanNotBeAdded) {
  OpcManager list = Open();
  ExpectBox("Connect");
  EXPECT_FALSE(list.AddSelectedOPCServerMain("Plant", ""));
  ASSERT_TRUE(list.AddSelectedOPCServerMain("Plant", ""));
  ExpectBox("Add Group");
  EXPECT_FALSE(list.AddOPCGroupMain(0, "Pumps", 250, 0, true));
  ASSERT_TRUE(list.AddOPCGroupMain(0, "Pumps", 250, 0, true));
  dialogs.Expect("The OPC function 'Add Item' has returned an error of ", Answer::Ok);
  EXPECT_FALSE(list.AddOPCItemMain(0, 0, "none", {}, true));
  EXPECT_EQ(list.Stored(), (OPCServers{{"Plant", "", {{"Pumps", 0, 250, {}}}}}));
}

TEST_F(OpcList, SetsAGroupAtTheServerAndInTheList) {
  SaveOPCConfiguration(settings, TwoServers());
  OpcManager list = Open();
  EXPECT_TRUE(list.SetGroup(0, 1, 500, 10, false)) << "not connected";
  EXPECT_EQ(list.Servers()[0].groups[1].updateRate, 500);
  ASSERT_TRUE(list.ConnectServer(0));
  EXPECT_TRUE(list.SetGroup(0, 0, 1000, 20, false));
  EXPECT_EQ(list.GroupOf(0, 0)->GetGroupUpdateRate(), 1000);
  EXPECT_FALSE(list.GroupOf(0, 0)->GetGroupActiveState());
  EXPECT_EQ(list.Stored()[0].Groups[0].GroupDeadBand, 20);
  ExpectBox("Set Group Update Rate");
  EXPECT_FALSE(list.SetGroup(0, 0, 2000, 30, true));
  EXPECT_EQ(list.Stored()[0].Groups[0].GroupUpdateRate, 1000);
}

TEST_F(OpcList, RemovesAnItemAndKeepsOneThatTheServerKeeps) {
  SaveOPCConfiguration(settings, TwoServers());
  OpcManager list = Open();
  ASSERT_TRUE(list.ConnectServer(0));
  ExpectBox("Remove Item");
  EXPECT_FALSE(list.RemoveItem(0, 0, 0));
  EXPECT_EQ(list.Stored(), TwoServers());
  EXPECT_TRUE(list.RemoveItem(0, 0, 1)) << "the server has none of it";
  EXPECT_TRUE(list.RemoveItem(0, 0, 0));
  EXPECT_EQ(list.Stored()[0].Groups[0].Items, (std::vector<std::string>{"B"}));
  EXPECT_EQ(list.ItemOf(0, 0, 0)->GetItemID(), "B");
}

TEST_F(OpcList, RemovesGroupsAndServersAndEndsThemAtTheServer) {
  SaveOPCConfiguration(settings, TwoServers());
  OpcManager list = Open();
  ASSERT_TRUE(list.ConnectServer(0));
  EXPECT_TRUE(list.RemoveGroup(0, 0));
  EXPECT_EQ(opc.ended, (std::vector<std::string>{"group Pumps"}));
  list.RemoveServer(0);
  EXPECT_EQ(opc.ended, (std::vector<std::string>{"group Pumps", "group Empty", "session"}));
  ASSERT_TRUE(list.AddSelectedOPCServerMain("Third", ""));
  EXPECT_EQ(list.Servers().back().key, "Server 3");
}

}  // namespace
}  // namespace velk
