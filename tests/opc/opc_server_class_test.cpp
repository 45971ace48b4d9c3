#include "opc/opc_server_class.h"

#include "opc/opc_rig.h"

namespace velk {
namespace {

class OpcServerTest : public test::OpcRig {};

using Ended = std::vector<std::string>;

TEST_F(OpcServerTest, ListsTheServersOfANode) {
  opc.servers = {{"Plant", "opc.tcp://10.0.0.5:4840"}, {"Rig", "opc.tcp://10.0.0.5:4841"}};
  EXPECT_EQ(server.GetOPCServerList("10.0.0.5"), opc.servers);
  EXPECT_EQ(opc.hosts, std::vector<std::string>{"10.0.0.5"});
}

TEST_F(OpcServerTest, KeepsWhatItConnectedToAndSetsTheDefaultsOfItsGroups) {
  Connect();
  EXPECT_EQ(opc.places, (std::vector<OpcPlace>{{"Plant", "10.0.0.5"}}));
  EXPECT_EQ(server.GetServerName(), "Plant");
  EXPECT_EQ(server.GetNodeName(), "10.0.0.5");
  EXPECT_EQ(server.GetOPCServerIndex(), 1);
  EXPECT_EQ(server.GetOPCServerKey(), "Server 1");
  EXPECT_TRUE(server.GetDefaultGroupIsActive());
  EXPECT_EQ(server.GetDefaultGroupUpdateRate(), 100);
  EXPECT_EQ(server.GetDefaultGroupDeadBand(), 0);
}

TEST_F(OpcServerTest, StaysAsItWasWhereConnectFails) {
  ExpectBox("Connect");
  EXPECT_FALSE(server.ConnectOPCServer("Plant", "", 3, "Server 3"));
  EXPECT_EQ(server.GetServerName(), "");
  EXPECT_EQ(server.GetOPCServerKey(), "");
}

TEST_F(OpcServerTest, TellsTheNumberInDecimalAndInHexadecimal) {
  opc.failures = {0x80AB0000};
  dialogs.Expect("The OPC function 'Connect' has returned an error of -2136276992 or Hex 0x80AB0000", Answer::Ok);
  EXPECT_FALSE(server.ConnectOPCServer("Plant", "", 1, "Server 1"));
  EXPECT_EQ(dialogs.shown.at(0).title, "OPC Function error");
}

TEST_F(OpcServerTest, GivesUpASilentServerAfterFiveSecondsAndEndsTheSessionThatComesLate) {
  opc.isSilent = true;
  dialogs.Expect("'Connect' has returned an error of -2146828288 or Hex 0x800A0000", Answer::Ok);
  EXPECT_FALSE(server.ConnectOPCServer("Plant", "", 1, "Server 1"));
  EXPECT_EQ(clock.Ticks(), 5000);
  opc.AnswerLate();
  EXPECT_EQ(opc.ended, Ended{"session"});
}

TEST_F(OpcServerTest, EndsAWaitByCancelWithoutABox) {
  opc.isSilent = true;
  clock.onYield = [this] {
    EXPECT_TRUE(calls.IsWaiting());
    if (clock.Ticks() == 40) calls.Cancel();
  };
  EXPECT_FALSE(server.ConnectOPCServer("Plant", "", 1, "Server 1"));
  EXPECT_LT(clock.Ticks(), 50);
  EXPECT_FALSE(calls.IsWaiting());
}

TEST_F(OpcServerTest, ReadsWhatTheServerSaysOfItself) {
  Connect();
  opc.serverStatus = {.state = OpcServerState::Suspended,
                      .vendor = "Works",
                      .version = "2.14.3",
                      .build = "77",
                      .startTime = 46000.25,
                      .currentTime = 46001.5,
                      .lastUpdate = 46001.25};
  EXPECT_EQ(server.GetServerState(), 4);
  EXPECT_EQ(server.GetVendorInfo(), "Works");
  EXPECT_EQ(server.GetMajorVersion(), 2);
  EXPECT_EQ(server.GetMinorVersion(), 14);
  EXPECT_EQ(server.GetBuildNumber(), 77);
  EXPECT_EQ(server.GetStartTime(), 46000.25);
  EXPECT_EQ(server.GetCurrentTime(), 46001.5);
  EXPECT_EQ(server.GetLastUpdateTime(), 46001.25);
}

TEST_F(OpcServerTest, NamesTheValueThatCouldNotBeRead) {
  Connect();
  ExpectBox("StartTime");
  EXPECT_EQ(server.GetStartTime(), std::nullopt);
  ExpectBox("CurrentTime");
  EXPECT_EQ(server.GetCurrentTime(), std::nullopt);
  ExpectBox("LastUpdate");
  EXPECT_EQ(server.GetLastUpdateTime(), std::nullopt);
  ExpectBox("MajorVersion");
  EXPECT_EQ(server.GetMajorVersion(), std::nullopt);
  ExpectBox("MinorVersion");
  EXPECT_EQ(server.GetMinorVersion(), std::nullopt);
  ExpectBox("BuildNumber");
  EXPECT_EQ(server.GetBuildNumber(), std::nullopt);
  ExpectBox("VendorInfo");
  EXPECT_EQ(server.GetVendorInfo(), std::nullopt);
  ExpectBox("ServerState");
  EXPECT_EQ(server.GetServerState(), std::nullopt);
  ExpectBox("Get OPC Server List");
  EXPECT_EQ(server.GetOPCServerList(""), std::nullopt);
}

TEST_F(OpcServerTest, FailsWhereItIsNotConnected) {
  for (const char* function : {"Disconnect", "Browser Object", "DefaultGroupIsActive", "SetDefaultGroupUpdateRate",
                               "SetDefaultGroupDeadBand", "ServerState"})
    dialogs.Expect(std::string("'") + function + "' has returned an error of -2138439680 or Hex 0x808A0000",
                   Answer::Ok);
  EXPECT_FALSE(server.DisconnectOPCServer());
  EXPECT_EQ(server.GetServerBrowseObject(), nullptr);
  EXPECT_FALSE(server.SetDefaultGroupIsActive(true));
  EXPECT_FALSE(server.SetDefaultGroupUpdateRate(100));
  EXPECT_FALSE(server.SetDefaultGroupDeadBand(0));
  EXPECT_EQ(server.GetServerState(), std::nullopt);
}

TEST_F(OpcServerTest, AddsGroupsUnderKeysByTheirIndexAndTheServers) {
  ASSERT_TRUE(server.ConnectOPCServer("Plant", "10.0.0.5", 7, "Server 7"));
  std::string key;
  ASSERT_TRUE(server.AddOPCGroup("Pumps", 250, 2.5F, false, key));
  EXPECT_EQ(key, "Group 1 7");
  ASSERT_TRUE(server.AddOPCGroup("Tanks", 500, 0, true, key));
  EXPECT_EQ(key, "Group 2 7");
  const OPCGroupClass& pumps = *server.FindGroup("Group 1 7");
  EXPECT_EQ(pumps.GetGroupName(), "Pumps");
  EXPECT_EQ(pumps.GetGroupNode(), "10.0.0.5");
  EXPECT_EQ(pumps.GetGroupKey(), "Group 1 7");
  EXPECT_EQ(pumps.GetGroupIndex(), 1);
  EXPECT_EQ(pumps.GetGroupUpdateRate(), 250);
  EXPECT_EQ(pumps.GetGroupDeadBand(), 2.5F);
  EXPECT_FALSE(pumps.GetGroupActiveState());
  EXPECT_EQ(server.GetDefaultGroupUpdateRate(), 500);
  EXPECT_EQ(opc.groups.at(0)->wish.updateRate, 250);
}

TEST_F(OpcServerTest, TakesOneMoreThanTheHighestIndexInUse) {
  Connect();
  AddGroup("A");
  AddGroup("B");
  ASSERT_TRUE(server.RemoveOPCGroup("Group 1 1"));
  EXPECT_EQ(AddGroup("C").GetGroupKey(), "Group 3 1");
  ASSERT_TRUE(server.RemoveOPCGroup("Group 3 1"));
  EXPECT_EQ(AddGroup("D").GetGroupKey(), "Group 3 1");
}

TEST_F(OpcServerTest, LetsTheServerNameAGroup) {
  Connect();
  EXPECT_EQ(AddGroup("").GetGroupName(), "Named by the server");
}

TEST_F(OpcServerTest, LeavesDefaultsAndGroupsWhereAGroupIsRefused) {
  Connect();
  ExpectBox("Add Group");
  std::string key = "before";
  EXPECT_FALSE(server.AddOPCGroup("Pumps", 900, 5, false, key));
  EXPECT_EQ(key, "before");
  EXPECT_TRUE(server.GetOPCServerGroupCollection().empty());
  EXPECT_EQ(server.GetDefaultGroupUpdateRate(), 100);
  EXPECT_EQ(opc.ended, Ended{"group Pumps"});
}

TEST_F(OpcServerTest, RefusesRatesAndDeadbandsOutOfRangeAndANameTwice) {
  Connect();
  AddGroup("Pumps");
  std::string key;
  dialogs.Expect("'SetDefaultGroupUpdateRate'", Answer::Ok);
  EXPECT_FALSE(server.AddOPCGroup("X", -1, 0, true, key));
  dialogs.Expect("'SetDefaultGroupDeadBand'", Answer::Ok);
  EXPECT_FALSE(server.AddOPCGroup("X", 100, 100.5F, true, key));
  dialogs.Expect("'Add Group'", Answer::Ok);
  EXPECT_FALSE(server.AddOPCGroup("Pumps", 100, 0, true, key));
  EXPECT_EQ(server.GetOPCServerGroupCollection().size(), 1U);
}

TEST_F(OpcServerTest, TellsAGroupThatIsNotThere) {
  Connect();
  AddGroup();
  dialogs.Expect("'Remove Group'", Answer::Ok);
  EXPECT_FALSE(server.RemoveOPCGroup("Group 2 1"));
  EXPECT_EQ(server.GetOPCServerGroupCollection().size(), 1U);
}

TEST_F(OpcServerTest, RemovesItsGroupsInOrderAheadOfTheSession) {
  Connect();
  AddGroup("A");
  AddGroup("B");
  EXPECT_TRUE(server.DisconnectOPCServer());
  EXPECT_EQ(opc.ended, (Ended{"group A", "group B", "session"}));
}

TEST_F(OpcServerTest, DisconnectsWhenItIsReleased) {
  {
    OPCServerClass other(calls);
    ASSERT_TRUE(other.ConnectOPCServer("Plant", "", 1, "Server 1"));
    std::string key;
    ASSERT_TRUE(other.AddOPCGroup("A", 100, 0, true, key));
  }
  EXPECT_EQ(opc.ended, (Ended{"group A", "session"}));
}

TEST_F(OpcServerTest, TellsThatTheServerGoesDown) {
  Connect();
  EXPECT_FALSE(server.IsGoingDown());
  opc.events.onShutDown();
  EXPECT_TRUE(server.IsGoingDown());
  opc.events.onBack();
  EXPECT_FALSE(server.IsGoingDown());
}

}  // namespace
}  // namespace velk
