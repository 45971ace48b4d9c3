#include "opc/opc_group_class.h"

#include "opc/opc_rig.h"

namespace velk {
namespace {

constexpr OpcDataType kDouble{OpcType::Double};

class OpcGroupTest : public test::OpcRig {
 protected:
  void SetUp() override {
    opc.known["Rate"] = {.canonicalType = {OpcType::Float}, .isReadable = true, .isWritable = true};
    opc.known["Depth"] = {.canonicalType = kDouble, .isReadable = true};
    Connect();
    group_ = &AddGroup();
  }

  OPCItemClass& Add(const std::string& id) {
    std::string key;
    std::int32_t handle = 0;
    EXPECT_TRUE(group_->AddOPCItem(id, {}, true, key, handle));
    return *group_->FindItem(handle);
  }

  OPCGroupClass* group_ = nullptr;
};

TEST_F(OpcGroupTest, AddsAnItemUnderTheKeyOfItsClientHandle) {
  std::string key;
  std::int32_t handle = 0;
  ASSERT_TRUE(group_->AddOPCItem("Rate", kDouble, false, key, handle));
  EXPECT_EQ(handle, 1);
  EXPECT_EQ(key, "Item 1");
  ASSERT_TRUE(group_->AddOPCItem("Depth", {}, true, key, handle));
  EXPECT_EQ(key, "Item 2");
  const OPCItemClass& rate = *group_->FindItem(1);
  EXPECT_EQ(rate.GetItemID(), "Rate");
  EXPECT_EQ(rate.GetItemIndex(), 1);
  EXPECT_EQ(rate.GetItemNode(), "10.0.0.5");
  EXPECT_EQ(rate.GetItemDataType(), kDouble);
  EXPECT_EQ(rate.GetItemCanonicalType(), OpcDataType{OpcType::Float});
  EXPECT_EQ(rate.GetItemServerHandle(), 1001);
  EXPECT_FALSE(rate.GetItemActiveState());
  EXPECT_EQ(rate.GetItemQuality(), 0);
  EXPECT_TRUE(rate.GetItemValue().elements.empty());
  EXPECT_FALSE(opc.groups.at(0)->items.at(0).wish.isActive);
}

TEST_F(OpcGroupTest, KeepsTypeAndStateOfTheLastItemAsDefaults) {
  std::string key;
  std::int32_t handle = 0;
  ASSERT_TRUE(group_->AddOPCItem("Rate", kDouble, false, key, handle));
  EXPECT_EQ(group_->GetOPCItemsDefaultDataType(), kDouble);
  EXPECT_FALSE(group_->GetOPCItemsDefaultActive());
}

TEST_F(OpcGroupTest, KeepsNoItemThatTheServerRefuses) {
  dialogs.Expect("The OPC function 'Add Item' has returned an error of -2144075776 or Hex 0x80340000", Answer::Ok);
  std::string key;
  std::int32_t handle = 0;
  EXPECT_FALSE(group_->AddOPCItem("Nowhere", {}, true, key, handle));
  EXPECT_TRUE(group_->GetOPCGroupItemsCollection().empty());
}

TEST_F(OpcGroupTest, TakesAwayAnItemThatTheServerAddsTooLate) {
  opc.isSilent = true;
  dialogs.Expect("'Add Item'", Answer::Ok);
  std::string key;
  std::int32_t handle = 0;
  EXPECT_FALSE(group_->AddOPCItem("Rate", {}, true, key, handle));
  opc.AnswerLate();
  EXPECT_TRUE(opc.groups.at(0)->items.empty());
}

TEST_F(OpcGroupTest, ShowsTheLastUpdateOfEachItem) {
  OPCItemClass& rate = Add("Rate");
  OPCItemClass& depth = Add("Depth");
  opc.Report("Depth", OpcValue(2.5), 64, 46000.5);
  EXPECT_EQ(depth.GetItemValue(), OpcValue(2.5));
  EXPECT_EQ(depth.GetItemQuality(), 64);
  EXPECT_EQ(depth.GetItemTimeStamp(), 46000.5);
  EXPECT_EQ(rate.GetItemQuality(), 0);
  EXPECT_TRUE(rate.GetItemValue().elements.empty());
}

TEST_F(OpcGroupTest, LosesNoValueThatComesRightBehindTheAnswer) {
  opc.firstValue = OpcValue(7.0);
  EXPECT_EQ(Add("Rate").GetItemValue(), OpcValue(7.0));
}

TEST_F(OpcGroupTest, SkipsTheValueOfAnItemThatWasRemoved) {
  Add("Rate");
  OPCItemClass& depth = Add("Depth");
  ASSERT_TRUE(group_->RemoveOPCItem("Item 1"));
  const OpcChange changes[] = {{.clientHandle = 1, .value = OpcValue(1.0), .quality = 192},
                               {.clientHandle = 2, .value = OpcValue(2.0), .quality = 192}};
  group_->OPCGroupObj_DataChange(changes);
  EXPECT_EQ(depth.GetItemValue(), OpcValue(2.0));
  EXPECT_EQ(group_->FindItem(1), nullptr);
}

TEST_F(OpcGroupTest, RemovesAnItemByTheNumberInItsKey) {
  Add("Rate");
  Add("Depth");
  EXPECT_TRUE(group_->RemoveOPCItem("Item 1"));
  ASSERT_EQ(group_->GetOPCGroupItemsCollection().size(), 1U);
  EXPECT_EQ(group_->GetOPCGroupItemsCollection().at(0)->GetItemID(), "Depth");
  ASSERT_EQ(opc.groups.at(0)->items.size(), 1U);
  EXPECT_EQ(opc.groups.at(0)->items.at(0).wish.id, "Depth");
}

TEST_F(OpcGroupTest, KeepsAnItemThatCouldNotBeRemoved) {
  Add("Rate");
  ExpectBox("Remove Item");
  EXPECT_FALSE(group_->RemoveOPCItem("Item 1"));
  EXPECT_NE(group_->FindItem(1), nullptr);
}

TEST_F(OpcGroupTest, TellsAKeyThatNoItemHas) {
  Add("Rate");
  for (const char* key : {"Item 2", "Item", "Item x", "", "Item 99999999999"}) {
    dialogs.Expect("'Remove Item'", Answer::Ok);
    EXPECT_FALSE(group_->RemoveOPCItem(key)) << key;
  }
  EXPECT_NE(group_->FindItem(1), nullptr);
}

TEST_F(OpcGroupTest, NeverGivesAHandleTwice) {
  Add("Rate");
  ASSERT_TRUE(group_->RemoveOPCItem("Item 1"));
  EXPECT_EQ(Add("Depth").GetItemIndex(), 2);
}

TEST_F(OpcGroupTest, ValidatesWithoutKeepingTheItem) {
  OpcItemAnswer answer;
  EXPECT_TRUE(group_->ValidateOPCItem("Rate", kDouble, true, answer));
  EXPECT_EQ(answer.canonicalType, OpcDataType{OpcType::Float});
  EXPECT_TRUE(group_->GetOPCGroupItemsCollection().empty());
  EXPECT_TRUE(opc.groups.at(0)->items.empty());
}

TEST_F(OpcGroupTest, GivesTheVerdictOfTheServerWithoutABox) {
  OpcItemAnswer answer;
  EXPECT_FALSE(group_->ValidateOPCItem("Nowhere", {}, true, answer));
  EXPECT_EQ(answer.status, kOpcUnknownId);
}

TEST_F(OpcGroupTest, ShowsTheBoxWhereTheServerCannotBeAskedForAVerdict) {
  ExpectBox("Validate Item", kOpcNotConnected);
  OpcItemAnswer answer;
  EXPECT_FALSE(group_->ValidateOPCItem("Rate", {}, true, answer));
}

TEST_F(OpcGroupTest, WritesAValueToTheItemAtTheServer) {
  const OPCItemClass& rate = Add("Rate");
  EXPECT_TRUE(group_->AsyncWriteOPCItem(1, OpcValue(4.5)));
  ASSERT_EQ(opc.writes.size(), 1U);
  EXPECT_EQ(opc.writes.at(0).first, rate.GetItemServerHandle());
  EXPECT_EQ(opc.writes.at(0).second, OpcValue(4.5));
}

TEST_F(OpcGroupTest, ShowsTheBoxOfAWriteThatIsRefusedAtOnce) {
  Add("Rate");
  ExpectBox("Write Item");
  EXPECT_FALSE(group_->AsyncWriteOPCItem(1, OpcValue(4.5)));
  dialogs.Expect("'Write Item'", Answer::Ok);
  EXPECT_FALSE(group_->AsyncWriteOPCItem(9, OpcValue(4.5)));
}

TEST_F(OpcGroupTest, MakesAnItemBadWhoseWriteFailsLater) {
  OPCItemClass& rate = Add("Rate");
  opc.Report("Rate", OpcValue(1.0));
  opc.isSilent = true;
  EXPECT_TRUE(group_->AsyncWriteOPCItem(1, OpcValue(4.5)));
  EXPECT_EQ(rate.GetItemQuality(), 192);
  group_->OPCGroupObj_AsyncWriteComplete(1, kOpcGood);
  EXPECT_EQ(rate.GetItemQuality(), 192);
  group_->OPCGroupObj_AsyncWriteComplete(9, 0x803B0000);
  group_->OPCGroupObj_AsyncWriteComplete(1, 0x803B0000);
  EXPECT_EQ(rate.GetItemQuality(), 0);
}

TEST_F(OpcGroupTest, IsGoneWhenAWriteIsAnswered) {
  Add("Rate");
  opc.isSilent = true;
  EXPECT_TRUE(group_->AsyncWriteOPCItem(1, OpcValue(4.5)));
  ASSERT_TRUE(server.RemoveOPCGroup("Group 1 1"));
  opc.AnswerLate();
  EXPECT_EQ(server.GetOPCServerGroupCollection().size(), 0U);
}

TEST_F(OpcGroupTest, ChangesWhatTheServerTakes) {
  EXPECT_TRUE(group_->SetGroupActiveState(false));
  EXPECT_TRUE(group_->SetGroupDeadBand(12.5F));
  EXPECT_TRUE(group_->SetGroupUpdateRate(750));
  EXPECT_FALSE(group_->GetGroupActiveState());
  EXPECT_EQ(group_->GetGroupDeadBand(), 12.5F);
  EXPECT_EQ(group_->GetGroupUpdateRate(), 750);
  EXPECT_EQ(opc.groups.at(0)->wish.updateRate, 750);
  EXPECT_EQ(opc.groups.at(0)->wish.deadBand, 12.5F);
  EXPECT_FALSE(opc.groups.at(0)->wish.isActive);
}

TEST_F(OpcGroupTest, KeepsWhatTheServerRefusesToChange) {
  ExpectBox("Group Active State");
  EXPECT_FALSE(group_->SetGroupActiveState(false));
  ExpectBox("Set Group Dead Band");
  EXPECT_FALSE(group_->SetGroupDeadBand(5));
  ExpectBox("Set Group Update Rate");
  EXPECT_FALSE(group_->SetGroupUpdateRate(9));
  EXPECT_TRUE(group_->GetGroupActiveState());
  EXPECT_EQ(group_->GetGroupDeadBand(), 0);
  EXPECT_EQ(group_->GetGroupUpdateRate(), 250);
}

TEST_F(OpcGroupTest, SetsAnItemInactiveAndActive) {
  OPCItemClass& rate = Add("Rate");
  EXPECT_TRUE(rate.SetItemActiveState(false));
  EXPECT_FALSE(rate.GetItemActiveState());
  EXPECT_FALSE(opc.groups.at(0)->items.at(0).wish.isActive);
  ExpectBox("SetItemActiveState");
  EXPECT_FALSE(rate.SetItemActiveState(true));
  EXPECT_FALSE(rate.GetItemActiveState());
}

}  // namespace
}  // namespace velk
