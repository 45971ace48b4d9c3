#include "opc/opc_browser_class.h"

#include "opc/opc_rig.h"

namespace velk {
namespace {

OpcNode Folder(const std::string& name) {
  return {.name = name, .id = "ns=1;s=" + name, .isBranch = true};
}

OpcNode Leaf(const std::string& name, OpcType type = OpcType::Double, bool isWritable = false) {
  return {.name = name,
          .id = "ns=1;s=" + name,
          .isVariable = true,
          .type = {type},
          .isReadable = true,
          .isWritable = isWritable};
}

class OpcBrowserTest : public test::OpcRig {
 protected:
  void SetUp() override {
    opc.folders[""] = {Folder("Pumps"), Folder("Tanks"), Leaf("Clock", OpcType::Date)};
    opc.folders["ns=1;s=Pumps"] = {Leaf("Rate 1"), Leaf("Rate 2", OpcType::Float), Folder("Seals"),
                                   Leaf("Speed", OpcType::Double, true), Leaf("Mode", OpcType::String, true)};
    opc.folders["ns=1;s=Pumps"].back().isReadable = false;
    Connect();
    browser_ = server.GetServerBrowseObject();
  }

  std::vector<std::string> Names() {
    std::vector<std::string> names;
    for (int item = 1; item <= browser_->GetItemCount(); ++item) names.push_back(browser_->GetItemName(item).value());
    return names;
  }

  std::unique_ptr<OPCBrowserClass> browser_;
};

using List = std::vector<std::string>;

TEST_F(OpcBrowserTest, ShowsBranchesAndLeavesOfTheRoot) {
  EXPECT_EQ(browser_->GetBrowserOrganization(), OpcOrganization::Hierarchical);
  ASSERT_TRUE(browser_->ShowBranches());
  EXPECT_EQ(Names(), (List{"Pumps", "Tanks"}));
  ASSERT_TRUE(browser_->ShowLeafs());
  EXPECT_EQ(Names(), List{"Clock"});
}

TEST_F(OpcBrowserTest, TellsNodesOfOneNameApartByTheirIdentifiers) {
  OpcNode other = Leaf("Clock", OpcType::Double);
  other.id = "ns=2;s=Clock";
  opc.folders[""].push_back(other);
  ASSERT_TRUE(browser_->ShowLeafs());
  EXPECT_EQ(Names(), (List{"Clock (ns=1;s=Clock)", "Clock (ns=2;s=Clock)"}));
  EXPECT_EQ(browser_->GetItemID("Clock (ns=2;s=Clock)"), "ns=2;s=Clock");
}

TEST_F(OpcBrowserTest, ShowsAVariableThatHasPartsAmongTheBranchesToo) {
  opc.folders[""].back().isBranch = true;
  opc.folders["ns=1;s=Clock"] = {Leaf("Zone")};
  ASSERT_TRUE(browser_->ShowBranches());
  EXPECT_EQ(Names(), (List{"Pumps", "Tanks", "Clock"}));
  ASSERT_TRUE(browser_->ShowLeafs());
  EXPECT_EQ(Names(), List{"Clock"});
  ASSERT_TRUE(browser_->MoveDown("Clock"));
  ASSERT_TRUE(browser_->ShowLeafs());
  EXPECT_EQ(Names(), List{"Zone"});
}

TEST_F(OpcBrowserTest, WalksDownAndUp) {
  ASSERT_TRUE(browser_->MoveDown("Pumps"));
  ASSERT_TRUE(browser_->ShowLeafs());
  EXPECT_EQ(Names(), (List{"Rate 1", "Rate 2", "Speed", "Mode"}));
  ASSERT_TRUE(browser_->MoveDown("Seals"));
  ASSERT_TRUE(browser_->ShowLeafs());
  EXPECT_EQ(browser_->GetItemCount(), 0);
  ASSERT_TRUE(browser_->MoveUp());
  ASSERT_TRUE(browser_->ShowBranches());
  EXPECT_EQ(Names(), List{"Seals"});
  ASSERT_TRUE(browser_->MoveToRoot());
  ASSERT_TRUE(browser_->ShowBranches());
  EXPECT_EQ(Names(), (List{"Pumps", "Tanks"}));
}

TEST_F(OpcBrowserTest, AsksOnceForAFolderThatItStaysIn) {
  ASSERT_TRUE(browser_->ShowBranches());
  ASSERT_TRUE(browser_->ShowLeafs());
  ASSERT_TRUE(browser_->MoveDown("Tanks"));
  EXPECT_EQ(opc.browses, 1);
}

TEST_F(OpcBrowserTest, StaysWhereThereIsNoSuchBranch) {
  dialogs.Expect("'MoveDown'", Answer::Ok);
  EXPECT_FALSE(browser_->MoveDown("Nowhere"));
  dialogs.Expect("'MoveDown'", Answer::Ok);
  EXPECT_FALSE(browser_->MoveDown("Clock"));
  dialogs.Expect("'MoveUp'", Answer::Ok);
  EXPECT_FALSE(browser_->MoveUp());
  ASSERT_TRUE(browser_->ShowBranches());
  EXPECT_EQ(Names(), (List{"Pumps", "Tanks"}));
}

TEST_F(OpcBrowserTest, KeepsWhatIsShownWhereTheServerFails) {
  ASSERT_TRUE(browser_->ShowBranches());
  ASSERT_TRUE(browser_->MoveDown("Pumps"));
  ExpectBox("ShowLeafs");
  EXPECT_FALSE(browser_->ShowLeafs());
  EXPECT_EQ(browser_->GetItemCount(), 2);
  ExpectBox("ShowBranches");
  EXPECT_FALSE(browser_->ShowBranches());
  EXPECT_TRUE(browser_->ShowLeafs());
}

TEST_F(OpcBrowserTest, GivesTheWholeIdentifierOfAnItemThatIsShown) {
  ASSERT_TRUE(browser_->MoveDown("Pumps"));
  ASSERT_TRUE(browser_->ShowLeafs());
  EXPECT_EQ(browser_->GetItemID("Rate 2"), "ns=1;s=Rate 2");
  dialogs.Expect("'GetItemID'", Answer::Ok);
  EXPECT_EQ(browser_->GetItemID("Rate 9"), std::nullopt);
  for (const int item : {0, 5, -1}) {
    dialogs.Expect("'GetItemName'", Answer::Ok);
    EXPECT_EQ(browser_->GetItemName(item), std::nullopt);
  }
}

TEST_F(OpcBrowserTest, ShowsTheLeavesThatPassTheFilters) {
  ASSERT_TRUE(browser_->MoveDown("Pumps"));
  browser_->SetFilter("rate*");
  ASSERT_TRUE(browser_->ShowLeafs());
  EXPECT_EQ(Names(), (List{"Rate 1", "Rate 2"}));
  browser_->SetDataTypeFilter({OpcType::Float});
  ASSERT_TRUE(browser_->ShowLeafs());
  EXPECT_EQ(Names(), List{"Rate 2"});
  browser_->SetFilter("");
  browser_->SetDataTypeFilter({});
  browser_->SetAccessFilter(OpcAccess::WriteOnly);
  ASSERT_TRUE(browser_->ShowLeafs());
  EXPECT_EQ(Names(), (List{"Speed", "Mode"}));
  browser_->SetAccessFilter(OpcAccess::ReadOnly);
  ASSERT_TRUE(browser_->ShowLeafs());
  EXPECT_EQ(Names(), (List{"Rate 1", "Rate 2", "Speed"}));
}

TEST(OpcFilter, KnowsStarsAndQuestionMarks) {
  const struct {
    const char* name;
    const char* filter;
    bool passes;
  } cases[] = {
      {"Rate", "", true},       {"", "", true},           {"", "*", true},           {"", "?", false},
      {"Rate", "rate", true},   {"Rate", "R?te", true},   {"Rate", "R?e", false},    {"Rate", "*", true},
      {"Rate", "*a*", true},    {"Rate", "*t", false},    {"Rate", "Ra", false},     {"Rate", "Rates", false},
      {"abcabd", "*abd", true}, {"aXbXc", "a*X*c", true}, {"aXbXc", "a*Y*c", false}, {"Насос", "н?с*", true},
      {"Насос", "?????", true}, {"Насос", "????", false}, {"a*b", "a*b", true},      {"aab", "**?b", true},
  };
  for (const auto& row : cases)
    EXPECT_EQ(PassesOpcFilter(row.name, row.filter), row.passes) << row.name << " " << row.filter;
}

}  // namespace
}  // namespace velk
