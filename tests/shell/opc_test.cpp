// Items of OPC servers as the channels of the whole program.

#include <gtest/gtest.h>

#include <QComboBox>

#include "model/texts.h"
#include "opc/opc_configuration.h"
#include "shell/shell_rig.h"
#include "shell/texts.h"

namespace velk {
namespace {

class OpcInTheProgram : public testing::Test {
 protected:
  void Store(const std::vector<std::string>& ids) {
    SaveOPCConfiguration(*rig.settings, {{"Plant", "", {{"Pumps", 0, 250, ids}}}});
    rig.settings->Flush();
  }
  void StoreProtocol() {
    rig.settings->Save("VELK2", "Protocol", "SerialData", "OPC Server");
    rig.settings->Flush();
  }
  /// The server has the items, and each of them has this value.
  void Offer(const std::vector<std::string>& ids, double value) {
    for (const std::string& id : ids) rig.opc->known[id] = {};
    rig.opc->firstValue = OpcValue(value);
  }

  test::ShellRig rig;
};

TEST_F(OpcInTheProgram, ConnectsItsItemsAtTheStartAndRecordsThem) {
  Store({"A", "B"});
  StoreProtocol();
  rig.Start();
  EXPECT_EQ(rig.opc->places.size(), 2U);
  EXPECT_EQ(rig.State().NumberOfParameters, 2);
  Offer({"A", "B"}, 12.5);
  rig.clock.Advance(3000);
  EXPECT_EQ(rig.Window().ButtonImage("connect"), image::ConnectOn);
  rig.Press("Acquire");
  EXPECT_EQ(rig.State().CurrentStatus.english, "Ready to Acquire");
  rig.dialogs.ExpectSaveFile(rig.folder.File("job.mdb"));
  rig.Press("Record");
  rig.Press("Pause");
  rig.clock.Advance(5000);
  rig.opc->Report("B", OpcValue(40.0));
  rig.clock.Advance(5000);
  EXPECT_EQ(rig.State().CurrentValue[1], 12.5F);
  EXPECT_EQ(rig.State().CurrentValue[2], 40.0F);
  EXPECT_GE(rig.State().Data.rows, 8);
  rig.Press("Stop");
  EXPECT_TRUE(rig.opc->groups.empty());
  EXPECT_EQ(rig.Window().ButtonImage("connect"), image::ConnectOff);
}

TEST_F(OpcInTheProgram, IsTheSeventeenthEntryOfTheSerialPort) {
  Store({"A", "B"});
  rig.Start();
  EXPECT_TRUE(rig.opc->places.empty());
  rig.windows.Then("HardwareSettings", [](QDialog& window) {
    test::FindControl<QComboBox>(window, "cboSerialData")->setCurrentIndex(16);
    EXPECT_FALSE(test::FindControl<QWidget>(window, "txtNumberOfParameters")->isEnabled());
    test::Click(window, "cmdOK");
  });
  // Behind an own unit a choice takes full effect with the next start.
  rig.dialogs.Expect(std::string(text::OfferNewStart.english), Answer::No);
  rig.Choose("mnuEditSerialPort");
  EXPECT_EQ(rig.State().SerialData, "OPC Server");
  EXPECT_EQ(rig.State().NumberOfParameters, 2);
  EXPECT_EQ(rig.opc->places.size(), 2U);
  EXPECT_EQ(rig.settings->Get("VELK2", "Parameters", "NumberOfParameters", ""), "2");
}

TEST_F(OpcInTheProgram, TakesAListThatWasEditedAsSoonAsItsWindowCloses) {
  Store({"A", "B"});
  StoreProtocol();
  rig.Start();
  rig.windows.Then("frmMainOPC", [this](QDialog& window) {
    Store({"A"});
    window.reject();
  });
  rig.Choose("mnuEditOPCServer");
  EXPECT_EQ(rig.opc->places.size(), 4U) << "connected anew";
  EXPECT_EQ(rig.State().NumberOfParameters, 2) << "the window stores what it shows";
}

TEST_F(OpcInTheProgram, LeavesAnotherProtocolAloneWhenTheListIsEdited) {
  Store({"A"});
  rig.Start();
  rig.windows.ThenClick("frmMainOPC", "cmdClose");
  rig.Choose("mnuEditOPCServer");
  EXPECT_TRUE(rig.opc->places.empty());
  EXPECT_EQ(rig.State().NumberOfParameters, 3);
}

TEST_F(OpcInTheProgram, OpensItsListInReadyOnly) {
  Store({"A"});
  StoreProtocol();
  rig.Start();
  EXPECT_TRUE(rig.Window().MenuItem("mnuEditOPCServer")->isEnabled());
  rig.Press("Acquire");
  EXPECT_FALSE(rig.Window().MenuItem("mnuEditOPCServer")->isEnabled());
  rig.Press("Stop");
  EXPECT_TRUE(rig.Window().MenuItem("mnuEditOPCServer")->isEnabled());
}

TEST_F(OpcInTheProgram, EndsEveryConnectionAtTheExit) {
  Store({"A", "B"});
  StoreProtocol();
  rig.Start();
  EXPECT_EQ(rig.opc->places.size(), 2U);
  rig.dialogs.Expect("Are you sure you want to exit VELK?", Answer::Yes);
  rig.Choose("mnuFileExit");
  EXPECT_TRUE(rig.opc->groups.empty());
  EXPECT_EQ(std::count(rig.opc->ended.begin(), rig.opc->ended.end(), "session"), 2);
}

}  // namespace
}  // namespace velk
