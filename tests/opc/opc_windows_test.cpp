// The windows of OPC, over a server in memory.

#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QTest>
#include <QTreeWidget>

#include "opc/opc_windows_rig.h"
#include "opc/windows/frm_add_group.h"
#include "opc/windows/frm_add_item.h"
#include "opc/windows/frm_item_update_interval.h"
#include "opc/windows/frm_opc_group_properties.h"
#include "opc/windows/frm_opc_server_properties.h"
#include "opc/windows/frm_select_opc_server.h"
#include "opc/windows/opc_questions_qt.h"
#include "support/window_driving.h"
#include "support/window_script.h"

namespace velk {
namespace {

using test::Click;
using test::FindControl;

using test::kDepth;
using test::kRate;
using test::OpcWindows;

// --- Choosing a server ---

class OpcSelection : public OpcWindows {
 protected:
  frmSelectOPCServer& Open() {
    window =
        std::make_unique<frmSelectOPCServer>(host, calls, [this](const std::string& name, const std::string& node) {
          added.emplace_back(name, node);
          return accepts;
        });
    return Shown(window);
  }

  std::vector<std::pair<std::string, std::string>> added;
  bool accepts = true;
  std::unique_ptr<frmSelectOPCServer> window;
};

TEST_F(OpcSelection, ListsTheServersOfThisNodeAsItOpens) {
  Open();
  const auto* list = FindControl<QListWidget>(*window, "OPCServerList");
  ASSERT_EQ(list->count(), 2);
  EXPECT_EQ(list->item(0)->text(), "Plant");
  EXPECT_EQ(opc.hosts, (std::vector<std::string>{""}));
  EXPECT_EQ(TextOf(*window, "SelectedOPCServer"), "No Server Selected");
  EXPECT_EQ(window->windowTitle(), "Select OPC Server");
}

TEST_F(OpcSelection, GoesToARemoteNode) {
  Open();
  Type(*window, "OPCNodeName", "10.0.0.5");
  Click(*window, "Command1");
  EXPECT_EQ(opc.hosts, (std::vector<std::string>{"", "10.0.0.5"}));
}

TEST_F(OpcSelection, TellsThatRemoteServersCanNotBeFound) {
  opc.failures = {kOpcNoServer};
  dialogs.Expect("Cannot find remote servers!", Answer::Ok);
  Open();
  EXPECT_EQ(FindControl<QListWidget>(*window, "OPCServerList")->count(), 0);
}

TEST_F(OpcSelection, CopiesAClickedEntryAndConnectsIt) {
  Open();
  Type(*window, "OPCNodeName", "10.0.0.5");
  auto* list = FindControl<QListWidget>(*window, "OPCServerList");
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(1)).center());
  EXPECT_EQ(TextOf(*window, "SelectedOPCServer"), "Mud");
  Type(*window, "SelectedOPCServer", "Other");
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(1)).center());
  EXPECT_EQ(TextOf(*window, "SelectedOPCServer"), "Mud") << "clicked again";
  Click(*window, "ConnectToOPCServer");
  EXPECT_EQ(added, (std::vector<std::pair<std::string, std::string>>{{"Mud", "10.0.0.5"}}));
  EXPECT_FALSE(window->isVisible());
}

TEST_F(OpcSelection, TellsServersOfOneNameApartByTheirEndpoints) {
  opc.servers[1].name = "Plant";
  Open();
  FindControl<QListWidget>(*window, "OPCServerList")->setCurrentRow(1);
  EXPECT_EQ(TextOf(*window, "SelectedOPCServer"), "opc.tcp://10.0.0.5:4841");
  // The port of the node is where its list is kept, and not where the server is.
  Type(*window, "OPCNodeName", "10.0.0.5:4850");
  Click(*window, "ConnectToOPCServer");
  EXPECT_EQ(added, (std::vector<std::pair<std::string, std::string>>{{"opc.tcp://10.0.0.5:4841", "10.0.0.5"}}));
}

TEST_F(OpcSelection, AsksForAServerWhereNoneIsSelected) {
  Open();
  dialogs.Expect("Please select an OPC Server from the list or enter a Prog ID.", Answer::Ok);
  Click(*window, "ConnectToOPCServer");
  EXPECT_TRUE(added.empty());
  EXPECT_TRUE(window->isVisible());
}

TEST_F(OpcSelection, TakesATypedServerAndStaysWhereItIsRefused) {
  accepts = false;
  Open();
  Type(*window, "SelectedOPCServer", "Other");
  Click(*window, "ConnectToOPCServer");
  EXPECT_EQ(added.size(), 1U);
  EXPECT_EQ(added[0].first, "Other");
  EXPECT_TRUE(window->isVisible());
}

// --- Groups ---

TEST_F(OpcWindows, AGroupIsAddedWithItsNumbersAndABlankName) {
  std::vector<std::string> added;
  auto window = std::make_unique<frmAddGroup>(
      host, [&](const std::string& name, std::int32_t updateRate, float deadBand, bool active) {
        added = {name, std::to_string(updateRate), std::to_string(static_cast<int>(deadBand)), active ? "on" : "off"};
        return true;
      });
  Shown(window);
  EXPECT_EQ(window->windowTitle(), "Add OPC Group");
  Type(*window, "UpdateRate", "250");
  Type(*window, "DeadBand", "5");
  FindControl<QAbstractButton>(*window, "ActiveState")->click();
  Click(*window, "AddGroup");
  EXPECT_EQ(added, (std::vector<std::string>{"", "250", "5", "off"}));
  EXPECT_FALSE(window->isVisible());
}

TEST_F(OpcWindows, AGroupWithoutASoundRateOrDeadbandIsRefusedInPlace) {
  auto window = std::make_unique<frmAddGroup>(host, [](const std::string&, std::int32_t, float, bool) { return true; });
  Shown(window);
  Type(*window, "UpdateRate", "-1");
  dialogs.Expect("Enter an update rate from 0 to 2147483647 ms.", Answer::Ok);
  Click(*window, "AddGroup");
  EXPECT_EQ(TextOf(*window, "UpdateRate"), "-1");
  Type(*window, "UpdateRate", "100");
  Type(*window, "DeadBand", "101");
  dialogs.Expect("Enter a deadband from 0 to 100 percent.", Answer::Ok);
  Click(*window, "AddGroup");
  EXPECT_TRUE(window->isVisible());
}

TEST_F(OpcWindows, PropertiesOfAGroupLockItsNameAndReadEmptyBoxesAsZero) {
  std::vector<int> set;
  auto window = std::make_unique<frmOPCGroupProperties>(
      host, OpcGroupShown{"Pumps", 250, 5, true, {}}, [&](std::int32_t updateRate, float deadBand, bool active) {
        set = {updateRate, static_cast<int>(deadBand), active ? 1 : 0};
        return true;
      });
  Shown(window);
  EXPECT_EQ(window->windowTitle(), "OPC Group Properties");
  EXPECT_TRUE(FindControl<QLineEdit>(*window, "GroupName")->isReadOnly());
  EXPECT_EQ(TextOf(*window, "GroupName"), "Pumps");
  EXPECT_EQ(TextOf(*window, "UpdateRate"), "250");
  EXPECT_EQ(TextOf(*window, "DeadBand"), "5");
  FindControl<QLineEdit>(*window, "UpdateRate")->clear();
  FindControl<QLineEdit>(*window, "DeadBand")->clear();
  Click(*window, "OkButton");
  EXPECT_EQ(set, (std::vector<int>{0, 0, 1}));
}

TEST_F(OpcWindows, PropertiesOfAGroupNameItemsThatADeadbandDoesNothingFor) {
  const auto set = [](std::int32_t, float, bool) { return true; };
  const frmOPCGroupProperties with(host, OpcGroupShown{"Pumps", 250, 5, true, kDepth}, set);
  EXPECT_TRUE(FindControl<QLabel>(with, "lblNote")->text().endsWith(QString::fromLatin1(kDepth)));
  const frmOPCGroupProperties without(host, OpcGroupShown{"Pumps", 250, 5, true, {}}, set);
  EXPECT_TRUE(FindControl<QLabel>(without, "lblNote")->isHidden());
}

// --- The properties of a server ---

TEST_F(OpcWindows, PropertiesOfAServerShowWhatItSays) {
  opc.serverStatus = {.state = OpcServerState::Suspended,
                      .vendor = "Maker",
                      .version = "2.14.3",
                      .build = "77",
                      .startTime = 46000.5,
                      .currentTime = 46001.25,
                      .lastUpdate = 0};
  Connect();
  const frmOPCServerProperties window(host, calls, server);
  EXPECT_EQ(TextOf(window, "ProgID"), "Plant");
  EXPECT_EQ(TextOf(window, "VendorInfo"), "Maker");
  EXPECT_EQ(TextOf(window, "StartTime"), "09-Dec-2025 12:00:00");
  EXPECT_EQ(TextOf(window, "CurrentTime"), "10-Dec-2025 06:00:00");
  EXPECT_EQ(TextOf(window, "LastUpdateTime"), "");
  EXPECT_EQ(TextOf(window, "ServerState"), "Server Suspended");
  EXPECT_EQ(TextOf(window, "Version"), "2.14.77");
}

TEST_F(OpcWindows, PropertiesOfASilentServerShowNoVendorAndNoBox) {
  Connect();
  opc.failures.assign(20, kOpcNoServer);
  const frmOPCServerProperties window(host, calls, server);
  EXPECT_EQ(TextOf(window, "VendorInfo"), "No Vendor");
  EXPECT_EQ(TextOf(window, "StartTime"), "");
  EXPECT_EQ(TextOf(window, "ServerState"), "");
  EXPECT_EQ(TextOf(window, "Version"), "");
}

TEST(OpcStates, HaveTheirTextsByCode) {
  EXPECT_EQ(OpcStateText(1).English(), "Server Running");
  EXPECT_EQ(OpcStateText(2).English(), "Server Failed");
  EXPECT_EQ(OpcStateText(3).English(), "Server No Configuraition");
  EXPECT_EQ(OpcStateText(4).English(), "Server Suspended");
  EXPECT_EQ(OpcStateText(5).English(), "Server Test Mode");
  EXPECT_EQ(OpcStateText(6).English(), "Server Disconnected");
  EXPECT_TRUE(OpcStateText(0).IsEmpty());
  EXPECT_TRUE(OpcStateText(7).IsEmpty());
}

// --- A secured server ---

TEST_F(OpcWindows, AnUnknownCertificateIsShownWithItsFingerprintAndRefusedByEnter) {
  OpcQuestionsQt questions(host);
  const OpcCertificate certificate{"opc.tcp://rig:4840", "CN=Plant,O=Maker", "AA:BB:CC:DD", 46000, false};
  dialogs.Expect("The server opc.tcp://rig:4840 shows a certificate that nobody has accepted here yet.", Answer::No);
  EXPECT_FALSE(questions.Accepts(certificate));
  EXPECT_TRUE(dialogs.shown.back().safeDefault);
  const std::string& text = dialogs.shown.back().text;
  EXPECT_NE(text.find("Holder: CN=Plant,O=Maker\n"), std::string::npos);
  EXPECT_NE(text.find("Valid to: 09-Dec-2025\n"), std::string::npos);
  EXPECT_NE(text.find("SHA-256:\nAA:BB\n:CC:DD\n"), std::string::npos);
  dialogs.Expect("The server opc.tcp://rig:4840 shows", Answer::Yes);
  EXPECT_TRUE(questions.Accepts(certificate));
}

TEST_F(OpcWindows, AChangedCertificateIsCalledSo) {
  OpcQuestionsQt questions(host);
  dialogs.Expect(" shows another certificate than the one that was accepted here.", Answer::No);
  EXPECT_FALSE(questions.Accepts({"opc.tcp://rig:4840", "CN=Plant", "AA:BB", 46000, true}));
  EXPECT_EQ(dialogs.shown.back().icon, BoxIcon::Critical);
}

TEST_F(OpcWindows, ACertificateWhoseTimeIsOverIsToldWithItsDate) {
  OpcQuestionsQt questions(host);
  dialogs.Expect("The server opc.tcp://rig:4840 shows a certificate whose time is over. It is refused.", Answer::Ok);
  questions.TellExpired({"opc.tcp://rig:4840", "CN=Plant", "AA:BB", 46000, false});
  EXPECT_NE(dialogs.shown.back().text.find("Holder: CN=Plant\nValid to: 09-Dec-2025"), std::string::npos);
}

TEST_F(OpcWindows, UserAndPasswordAreAskedForAndThePasswordIsNotSeen) {
  OpcQuestionsQt questions(host);
  test::WindowScript script;
  script.Then("frmOPCLogin", [](QDialog& dialog) {
    EXPECT_TRUE(FindControl<QLabel>(dialog, "lblServer")->text().contains("opc.tcp://rig:4840 asks for a user"));
    EXPECT_EQ(FindControl<QLineEdit>(dialog, "Password")->echoMode(), QLineEdit::Password);
    Type(dialog, "UserName", "crew");
    Type(dialog, "Password", "secret");
    Click(dialog, "OkButton");
  });
  const auto login = questions.Login("opc.tcp://rig:4840", false);
  ASSERT_TRUE(login);
  EXPECT_EQ(login->user, "crew");
  EXPECT_EQ(login->password, "secret");
  script.Then("frmOPCLogin", [](QDialog& dialog) {
    EXPECT_TRUE(FindControl<QLabel>(dialog, "lblServer")->text().endsWith("has refused this user and password."));
    Click(dialog, "CancelButton");
  });
  EXPECT_FALSE(questions.Login("opc.tcp://rig:4840", true));
}

// --- The interval of the display ---

TEST_F(OpcWindows, TheIntervalOfTheDisplayIsOneThatItTakes) {
  frmItemUpdateInterval window(host, 250);
  window.show();
  EXPECT_EQ(window.windowTitle(), "Item Display Update Interval");
  EXPECT_EQ(FindControl<QLabel>(window, "Label2")->text(), "(50 - 10000) ms.");
  Type(window, "Text1", "49");
  dialogs.Expect("Enter a whole number from 50 to 10000.", Answer::Ok);
  Click(window, "OkButton");
  EXPECT_TRUE(window.isVisible());
  Type(window, "Text1", "1000");
  Click(window, "OkButton");
  EXPECT_EQ(window.Answer(), 1000);
}

// --- Adding an item ---

class OpcAddItem : public OpcWindows {
 protected:
  frmAddItem& Open(bool browses = true) {
    if (browses) Connect();
    AddItemAccess access;
    access.browse = [this, browses] { return browses ? server.GetServerBrowseObject() : nullptr; };
    access.validate = [this](const std::string& id, const OpcDataType&, bool) {
      duringValidation = FindControl<QLabel>(*window, "lblState")->text();
      return id == kRate;
    };
    access.addOPCItemMain = [this](const std::string& id, const OpcDataType& type, bool active) {
      added.push_back({id, type, active});
      return id == kRate;
    };
    window = std::make_unique<frmAddItem>(host, access);
    return Shown(window);
  }
  QTreeWidgetItem* Branch() { return FindControl<QTreeWidget>(*window, "tvBranches")->topLevelItem(0)->child(0); }
  QStringList Leaves() {
    QStringList names;
    const QAbstractItemModel* const model = FindControl<QListView>(*window, "lvItemView")->model();
    for (int row = 0; row < model->rowCount(); ++row) names << model->index(row, 0).data().toString();
    return names;
  }
  void Pick(const char* list, const char* entry) {
    auto* box = FindControl<QComboBox>(*window, list);
    box->setFocus();
    box->setCurrentText(QString::fromLatin1(entry));
    emit box->activated(box->currentIndex());
  }

  struct Added {
    std::string id;
    OpcDataType type;
    bool active;
  };
  std::vector<Added> added;
  QString duringValidation;
  std::unique_ptr<frmAddItem> window;
};

TEST_F(OpcAddItem, ShowsBranchesThatOpenWhenTheyAreAskedFor) {
  Open();
  ASSERT_NE(Branch(), nullptr);
  EXPECT_EQ(Branch()->text(0), "Pump");
  ASSERT_EQ(Branch()->childCount(), 1);
  EXPECT_EQ(Branch()->child(0)->data(0, Qt::UserRole).toString(), "KEPwareDummyNode");
  Branch()->setExpanded(true);
  ASSERT_EQ(Branch()->childCount(), 1);
  EXPECT_EQ(Branch()->child(0)->text(0), "Inner");
}

TEST_F(OpcAddItem, ShowsTheLeavesOfABranchUnderTheFilters) {
  Open();
  FindControl<QTreeWidget>(*window, "tvBranches")->setCurrentItem(Branch());
  EXPECT_EQ(Leaves(), (QStringList{"Rate", "Depth"}));
  Pick("DataTypeFilter", "Float");
  EXPECT_EQ(Leaves(), (QStringList{"Rate"}));
  Pick("DataTypeFilter", "Native");
  Pick("AccessFilter", "Write Only");
  EXPECT_EQ(Leaves(), (QStringList{"Rate"}));
  Pick("AccessFilter", "Any");
  Type(*window, "ItemNameFilter", "d*");
  QTest::keyClick(FindControl<QLineEdit>(*window, "ItemNameFilter"), Qt::Key_Tab);
  EXPECT_EQ(Leaves(), (QStringList{"Depth"}));
}

TEST_F(OpcAddItem, PutsTheIdentifierOfADoubleClickedEntryIntoItsField) {
  Open();
  FindControl<QTreeWidget>(*window, "tvBranches")->setCurrentItem(Branch());
  auto* list = FindControl<QListView>(*window, "lvItemView");
  const QPoint place = list->visualRect(list->model()->index(1, 0)).center();
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place);
  QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, place);
  EXPECT_EQ(TextOf(*window, "ItemID"), QString::fromLatin1(kDepth));
}

TEST_F(OpcAddItem, LetsIdentifiersBeTypedWhereTheServerHasNoBrowser) {
  Open(false);
  EXPECT_FALSE(FindControl<QWidget>(*window, "Browsing")->isEnabled());
  EXPECT_TRUE(FindControl<QLineEdit>(*window, "ItemID")->hasFocus());
}

TEST_F(OpcAddItem, TellsWhatComesOfAValidation) {
  Open();
  Type(*window, "ItemID", kRate);
  Click(*window, "Validate");
  EXPECT_EQ(duringValidation, "Testing Item");
  EXPECT_EQ(FindControl<QLabel>(*window, "lblState")->text(), "ItemID and Datatype Accepted");
  Type(*window, "ItemID", "other");
  Click(*window, "Validate");
  EXPECT_EQ(FindControl<QLabel>(*window, "lblState")->text(), "Error - Check ItemID or Datatype");
}

TEST_F(OpcAddItem, AddsAnItemInTheChosenTypeAndCloses) {
  Open();
  Type(*window, "ItemID", kRate);
  Pick("DataType", "FloatArray");
  FindControl<QAbstractButton>(*window, "ActiveState")->click();
  Click(*window, "AddItem");
  ASSERT_EQ(added.size(), 1U);
  EXPECT_EQ(added[0].id, kRate);
  EXPECT_EQ(added[0].type, (OpcDataType{OpcType::Float, true}));
  EXPECT_FALSE(added[0].active);
  EXPECT_FALSE(window->isVisible());
}

TEST_F(OpcAddItem, StaysWhereAnItemIsRejectedAndAddsNoEmptyOne) {
  Open();
  Click(*window, "AddItem");
  EXPECT_TRUE(added.empty());
  Type(*window, "ItemID", "other");
  dialogs.Expect("The OPC Server has rejected the item please check the Item ID and data type selections", Answer::Ok);
  Click(*window, "AddItem");
  EXPECT_TRUE(window->isVisible());
}

}  // namespace
}  // namespace velk
