#include "opc/opc_configuration.h"

#include <gtest/gtest.h>

#include "support/temporary_folder.h"

namespace velk {
namespace {

class OpcConfigurationTest : public testing::Test {
 protected:
  std::string Stored(const std::string& key) { return store_.Get("VELK2", "OPCdata", key, "(none)"); }
  void Store(const std::string& key, const std::string& value) { store_.Save("VELK2", "OPCdata", key, value); }

  test::TemporaryFolder folder_;
  SettingsStore store_{folder_.File("settings")};
};

const OPCServers kPlant = {
    {"Plant", "10.0.0.5", {{"Pumps", 2.5F, 250, {"ns=2;s=Rate", "ns=2;s=Depth & Co@1=x"}}, {"Tanks", 0, 1000, {}}}},
    {"opc.tcp://rig:4841", "", {}}};

TEST_F(OpcConfigurationTest, IsWrittenUnderKeysWithoutBlanks) {
  SaveOPCConfiguration(store_, kPlant);
  EXPECT_EQ(Stored("ServersCount"), "2");
  EXPECT_EQ(Stored("ServerName1"), "Plant");
  EXPECT_EQ(Stored("servernode1"), "10.0.0.5");
  EXPECT_EQ(Stored("servergroupscount1"), "2");
  EXPECT_EQ(Stored("server1&GroupName1"), "Pumps");
  EXPECT_EQ(Stored("server1&GroupDeadBand1"), "2.5");
  EXPECT_EQ(Stored("server1&GroupUpdateRate1"), "250");
  EXPECT_EQ(Stored("server1&GroupItemsCount1"), "2");
  EXPECT_EQ(Stored("server1&Group1@ItemName1"), "ns=2;s=Rate");
  EXPECT_EQ(Stored("server1&Group1@ItemName2"), "ns=2;s=Depth & Co@1=x");
  EXPECT_EQ(Stored("server1&GroupName2"), "Tanks");
  EXPECT_EQ(Stored("server1&GroupItemsCount2"), "0");
  EXPECT_EQ(Stored("ServerName2"), "opc.tcp://rig:4841");
}

TEST_F(OpcConfigurationTest, StoresAServerWithoutGroupsAsACountOfNone) {
  SaveOPCConfiguration(store_, kPlant);
  EXPECT_EQ(Stored("servergroupscount2"), "0");
  EXPECT_EQ(Stored("server2&GroupName1"), "(none)");
}

TEST_F(OpcConfigurationTest, ComesBackFromTheFileAsItWasStored) {
  SaveOPCConfiguration(store_, kPlant);
  store_.Flush();
  SettingsStore other(folder_.File("settings"));
  EXPECT_EQ(LoadOPCConfiguration(other), kPlant);
}

TEST_F(OpcConfigurationTest, IsEmptyWhereNothingIsStored) {
  EXPECT_TRUE(LoadOPCConfiguration(store_).empty());
}

TEST_F(OpcConfigurationTest, GivesEmptyNamesWhereACountPromisesMoreThanThereIs) {
  Store("ServersCount", "2");
  Store("ServerName1", "Plant");
  Store("servergroupscount1", "1");
  Store("server1&GroupItemsCount1", "1");
  EXPECT_EQ(LoadOPCConfiguration(store_), (OPCServers{{"Plant", "", {{"", 0, 0, {""}}}}, {}}));
}

TEST_F(OpcConfigurationTest, HidesStaleKeysOfALongerListByTheCounts) {
  SaveOPCConfiguration(store_, kPlant);
  const OPCServers shorter = {{"Plant", "10.0.0.5", {{"Pumps", 2.5F, 250, {"ns=2;s=Rate"}}}}};
  SaveOPCConfiguration(store_, shorter);
  EXPECT_EQ(LoadOPCConfiguration(store_), shorter);
  EXPECT_EQ(Stored("server1&Group1@ItemName2"), "ns=2;s=Depth & Co@1=x");
  EXPECT_EQ(Stored("ServerName2"), "opc.tcp://rig:4841");
}

TEST_F(OpcConfigurationTest, HoldsDamagedNumbersInTheirRanges) {
  Store("ServersCount", "1");
  Store("servergroupscount1", "3");
  Store("server1&GroupDeadBand1", "250");
  Store("server1&GroupUpdateRate1", "1E300");
  Store("server1&GroupDeadBand2", "-1");
  Store("server1&GroupUpdateRate2", "-5");
  Store("server1&GroupDeadBand3", "word");
  Store("server1&GroupItemsCount3", "-7");
  const OPCServers loaded = LoadOPCConfiguration(store_);
  ASSERT_EQ(loaded.size(), 1U);
  EXPECT_EQ(loaded[0].Groups, (std::vector<OPCGroupRecord>{{"", 100, 2147483647, {}}, {"", 0, 0, {}}, {"", 0, 0, {}}}));
  Store("ServersCount", "999999999");
  EXPECT_EQ(LoadOPCConfiguration(store_).size(), 10000U);
}

TEST_F(OpcConfigurationTest, CountsTheItemsOfAllGroups) {
  EXPECT_EQ(CountOPCItems(kPlant), 2);
  EXPECT_EQ(CountOPCItems({}), 0);
}

}  // namespace
}  // namespace velk
