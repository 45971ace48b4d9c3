#include <gtest/gtest.h>

#include "base/dates.h"
#include "core/rig.h"
#include "model/texts.h"
#include "opc/opc_configuration.h"

namespace velk {
namespace {

/// A job whose channels are items of an OPC server in memory.
class OpcJob : public testing::Test {
 protected:
  OpcJob() {
    rig.session.SerialData = "OPC Server";
    rig.session.IsOwnUnit = false;
    rig.session.Delimiter = ";";
    rig.session.Terminator = "\r";
    rig.session.Data = {};
    for (const char* id : {"A", "B", "C"}) rig.opc.known[id] = {};
    Store({"A", "B"});
  }

  void Store(const std::vector<std::string>& ids) {
    SaveOPCConfiguration(rig.settings, {{"Plant", "", {{"Pumps", 0, 250, ids}}}});
  }
  void Report(double a, double b) {
    rig.opc.Report("A", OpcValue(a));
    rig.opc.Report("B", OpcValue(b));
  }
  /// Connect, with the items' first values coming in while it waits.
  void Connect() {
    rig.opc.firstValue = OpcValue(1.0);
    rig.acquisition.mnuAcquireConnect_Click();
  }
  void ConnectAndStart() {
    Connect();
    rig.acquisition.mnuAcquireStart_Click();
  }

  test::Rig rig;
};

TEST_F(OpcJob, ConnectsItsItemsFromTheStartOfTheProgramOnAndCountsThem) {
  int told = 0;
  rig.sources.onChannels = [&] { ++told; };
  rig.sources.ConnectOPCItems();
  EXPECT_EQ(rig.opc.places.size(), 2U);
  EXPECT_EQ(rig.session.NumberOfParameters, 2);
  EXPECT_EQ(told, 1);
  EXPECT_TRUE(rig.timers.Timer8->Enabled());
  EXPECT_EQ(rig.timers.Timer8->Interval(), 1000);
  EXPECT_FALSE(rig.timers.Timer7->Enabled());
  rig.sources.ConnectOPCItems();
  EXPECT_EQ(rig.opc.places.size(), 2U) << "they are connected";
  EXPECT_EQ(told, 1);
}

TEST_F(OpcJob, GivesEmptySeparatorsTheBlankAndTheCarriageReturn) {
  rig.session.Delimiter.clear();
  rig.session.Terminator.clear();
  rig.sources.ConnectOPCItems();
  EXPECT_EQ(rig.session.Delimiter, " ");
  EXPECT_EQ(rig.session.Terminator, "\r");
}

TEST_F(OpcJob, ConnectsNothingWhereTheProtocolIsAnother) {
  rig.session.SerialData = "Any Serial Data";
  rig.sources.ConnectOPCItems();
  rig.sources.FollowProtocol();
  EXPECT_TRUE(rig.opc.places.empty());
  EXPECT_FALSE(rig.timers.Timer8->Enabled());
  EXPECT_EQ(rig.session.NumberOfParameters, 3);
}

TEST_F(OpcJob, EndsItsItemsOnceAnotherProtocolIsChosen) {
  rig.sources.ConnectOPCItems();
  rig.clock.Advance(5);
  rig.session.SerialData = "Any Serial Data";
  rig.sources.FollowProtocol();
  EXPECT_TRUE(rig.opc.groups.empty());
  EXPECT_FALSE(rig.timers.Timer8->Enabled());
}

TEST_F(OpcJob, WaitsAtConnectForTheFirstValues) {
  Connect();
  EXPECT_EQ(rig.session.NumberOfParameters, 2);
  EXPECT_EQ(rig.session.CurrentStatus.english, "Ready to Acquire");
  EXPECT_EQ(rig.view.ButtonImage("connect"), image::ConnectOn);
  EXPECT_TRUE(rig.dialogs.shown.empty());
}

TEST_F(OpcJob, WaitsFiveSecondsAtMostAndShowsNoBox) {
  rig.opc.isSilent = true;
  const std::int64_t start = rig.clock.Ticks();
  rig.acquisition.mnuAcquireConnect_Click();
  EXPECT_GE(rig.clock.Ticks() - start, 5000);
  EXPECT_LT(rig.clock.Ticks() - start, 5100);
  EXPECT_EQ(rig.session.CurrentStatus.english, "Ready to Acquire");
  EXPECT_TRUE(rig.dialogs.shown.empty());
}

TEST_F(OpcJob, TakesItsChannelsFromTheListAsItIsAtConnect) {
  rig.sources.ConnectOPCItems();
  Store({"A", "B", "C"});
  rig.sources.FollowOpcList();
  EXPECT_EQ(rig.session.NumberOfParameters, 3);
  Connect();
  EXPECT_EQ(rig.session.TotalParameters, 3);
}

TEST_F(OpcJob, TakesASampleASecondOfWhatTheItemsHaveThen) {
  ConnectAndStart();
  rig.clock.Advance(2000);
  Report(12.5, 7);
  rig.clock.Advance(2000);
  EXPECT_EQ(rig.session.CurrentValue[1], 12.5F);
  EXPECT_EQ(rig.session.CurrentValue[2], 7.0F);
  const long long before = rig.session.Data.samples;
  rig.clock.Advance(10'000);
  EXPECT_EQ(rig.session.Data.samples - before, 10);
  EXPECT_EQ(rig.session.CurrentValue[1], 12.5F) << "the last value repeats";
}

TEST_F(OpcJob, TakesNoSampleBeforeEachItemHasReported) {
  rig.acquisition.mnuAcquireConnect_Click();
  rig.acquisition.mnuAcquireStart_Click();
  rig.clock.Advance(5000);
  EXPECT_EQ(rig.session.Data.samples, 0);
  EXPECT_EQ(rig.session.Data.rejected, 0);
  Report(1, 2);
  rig.clock.Advance(2100);
  EXPECT_GT(rig.session.Data.samples, 0);
}

TEST_F(OpcJob, RestsWhilePausedAndGoesOn) {
  ConnectAndStart();
  rig.clock.Advance(2000);
  rig.acquisition.mnuAcquireStart_Click();
  EXPECT_FALSE(rig.timers.Timer7->Enabled());
  const long long before = rig.session.Data.samples;
  rig.clock.Advance(5000);
  EXPECT_EQ(rig.session.Data.samples, before);
  rig.acquisition.mnuAcquireStart_Click();
  rig.clock.Advance(2000);
  EXPECT_GT(rig.session.Data.samples, before);
}

TEST_F(OpcJob, NamesWhatIsMissingAndALostServerInTheData) {
  Store({"A", "none"});
  ConnectAndStart();
  rig.clock.Advance(2000);
  EXPECT_EQ(rig.session.Data.sourceFault.English(), "no value from none");
  EXPECT_EQ(rig.view.ButtonImage("disconnect"), image::DisconnectOff);
  EXPECT_EQ(rig.view.toolTips["disconnect"], "no value from none");
  EXPECT_EQ(rig.session.CurrentValue[2], 0.0F);
  rig.opc.events.onLost();
  rig.clock.Advance(1000);
  EXPECT_EQ(rig.session.Data.sourceFault.English().find("no connection to Plant"), 0U);
  EXPECT_TRUE(rig.dialogs.shown.empty());
}

TEST_F(OpcJob, EndsEverySubscriptionAtStopAndBeginsAnewAtConnect) {
  ConnectAndStart();
  rig.clock.Advance(2000);
  rig.acquisition.mnuAcquireStop_Click();
  EXPECT_TRUE(rig.opc.groups.empty());
  EXPECT_FALSE(rig.timers.Timer7->Enabled());
  EXPECT_FALSE(rig.timers.Timer8->Enabled());
  EXPECT_EQ(rig.view.ButtonImage("connect"), image::ConnectOff);
  ConnectAndStart();
  rig.clock.Advance(2000);
  EXPECT_EQ(rig.opc.groups.size(), 2U);
  EXPECT_GT(rig.session.Data.samples, 0);
}

TEST_F(OpcJob, ConnectsNothingMoreAtTheEndOfTheProgram) {
  rig.sources.ConnectOPCItems();
  rig.sources.ShutDown();
  EXPECT_TRUE(rig.opc.groups.empty());
  const std::size_t before = rig.opc.places.size();
  rig.sources.FollowOpcList();
  rig.sources.FollowProtocol();
  rig.clock.Advance(5000);
  EXPECT_EQ(rig.opc.places.size(), before);
}

TEST_F(OpcJob, HasNoMoreChannelsThanTheComputedOnesLeave) {
  Store(std::vector<std::string>(64, "A"));
  rig.session.NumberOfFormulae = 4;
  rig.session.AdditionalParameters.resize(5);
  rig.sources.ConnectOPCItems();
  EXPECT_EQ(rig.session.NumberOfParameters, 60);
}

TEST_F(OpcJob, RecordsItsRows) {
  Connect();
  rig.ChooseFile();
  rig.acquisition.mnuAcquireStart_Click();
  Report(3, 4);
  rig.clock.Advance(5000);
  rig.acquisition.mnuAcquireStop_Click();
  EXPECT_GE(rig.session.Data.rows, 4);
}

}  // namespace
}  // namespace velk
