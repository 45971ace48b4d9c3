#include "platform/opc/ua/ua_transport.h"

#include <algorithm>

#include "base/dates.h"
#include "opc_ua/opc_plant.h"

namespace velk {
namespace {

class UaTransportTest : public test::OpcPlant {
 protected:
  void SetUp() override { ASSERT_EQ(StartServer(), Url()); }
};

OpcValue ArrayOf(std::vector<OpcElement> elements) {
  return OpcValue(std::move(elements));
}

TEST_F(UaTransportTest, ListsTheServersOfAHost) {
  std::vector<OpcServerEntry> found;
  EXPECT_EQ(Done([&](OpcDone done) {
              transport->FindServers(Host(),
                                     [&found, done](OpcStatus status, const std::vector<OpcServerEntry>& servers) {
                                       found = servers;
                                       done(status);
                                     });
            }),
            kOpcGood);
  EXPECT_EQ(found, (std::vector<OpcServerEntry>{{"VELK Plant", Url()}}));
}

TEST_F(UaTransportTest, ConnectsByTheNameOfTheApplicationOrByItsEndpoint) {
  EXPECT_NE(Connect({.server = "VELK Plant", .host = Host()}), nullptr);
  EXPECT_NE(Connect({.server = Url(), .host = ""}), nullptr);
  EXPECT_NE(Connect({.server = "opc.tcp://elsewhere:" + std::to_string(Port()), .host = "localhost"}), nullptr);
}

TEST_F(UaTransportTest, TellsAServerThatIsNotThere) {
  OpcStatus status = kOpcGood;
  EXPECT_EQ(Connect({.server = "Another", .host = Host()}, &status), nullptr);
  EXPECT_EQ(status, kOpcNotFound);
  EXPECT_EQ(Connect({.server = "opc.tcp://127.0.0.1:9", .host = ""}, &status), nullptr);
  EXPECT_FALSE(IsGood(status));
  EXPECT_EQ(Connect({.server = "opc.tcp://", .host = ""}, &status), nullptr);
  EXPECT_EQ(status, kOpcBadId);
}

TEST_F(UaTransportTest, ReadsWhatTheServerSaysOfItself) {
  const auto session = Connect({.server = Url(), .host = ""});
  ASSERT_NE(session, nullptr);
  OpcServerStatus read;
  EXPECT_EQ(Done([&](OpcDone done) {
              session->ReadStatus([&read, done](OpcStatus status, const OpcServerStatus& told) {
                read = told;
                done(status);
              });
            }),
            kOpcGood);
  EXPECT_EQ(read.state, OpcServerState::Running);
  EXPECT_EQ(read.vendor, "VELK simulators");
  EXPECT_EQ(read.version, "2.14.3");
  EXPECT_EQ(read.build, "77");
  EXPECT_NEAR(read.currentTime, clock.Now(), 10.0 / 86400);
  EXPECT_LE(read.startTime, read.currentTime);
  EXPECT_EQ(read.lastUpdate, 0);
}

TEST_F(UaTransportTest, BrowsesFoldersWithTypesAndAccess) {
  const auto session = Connect({.server = Url(), .host = ""});
  ASSERT_NE(session, nullptr);
  const std::vector<OpcNode> root = Browse(*session, "");
  const auto plant = std::find_if(root.begin(), root.end(), [](const OpcNode& node) { return node.name == "Plant"; });
  ASSERT_NE(plant, root.end());
  EXPECT_TRUE(plant->isBranch);
  EXPECT_EQ(plant->id, "ns=1;s=Plant");
  const std::vector<OpcNode> pump = Browse(*session, "ns=1;s=Pump");
  ASSERT_EQ(pump.size(), 8U);
  EXPECT_EQ(pump[0], (OpcNode{.name = "Rate",
                              .id = "ns=1;s=Pump.Rate",
                              .isVariable = true,
                              .type = {OpcType::Float},
                              .isReadable = true,
                              .isWritable = true}));
  EXPECT_EQ(pump[5].type.type, OpcType::Byte);
  EXPECT_FALSE(pump[5].isWritable);
  EXPECT_FALSE(pump[6].isReadable);
  EXPECT_EQ(Browse(*session, "ns=1;s=Arrays").at(0).type, (OpcDataType{OpcType::Double, true}));
}

TEST_F(UaTransportTest, BringsValuesOfEachType) {
  const auto session = Connect({.server = Url(), .host = ""});
  ASSERT_NE(session, nullptr);
  const auto group = Subscribe(*session);
  const struct {
    const char* id;
    OpcValue value;
    OpcType type;
  } cases[] = {
      {"ns=1;s=Pump.Rate", OpcValue(40.0F), OpcType::Float},
      {"ns=1;s=Pump.Name", OpcValue(std::string("Насос 1")), OpcType::String},
      {"ns=1;s=Pump.Running", OpcValue(true), OpcType::Boolean},
      {"ns=1;s=Pump.Mode", OpcValue(std::uint8_t{3}), OpcType::Byte},
      {"ns=1;s=Types.SByte", OpcValue(std::int16_t{-5}), OpcType::Short},
      {"ns=1;s=Types.Int16", OpcValue(std::int16_t{-300}), OpcType::Short},
      {"ns=1;s=Types.UInt16", OpcValue(std::int32_t{60000}), OpcType::Long},
      {"ns=1;s=Types.Int32", OpcValue(std::int32_t{-70000}), OpcType::Long},
      {"ns=1;s=Types.Int64", OpcValue(-5000000000.0), OpcType::Double},
      {"ns=1;s=Types.UInt64", OpcValue(5000000000.0), OpcType::Double},
      {"ns=1;s=Arrays.Levels", ArrayOf({1.5, 2.5, -3.0}), OpcType::Double},
      {"ns=1;s=Arrays.Names", ArrayOf({std::string("north"), std::string("south")}), OpcType::String},
  };
  int handle = 0;
  for (const auto& row : cases) {
    const OpcItemAnswer answer = Add(*group, row.id, {}, ++handle);
    EXPECT_EQ(answer.status, kOpcGood) << row.id;
    EXPECT_EQ(answer.canonicalType, (OpcDataType{row.type, row.value.isArray})) << row.id;
    const OpcChange change = NextChange(handle);
    EXPECT_EQ(change.value, row.value) << row.id;
    EXPECT_EQ(change.quality, 192) << row.id;
  }
}

TEST_F(UaTransportTest, TakesPathsForIdentifiers) {
  const auto session = Connect({.server = Url(), .host = ""});
  ASSERT_NE(session, nullptr);
  const auto group = Subscribe(*session);
  EXPECT_EQ(Add(*group, "Objects/Plant/Pump/Rate").status, kOpcGood);
  EXPECT_EQ(NextChange(1).value, OpcValue(40.0F));
  EXPECT_EQ(Add(*group, "Objects/1:Plant/1:Pump/1:Mode", {}, 2).status, kOpcGood);
  EXPECT_EQ(Add(*group, "Objects/Plant/Nowhere", {}, 3).status, kOpcUnknownId);
  EXPECT_EQ(Add(*group, "Objects/2:Plant", {}, 3).status, kOpcUnknownId);
  EXPECT_EQ(Add(*group, "Objects//Plant", {}, 3).status, kOpcBadId);
}

TEST_F(UaTransportTest, BringsValuesIntoTheTypeThatWasAskedFor) {
  const auto session = Connect({.server = Url(), .host = ""});
  ASSERT_NE(session, nullptr);
  const auto group = Subscribe(*session);
  EXPECT_EQ(Add(*group, "ns=1;s=Pump.Rate", {OpcType::String}).status, kOpcGood);
  EXPECT_EQ(NextChange(1).value, OpcValue(std::string("40")));
  // -300 is none of a byte's values.
  EXPECT_EQ(Add(*group, "ns=1;s=Types.Int16", {OpcType::Byte}, 2).status, kOpcGood);
  const OpcChange beyond = NextChange(2);
  EXPECT_TRUE(beyond.value.elements.empty());
  EXPECT_EQ(beyond.quality, 0);
  EXPECT_EQ(Add(*group, "ns=1;s=Types.DateTime", {OpcType::Double}, 3).status, kOpcTypeMismatch);
  EXPECT_EQ(Add(*group, "ns=1;s=Pump.Rate", {OpcType::Float, true}, 3).status, kOpcTypeMismatch);
  EXPECT_EQ(Add(*group, "ns=1;s=Quality.Structure", {}, 3).status, kOpcTypeMismatch);
}

TEST_F(UaTransportTest, ValidatesWithoutAddingAnything) {
  const auto session = Connect({.server = Url(), .host = ""});
  ASSERT_NE(session, nullptr);
  const auto verdict = [&](const std::string& id, OpcDataType type) {
    return Done([&](OpcDone done) {
      session->Validate({.id = id, .type = type}, [done](const OpcItemAnswer& answer) { done(answer.status); });
    });
  };
  EXPECT_EQ(verdict("ns=1;s=Pump.Rate", {OpcType::Long}), kOpcGood);
  EXPECT_EQ(verdict("ns=1;s=Pump.Nothing", {}), kOpcUnknownId);
  EXPECT_FALSE(IsGood(verdict("ns=1;s=Pump", {})));
  EXPECT_EQ(verdict("ns=1;s=Types.DateTime", {OpcType::Long}), kOpcTypeMismatch);
}

TEST_F(UaTransportTest, TellsBadAndUncertainValuesByTheirQuality) {
  const auto session = Connect({.server = Url(), .host = ""});
  ASSERT_NE(session, nullptr);
  const auto group = Subscribe(*session);
  Add(*group, "ns=1;s=Quality.Bad", {}, 1);
  EXPECT_EQ(NextChange(1).quality, 16);
  Add(*group, "ns=1;s=Quality.Uncertain", {}, 2);
  const OpcChange uncertain = NextChange(2);
  EXPECT_EQ(uncertain.quality, 68);
  EXPECT_EQ(uncertain.value, OpcValue(7.0));
}

TEST_F(UaTransportTest, WritesInTheTypeOfTheServer) {
  const auto session = Connect({.server = Url(), .host = ""});
  ASSERT_NE(session, nullptr);
  const auto group = Subscribe(*session);
  const OpcItemAnswer rate = Add(*group, "ns=1;s=Pump.Rate", {}, 1);
  EXPECT_EQ(NextChange(1).value, OpcValue(40.0F));
  const auto write = [&](std::int32_t item, const OpcValue& value) {
    return Done([&](OpcDone done) { group->Write(item, value, done); });
  };
  EXPECT_EQ(write(rate.serverHandle, OpcValue(std::string("62.5"))), kOpcGood);
  EXPECT_EQ(NextChange(1).value, OpcValue(62.5F));
  EXPECT_EQ(write(rate.serverHandle, OpcValue(std::string("word"))), kOpcTypeMismatch);
  EXPECT_EQ(write(9999, OpcValue(1.0)), kOpcUnknownItem);
  const OpcItemAnswer word = Add(*group, "ns=1;s=Types.UInt16", {}, 2);
  EXPECT_EQ(write(word.serverHandle, OpcValue(65535.0)), kOpcGood);
  EXPECT_EQ(write(word.serverHandle, OpcValue(65536.0)), kOpcTypeMismatch);
  const OpcItemAnswer mode = Add(*group, "ns=1;s=Pump.Mode", {}, 3);
  EXPECT_FALSE(IsGood(write(mode.serverHandle, OpcValue(1.0))));
}

TEST_F(UaTransportTest, BringsNothingOfItemsAndGroupsThatRest) {
  const auto session = Connect({.server = Url(), .host = ""});
  ASSERT_NE(session, nullptr);
  const auto group = Subscribe(*session);
  const OpcItemAnswer depth = Add(*group, "ns=1;s=Pump.Depth");
  NextChange(1);
  EXPECT_EQ(Done([&](OpcDone done) { group->SetItemActive(depth.serverHandle, false, done); }), kOpcGood);
  changes.clear();
  // What the server had on its way may still come; Depth moves ten times a second.
  Wait([] { return false; }, 300);
  changes.clear();
  EXPECT_FALSE(Wait([&] { return !changes.empty(); }, 500));
  EXPECT_EQ(Done([&](OpcDone done) { group->SetItemActive(depth.serverHandle, true, done); }), kOpcGood);
  NextChange(1);
  EXPECT_EQ(Done([&](OpcDone done) { group->SetActive(false, done); }), kOpcGood);
  Wait([] { return false; }, 300);
  changes.clear();
  EXPECT_FALSE(Wait([&] { return !changes.empty(); }, 500));
  EXPECT_EQ(Done([&](OpcDone done) { group->SetActive(true, done); }), kOpcGood);
  NextChange(1);
}

TEST_F(UaTransportTest, RemovesAnItemOnce) {
  const auto session = Connect({.server = Url(), .host = ""});
  ASSERT_NE(session, nullptr);
  const auto group = Subscribe(*session);
  const OpcItemAnswer depth = Add(*group, "ns=1;s=Pump.Depth");
  NextChange(1);
  const auto remove = [&] { return Done([&](OpcDone done) { group->Remove(depth.serverHandle, done); }); };
  EXPECT_EQ(remove(), kOpcGood);
  EXPECT_EQ(remove(), kOpcUnknownItem);
  changes.clear();
  EXPECT_FALSE(Wait([&] { return !changes.empty(); }, 500));
}

TEST_F(UaTransportTest, ChangesRateAndDeadbandWhileItRuns) {
  const auto session = Connect({.server = Url(), .host = ""});
  ASSERT_NE(session, nullptr);
  const auto group = Subscribe(*session);
  const OpcItemAnswer rate = Add(*group, "ns=1;s=Pump.Rate");
  EXPECT_TRUE(rate.hasRange);
  EXPECT_FALSE(Add(*group, "ns=1;s=Pump.Depth", {}, 2).hasRange);
  NextChange(1);
  EXPECT_EQ(Done([&](OpcDone done) { group->SetUpdateRate(50, done); }), kOpcGood);
  EXPECT_EQ(Done([&](OpcDone done) { group->SetUpdateRate(-1, done); }), kOpcOutOfRange);
  EXPECT_EQ(Done([&](OpcDone done) { group->SetDeadBand(101, done); }), kOpcOutOfRange);
  // 10 percent of 0 to 200 are 20: 50 is no change from 40, and 61 is one.
  EXPECT_EQ(Done([&](OpcDone done) { group->SetDeadBand(10, done); }), kOpcGood);
  EXPECT_EQ(NextChange(1).value, OpcValue(40.0F));
  EXPECT_EQ(Done([&](OpcDone done) { group->Write(rate.serverHandle, OpcValue(50.0), done); }), kOpcGood);
  Wait([] { return false; }, 400);
  EXPECT_TRUE(
      std::none_of(changes.begin(), changes.end(), [](const OpcChange& each) { return each.clientHandle == 1; }));
  EXPECT_EQ(Done([&](OpcDone done) { group->Write(rate.serverHandle, OpcValue(61.0), done); }), kOpcGood);
  EXPECT_EQ(NextChange(1).value, OpcValue(61.0F));
}

TEST_F(UaTransportTest, SharesWhatIsWishedAlikeUnderOneName) {
  const auto one = Connect({.server = Url(), .host = ""});
  const auto other = Connect({.server = Url(), .host = ""});
  ASSERT_NE(one, nullptr);
  ASSERT_NE(other, nullptr);
  const OpcSubscriptionWish wish{.name = "Pumps", .mayBeShared = true};
  auto first = Subscribe(*one, wish);
  const auto second = Subscribe(*other, wish);
  EXPECT_EQ(Add(*first, "ns=1;s=Pump.Depth", {}, 1).status, kOpcGood);
  EXPECT_EQ(Add(*second, "ns=1;s=Pump.Count", {}, 2).status, kOpcGood);
  first.reset();
  changes.clear();
  NextChange(2);
  EXPECT_TRUE(
      std::none_of(changes.begin(), changes.end(), [](const OpcChange& each) { return each.clientHandle == 1; }));
}

TEST_F(UaTransportTest, LivesAgainBehindAServerThatDied) {
  const auto session = Connect({.server = Url(), .host = ""});
  ASSERT_NE(session, nullptr);
  int shutDowns = 0;
  int losses = 0;
  int returns = 0;
  session->SetEvents({[&] { ++shutDowns; }, [&] { ++losses; }, [&] { ++returns; }});
  const auto group = Subscribe(*session);
  ASSERT_EQ(Add(*group, "ns=1;s=Pump.Depth").status, kOpcGood);
  NextChange(1);
  server.reset();
  ASSERT_TRUE(Wait([&] { return losses == 1; }));
  EXPECT_EQ(shutDowns, 1);
  EXPECT_FALSE(session->IsLive());
  ASSERT_EQ(StartServer(), Url());
  ASSERT_TRUE(Wait([&] { return returns == 1; }));
  changes.clear();
  NextChange(1);
}

TEST_F(UaTransportTest, IsNotHeldUpByASilentServer) {
  auto session = Connect({.server = Url(), .host = ""});
  ASSERT_NE(session, nullptr);
  auto group = Subscribe(*session);
  server->Signal(SIGSTOP);
  const std::int64_t start = clock.Ticks();
  EXPECT_EQ(Connect({.server = "VELK Plant", .host = Host()}), nullptr);
  EXPECT_LT(clock.Ticks() - start, 5500);
  const std::int64_t end = clock.Ticks();
  group.reset();
  session.reset();
  transport.reset();
  EXPECT_LT(clock.Ticks() - end, 500);
  server->Signal(SIGCONT);
}

}  // namespace
}  // namespace velk
