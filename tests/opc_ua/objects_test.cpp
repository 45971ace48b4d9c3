// The OPC objects over the network: each operation once as it succeeds, and once as it fails with its box.

#include "base/dates.h"
#include "opc/opc_server_class.h"
#include "opc_ua/opc_plant.h"
#include "support/scripted_dialogs.h"

namespace velk {
namespace {

constexpr const char* kRate = "ns=1;s=Pump.Rate";

class OpcObjects : public test::OpcPlant {
 protected:
  void SetUp() override {
    ASSERT_EQ(StartServer(), Url());
    ASSERT_TRUE(plant.ConnectOPCServer("VELK Plant", Host(), 3, "Server 3"));
  }
  OPCGroupClass& AddGroup() {
    std::string key;
    EXPECT_TRUE(plant.AddOPCGroup("Pumps", 100, 0, true, key));
    EXPECT_EQ(key, "Group 1 3");
    return *plant.FindGroup(key);
  }
  OPCItemClass& AddItem(OPCGroupClass& group, const char* id = kRate) {
    std::string key;
    std::int32_t handle = 0;
    EXPECT_TRUE(group.AddOPCItem(id, {}, true, key, handle));
    return *group.FindItem(handle);
  }
  bool HasValue(const OPCItemClass& item, const OpcValue& value) {
    return Wait([&] { return item.GetItemValue() == value; });
  }
  /// From here on nothing answers any more.
  void Kill() {
    server.reset();
    ASSERT_TRUE(Wait([this] { return !plant.IsLive(); }));
  }
  void ExpectBox(const std::string& function) {
    dialogs.Expect("The OPC function '" + function + "' has returned an error of -", Answer::Ok);
  }
  static std::vector<std::string> Names(OPCBrowserClass& browser) {
    std::vector<std::string> names;
    for (int item = 1; item <= browser.GetItemCount(); ++item) names.push_back(browser.GetItemName(item).value());
    return names;
  }

  test::ScriptedDialogs dialogs{gate};
  OpcCalls calls{*transport, clock, dialogs};
  OPCServerClass plant{calls};
};

TEST_F(OpcObjects, ReadAServer) {
  EXPECT_EQ(plant.GetServerName(), "VELK Plant");
  EXPECT_EQ(plant.GetNodeName(), Host());
  EXPECT_EQ(plant.GetOPCServerIndex(), 3);
  EXPECT_EQ(plant.GetOPCServerKey(), "Server 3");
  const auto list = plant.GetOPCServerList(Host());
  ASSERT_TRUE(list);
  EXPECT_EQ(*list, (std::vector<OpcServerEntry>{{"VELK Plant", Url()}}));
  EXPECT_NEAR(plant.GetStartTime().value_or(0), clock.Now(), 60.0 / 86400);
  EXPECT_NEAR(plant.GetCurrentTime().value_or(0), clock.Now(), 10.0 / 86400);
  EXPECT_EQ(plant.GetLastUpdateTime(), 0);
  EXPECT_EQ(plant.GetMajorVersion(), 2);
  EXPECT_EQ(plant.GetMinorVersion(), 14);
  EXPECT_EQ(plant.GetBuildNumber(), 77);
  EXPECT_EQ(plant.GetVendorInfo(), "VELK simulators");
  EXPECT_EQ(plant.GetServerState(), 1);
  EXPECT_TRUE(plant.GetDefaultGroupIsActive());
  EXPECT_EQ(plant.GetDefaultGroupUpdateRate(), 100);
  EXPECT_EQ(plant.GetDefaultGroupDeadBand(), 0);
  EXPECT_TRUE(plant.DisconnectOPCServer());
  EXPECT_FALSE(plant.IsLive());
}

TEST_F(OpcObjects, AddChangeAndRemoveGroups) {
  OPCGroupClass& group = AddGroup();
  EXPECT_EQ(group.GetGroupName(), "Pumps");
  EXPECT_EQ(group.GetGroupNode(), Host());
  EXPECT_TRUE(group.SetGroupUpdateRate(200));
  EXPECT_EQ(group.GetGroupUpdateRate(), 200);
  EXPECT_TRUE(group.SetGroupDeadBand(2.5F));
  EXPECT_EQ(group.GetGroupDeadBand(), 2.5F);
  EXPECT_TRUE(group.SetGroupActiveState(false));
  EXPECT_FALSE(group.GetGroupActiveState());
  std::string key;
  EXPECT_TRUE(plant.AddOPCGroup("", 100, 0, true, key));
  EXPECT_EQ(key, "Group 2 3");
  EXPECT_FALSE(plant.FindGroup(key)->GetGroupName().empty()) << "the server has named it";
  EXPECT_TRUE(plant.RemoveOPCGroup("Group 1 3"));
  EXPECT_EQ(plant.GetOPCServerGroupCollection().size(), 1U);
}

TEST_F(OpcObjects, AddWatchWriteAndRemoveItems) {
  OPCGroupClass& group = AddGroup();
  const OPCItemClass& rate = AddItem(group);
  EXPECT_EQ(rate.GetItemID(), kRate);
  EXPECT_EQ(rate.GetItemNode(), Host());
  EXPECT_EQ(rate.GetItemCanonicalType(), (OpcDataType{OpcType::Float}));
  EXPECT_EQ(rate.GetItemDataType(), OpcDataType{});
  EXPECT_GT(rate.GetItemServerHandle(), 0);
  ASSERT_TRUE(HasValue(rate, OpcValue(40.0F)));
  EXPECT_EQ(rate.GetItemQuality(), 192);
  EXPECT_NEAR(rate.GetItemTimeStamp(), clock.Now(), 60.0 / 86400);
  EXPECT_NEAR(plant.GetLastUpdateTime().value_or(0), clock.Now(), 10.0 / 86400);
  EXPECT_TRUE(group.AsyncWriteOPCItem(rate.GetItemIndex(), OpcValue(std::string("62.5"))));
  EXPECT_TRUE(HasValue(rate, OpcValue(62.5F)));
  OPCItemClass& depth = AddItem(group, "Objects/Plant/Pump/Depth");
  EXPECT_TRUE(depth.SetItemActiveState(false));
  EXPECT_FALSE(depth.GetItemActiveState());
  OpcItemAnswer answer;
  EXPECT_TRUE(group.ValidateOPCItem(kRate, {OpcType::String}, true, answer));
  EXPECT_TRUE(group.RemoveOPCItem("Item 1"));
  EXPECT_EQ(group.GetOPCGroupItemsCollection().size(), 1U);
}

TEST_F(OpcObjects, MakeAnItemBadWhoseWriteTheServerRefuses) {
  OPCGroupClass& group = AddGroup();
  const OPCItemClass& mode = AddItem(group, "ns=1;s=Pump.Mode");
  ASSERT_TRUE(HasValue(mode, OpcValue(std::uint8_t{3})));
  EXPECT_TRUE(group.AsyncWriteOPCItem(mode.GetItemIndex(), OpcValue(1.0)));
  EXPECT_TRUE(Wait([&] { return mode.GetItemQuality() == 0; }));
}

TEST_F(OpcObjects, BrowseFolders) {
  const auto browser = plant.GetServerBrowseObject();
  ASSERT_NE(browser, nullptr);
  EXPECT_EQ(browser->GetBrowserOrganization(), OpcOrganization::Hierarchical);
  EXPECT_TRUE(browser->MoveDown("Plant"));
  EXPECT_TRUE(browser->MoveDown("Pump"));
  EXPECT_TRUE(browser->ShowLeafs());
  EXPECT_EQ(browser->GetItemCount(), 8);
  EXPECT_EQ(browser->GetItemID("Rate"), kRate);
  browser->SetFilter("r*");
  browser->SetDataTypeFilter({OpcType::Boolean});
  EXPECT_TRUE(browser->ShowLeafs());
  EXPECT_EQ(Names(*browser), std::vector<std::string>{"Running"});
  browser->SetFilter("");
  browser->SetDataTypeFilter({});
  browser->SetAccessFilter(OpcAccess::WriteOnly);
  EXPECT_TRUE(browser->ShowLeafs());
  EXPECT_EQ(browser->GetItemCount(), 4) << "Rate, Name, Running and Secret";
  EXPECT_TRUE(browser->ShowBranches());
  EXPECT_EQ(Names(*browser), std::vector<std::string>{"Motor"});
  EXPECT_TRUE(browser->MoveUp());
  EXPECT_TRUE(browser->ShowBranches());
  EXPECT_GE(browser->GetItemCount(), 5);
  EXPECT_TRUE(browser->MoveToRoot());
}

TEST_F(OpcObjects, TellWhatIsNotThereByTheNameOfTheFunction) {
  OPCGroupClass& group = AddGroup();
  const auto browser = plant.GetServerBrowseObject();
  std::string key;
  std::int32_t handle = 0;
  ExpectBox("Add Item");
  EXPECT_FALSE(group.AddOPCItem("ns=1;s=Nothing", {}, true, key, handle));
  ExpectBox("Add Item");
  EXPECT_FALSE(group.AddOPCItem("ns=1;s=Types.DateTime", {OpcType::Double}, true, key, handle));
  OpcItemAnswer answer;
  EXPECT_FALSE(group.ValidateOPCItem("ns=1;s=Nothing", {}, true, answer)) << "a verdict, without a box";
  ExpectBox("Write Item");
  EXPECT_FALSE(group.AsyncWriteOPCItem(AddItem(group).GetItemIndex(), OpcValue(std::string("word"))));
  ExpectBox("Remove Item");
  EXPECT_FALSE(group.RemoveOPCItem("Item 99"));
  ExpectBox("Remove Group");
  EXPECT_FALSE(plant.RemoveOPCGroup("Group 9 3"));
  ExpectBox("MoveDown");
  EXPECT_FALSE(browser->MoveDown("Nowhere"));
  ExpectBox("MoveUp");
  EXPECT_FALSE(browser->MoveUp());
  ExpectBox("GetItemName");
  EXPECT_FALSE(browser->GetItemName(99));
  ExpectBox("GetItemID");
  EXPECT_FALSE(browser->GetItemID("Nothing"));
  ExpectBox("Set Group Dead Band");
  EXPECT_FALSE(group.SetGroupDeadBand(101));
  ExpectBox("Set Group Update Rate");
  EXPECT_FALSE(group.SetGroupUpdateRate(-1));
  EXPECT_EQ(group.GetGroupUpdateRate(), 100);
  OPCServerClass other(calls);
  ExpectBox("Connect");
  EXPECT_FALSE(other.ConnectOPCServer("Nobody", Host(), 1, "Server 1"));
}

TEST_F(OpcObjects, TellEachFailureOfAServerThatIsGone) {
  OPCGroupClass& group = AddGroup();
  OPCItemClass& rate = AddItem(group);
  const auto browser = plant.GetServerBrowseObject();
  Kill();
  for (const char* name : {"Get OPC Server List",   "StartTime",    "CurrentTime",        "LastUpdate",
                           "MajorVersion",          "MinorVersion", "BuildNumber",        "VendorInfo",
                           "ServerState",           "Add Group",    "Group Active State", "Set Group Dead Band",
                           "Set Group Update Rate", "Add Item",     "Validate Item",      "Write Item",
                           "SetItemActiveState",    "ShowBranches", "ShowLeafs",          "MoveDown"})
    ExpectBox(name);
  EXPECT_FALSE(plant.GetOPCServerList(Host()));
  EXPECT_FALSE(plant.GetStartTime());
  EXPECT_FALSE(plant.GetCurrentTime());
  EXPECT_FALSE(plant.GetLastUpdateTime());
  EXPECT_FALSE(plant.GetMajorVersion());
  EXPECT_FALSE(plant.GetMinorVersion());
  EXPECT_FALSE(plant.GetBuildNumber());
  EXPECT_FALSE(plant.GetVendorInfo());
  EXPECT_FALSE(plant.GetServerState());
  std::string key;
  std::int32_t handle = 0;
  EXPECT_FALSE(plant.AddOPCGroup("Others", 100, 0, true, key));
  EXPECT_FALSE(group.SetGroupActiveState(false));
  EXPECT_FALSE(group.SetGroupDeadBand(5));
  EXPECT_FALSE(group.SetGroupUpdateRate(500));
  EXPECT_FALSE(group.AddOPCItem("ns=1;s=Pump.Depth", {}, true, key, handle));
  OpcItemAnswer answer;
  EXPECT_FALSE(group.ValidateOPCItem(kRate, {}, true, answer));
  EXPECT_FALSE(group.AsyncWriteOPCItem(rate.GetItemIndex(), OpcValue(1.0)));
  EXPECT_FALSE(rate.SetItemActiveState(false));
  EXPECT_FALSE(browser->ShowBranches());
  EXPECT_FALSE(browser->ShowLeafs());
  EXPECT_FALSE(browser->MoveDown("Plant"));
  EXPECT_EQ(plant.GetOPCServerGroupCollection().size(), 1U);
  EXPECT_EQ(group.GetOPCGroupItemsCollection().size(), 1U);
  EXPECT_EQ(group.GetGroupUpdateRate(), 100);
  EXPECT_TRUE(rate.GetItemActiveState());
}

}  // namespace
}  // namespace velk
