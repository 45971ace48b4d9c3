// The window in which the list of servers, groups and items is edited.

#include "opc/windows/frm_main_opc.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QLabel>
#include <QListWidget>
#include <QTreeView>
#include <QTreeWidget>

#include "opc/opc_windows_rig.h"
#include "support/window_script.h"

namespace velk {
namespace {

using test::Click;
using test::FindControl;
using test::kDepth;
using test::kRate;
using test::OpcWindows;

class OpcManagerWindow : public OpcWindows {
 protected:
  frmMainOPC& Open() {
    manager = std::make_unique<OpcManager>(calls, settings);
    window = std::make_unique<frmMainOPC>(host, platform, calls, *manager);
    return Shown(window);
  }
  /// With a connected server, a group and two items, the group chosen.
  void OpenPumps() {
    SaveOPCConfiguration(settings, {{"Plant", "10.0.0.5", {{"Pumps", 0, 250, {kRate, kDepth}}}}});
    Open();
    Do("mnuTreeViewConnect");
    Choose(0, 0);
  }
  QTreeWidget& Tree() { return *FindControl<QTreeWidget>(*window, "TreeView1"); }
  QTreeView& List() { return *FindControl<QTreeView>(*window, "ListView1"); }
  QString Cell(int row, int column) { return List().model()->index(row, column).data().toString(); }
  QAction* Command(const char* name) { return window->findChild<QAction*>(QString::fromLatin1(name)); }
  void Do(const char* command) {
    ASSERT_NE(Command(command), nullptr) << command;
    EXPECT_TRUE(Command(command)->isEnabled()) << command;
    Command(command)->trigger();
  }
  void Choose(int server, int group = -1) {
    QTreeWidgetItem* node = Tree().topLevelItem(0)->child(server);
    Tree().setCurrentItem(group < 0 ? node : node->child(group));
  }
  void ChooseItem(int row) { List().setCurrentIndex(List().model()->index(row, 0)); }

  test::WindowScript script;
  std::unique_ptr<OpcManager> manager;
  std::unique_ptr<frmMainOPC> window;
};

TEST_F(OpcManagerWindow, BeginsEmptyWithWhatToDoFirst) {
  Open();
  EXPECT_EQ(window->windowTitle(), "OPC Server");
  EXPECT_EQ(Tree().topLevelItem(0)->childCount(), 0);
  EXPECT_TRUE(FindControl<QLabel>(*window, "lblHint")->isVisible());
  EXPECT_TRUE(Command("mnuTreeViewNewServer")->isEnabled());
  EXPECT_FALSE(Command("mnuTreeViewNewGroup")->isEnabled());
  EXPECT_FALSE(Command("mnuTreeViewDelete")->isEnabled());
  EXPECT_EQ(List().model()->headerData(0, Qt::Horizontal).toString(), "ItemID");
  EXPECT_EQ(List().model()->headerData(1, Qt::Horizontal).toString(), "Value");
  EXPECT_EQ(List().model()->headerData(2, Qt::Horizontal).toString(), "Status");
}

TEST_F(OpcManagerWindow, AddsAServerAGroupAndAnItemThroughItsDialogs) {
  Open();
  script.Then("frmSelectOPCServer", [](QDialog& dialog) {
    QApplication::processEvents();
    FindControl<QListWidget>(dialog, "OPCServerList")->setCurrentRow(0);
    Click(dialog, "ConnectToOPCServer");
  });
  Do("mnuTreeViewNewServer");
  EXPECT_EQ(Tree().topLevelItem(0)->child(0)->text(0), "Plant");
  script.Then("frmAddGroup", [](QDialog& dialog) {
    Type(dialog, "GroupName", "Pumps");
    Click(dialog, "AddGroup");
  });
  Do("mnuTreeViewNewGroup");
  EXPECT_EQ(Tree().currentItem()->text(0), "Pumps");
  script.Then("frmAddItem", [](QDialog& dialog) {
    QApplication::processEvents();
    Type(dialog, "ItemID", kRate);
    Click(dialog, "AddItem");
  });
  Do("mnuTreeViewNewItem");
  ASSERT_EQ(List().model()->rowCount(), 1);
  EXPECT_EQ(Cell(0, 0), QString::fromLatin1(kRate));
  EXPECT_EQ(Cell(0, 1), "");
  EXPECT_EQ(Cell(0, 2), "Bad") << "until the next look";
  clock.Advance(250);
  EXPECT_EQ(Cell(0, 2), "Bad 0");
  Choose(0);
  Choose(0, 0);
  EXPECT_EQ(Cell(0, 2), "Bad  0") << "two blanks where the list is filled";
  EXPECT_EQ(manager->Stored(), (OPCServers{{"Plant", "", {{"Pumps", 0, 100, {kRate}}}}}));
}

TEST_F(OpcManagerWindow, ShowsAStoredServerUnconnectedUntilItIsAskedFor) {
  SaveOPCConfiguration(settings, {{"Plant", "10.0.0.5", {{"Pumps", 0, 250, {kRate, "none"}}}}});
  Open();
  EXPECT_TRUE(opc.places.empty());
  EXPECT_EQ(Tree().topLevelItem(0)->child(0)->text(0), "Plant - 10.0.0.5 (not connected)");
  Choose(0);
  Do("mnuTreeViewConnect");
  EXPECT_EQ(Tree().topLevelItem(0)->child(0)->text(0), "Plant - 10.0.0.5");
  Choose(0, 0);
  EXPECT_EQ(Cell(0, 2), "Bad  0");
  EXPECT_EQ(Cell(1, 2), "Not at the server");
}

TEST_F(OpcManagerWindow, ShowsThatAServerHasAnnouncedItsEnd) {
  OpenPumps();
  const QString before = Tree().topLevelItem(0)->child(0)->text(0);
  opc.events.onShutDown();
  clock.Advance(250);
  EXPECT_EQ(Tree().topLevelItem(0)->child(0)->text(0), before + " (going down)");
  opc.events.onBack();
  clock.Advance(250);
  EXPECT_EQ(Tree().topLevelItem(0)->child(0)->text(0), before);
}

TEST_F(OpcManagerWindow, ShowsValuesAndTheirStatusAtEachTickOfItsTimer) {
  OpenPumps();
  const std::vector<OpcElement> two = {std::int16_t{1}, std::int16_t{2}};
  opc.Report(kRate, OpcValue(two));
  opc.Report(kDepth, OpcValue(2.5), 20);
  EXPECT_EQ(Cell(0, 1), "");
  clock.Advance(250);
  EXPECT_EQ(Cell(0, 1), "1, 2");
  EXPECT_EQ(Cell(0, 2), "Good");
  EXPECT_EQ(Cell(1, 1), "2.5");
  EXPECT_EQ(Cell(1, 2), "Bad 20");
}

TEST_F(OpcManagerWindow, LooksAsOftenAsItsIntervalSays) {
  OpenPumps();
  script.Then("frmItemUpdateInterval", [](QDialog& dialog) {
    EXPECT_EQ(TextOf(dialog, "Text1"), "250");
    Type(dialog, "Text1", "1000");
    Click(dialog, "OkButton");
  });
  Do("mnuViewUpdateDispaly");
  opc.Report(kRate, OpcValue(1.5));
  clock.Advance(900);
  EXPECT_EQ(Cell(0, 1), "");
  clock.Advance(200);
  EXPECT_EQ(Cell(0, 1), "1.5");
}

TEST_F(OpcManagerWindow, DeletesChosenItemsByTheDeleteKey) {
  OpenPumps();
  List().setFocus();
  ChooseItem(0);
  QTest::keyClick(&List(), Qt::Key_Delete);
  EXPECT_EQ(manager->Stored()[0].Groups[0].Items, (std::vector<std::string>{kDepth}));
  EXPECT_EQ(List().model()->rowCount(), 1);
}

TEST_F(OpcManagerWindow, KeepsAnItemThatTheServerKeeps) {
  OpenPumps();
  ChooseItem(0);
  ExpectBox("Remove Item");
  Do("mnuListViewDelete");
  EXPECT_EQ(List().model()->rowCount(), 2);
}

TEST_F(OpcManagerWindow, AsksBeforeItDeletesWhatHasSomethingBelowIt) {
  OpenPumps();
  dialogs.Expect("Delete [Pumps] with all that is below it?", Answer::No);
  Do("mnuTreeViewDelete");
  EXPECT_EQ(manager->Stored()[0].Groups.size(), 1U);
  dialogs.Expect("Delete [Pumps] with all that is below it?", Answer::Yes);
  Do("mnuTreeViewDelete");
  EXPECT_TRUE(manager->Stored()[0].Groups.empty());
  Do("mnuTreeViewDelete");
  EXPECT_TRUE(manager->Stored().empty());
  EXPECT_EQ(opc.ended, (std::vector<std::string>{"group Pumps", "session"}));
}

TEST_F(OpcManagerWindow, SetsItemsActiveAndInactive) {
  OpenPumps();
  ChooseItem(0);
  Do("mnuListViewSetInactive");
  EXPECT_FALSE(manager->ItemOf(0, 0, 0)->GetItemActiveState());
  EXPECT_TRUE(manager->ItemOf(0, 0, 1)->GetItemActiveState());
  Do("mnuListViewSetActive");
  EXPECT_TRUE(manager->ItemOf(0, 0, 0)->GetItemActiveState());
}

TEST_F(OpcManagerWindow, WritesAValue) {
  OpenPumps();
  ChooseItem(1);
  dialogs.ExpectInput("New value of ns=2;s=Pump.Depth", "62.5");
  Do("mnuListViewWriteValue");
  ASSERT_EQ(opc.writes.size(), 1U);
  EXPECT_EQ(opc.writes[0].second, OpcValue(std::string("62.5")));
}

TEST_F(OpcManagerWindow, ShowsAndSetsThePropertiesOfAGroup) {
  OpenPumps();
  script.Then("frmOPCGroupProperties", [](QDialog& dialog) {
    EXPECT_TRUE(FindControl<QLabel>(dialog, "lblNote")->text().endsWith(QString::fromLatin1(kDepth)));
    Type(dialog, "UpdateRate", "500");
    Click(dialog, "OkButton");
  });
  Do("mnuTreeViewProperties");
  EXPECT_EQ(manager->GroupOf(0, 0)->GetGroupUpdateRate(), 500);
  EXPECT_EQ(manager->Stored()[0].Groups[0].GroupUpdateRate, 500);
}

TEST_F(OpcManagerWindow, StandsWhereItStoodBefore) {
  Open();
  window->setGeometry(40, 50, 700, 420);
  window.reset();
  EXPECT_EQ(settings.Get("VELK2", "Settings", "MainWidth", ""), "700");
  EXPECT_EQ(settings.Get("VELK2", "Settings", "MainHeight", ""), "420");
  Open();
  EXPECT_EQ(window->size(), QSize(700, 420));
}

TEST_F(OpcManagerWindow, IsStoredAsItClosesAndLetsAllGoAheadOfWhatFollows) {
  SaveOPCConfiguration(settings, {{"Plant", "", {{"Pumps", 0, 250, {kRate}}}}});
  script.Then("frmMainOPC", [this](QDialog& dialog) {
    auto* tree = FindControl<QTreeWidget>(dialog, "TreeView1");
    tree->setCurrentItem(tree->topLevelItem(0)->child(0));
    dialog.findChild<QAction*>("mnuTreeViewConnect")->trigger();
    EXPECT_EQ(opc.groups.size(), 1U);
    Click(dialog, "cmdClose");
  });
  std::size_t connected = 9;
  mnuEditOPCServer_Click(host, platform, opc, 64, [&] { connected = opc.groups.size(); });
  EXPECT_EQ(connected, 0U);
  EXPECT_EQ(LoadOPCConfiguration(settings), (OPCServers{{"Plant", "", {{"Pumps", 0, 250, {kRate}}}}}));
}

TEST_F(OpcManagerWindow, TellsOfItemsThatAJobHasNoChannelsFor) {
  SaveOPCConfiguration(settings, {{"Plant", "", {{"Pumps", 0, 250, {kRate, kDepth, kRate}}}}});
  script.ThenClick("frmMainOPC", "cmdClose");
  dialogs.Expect("3 items are in the list.", Answer::Ok);
  mnuEditOPCServer_Click(host, platform, opc, 2, [] {});
}

}  // namespace
}  // namespace velk
