// Servers that are slow, small, changing, sharing, or dying in the middle of a call.

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "opc_ua/opc_plant.h"
#include "opc_ua/relay.h"

namespace velk {
namespace {

// Requests by the numbers of their encodings.
constexpr std::uint16_t kTranslatePaths = 554;
constexpr std::uint16_t kPublish = 826;

using Fault = test::Relay::Fault;

class TroubledServer : public test::OpcPlant {
 protected:
  std::unique_ptr<OpcSession> ConnectPlant() { return Connect({.server = Url(), .host = ""}); }
  std::unique_ptr<OpcSession> ConnectThrough(const test::Relay& relay, OpcStatus* what = nullptr) {
    return Connect({.server = relay.Url(), .host = ""}, what);
  }
  OpcStatus ReadStatus(OpcSession& session) {
    return Done(
        [&](OpcDone done) { session.ReadStatus([done](OpcStatus status, const OpcServerStatus&) { done(status); }); });
  }
  OpcStatus BrowsePump(OpcSession& session) {
    return Done([&](OpcDone done) {
      session.Browse("ns=1;s=Pump", [done](const OpcPage& page) {
        if (page.isLast) done(page.status);
      });
    });
  }
  /// Lets values come until one of a handle passes.
  bool WaitFor(int handle, const std::function<bool(const OpcChange&)>& passes) {
    bool isThere = false;
    return Wait([&] {
      for (const OpcChange& each : std::exchange(changes, {}))
        isThere = isThere || (each.clientHandle == handle && passes(each));
      return isThere;
    });
  }
  bool WaitForValue(int handle, double value) {
    return WaitFor(handle, [&](const OpcChange& each) { return each.value == OpcValue(value); });
  }
  bool WaitForNone(int handle) {
    return WaitFor(handle, [](const OpcChange& each) { return each.value.elements.empty() && each.quality == 0; });
  }
};

TEST_F(TroubledServer, IsWaitedForWhereItIsSlow) {
  ASSERT_EQ(StartServer({"--slow", "150"}), Url());
  const auto session = ConnectPlant();
  ASSERT_NE(session, nullptr);
  EXPECT_EQ(ReadStatus(*session), kOpcGood);
  EXPECT_EQ(Browse(*session, "ns=1;s=Pump").size(), 8U);
  const auto group = Subscribe(*session);
  EXPECT_EQ(Add(*group, "Objects/Plant/Pump/Rate").status, kOpcGood);
  EXPECT_EQ(NextChange(1).value, OpcValue(40.0F));
}

TEST_F(TroubledServer, IsBrowsedWholeWhereItTakesFewQuestionsAtOnce) {
  ASSERT_EQ(StartServer({"--limit", "100", "--many", "1300"}), Url());
  const auto session = ConnectPlant();
  ASSERT_NE(session, nullptr);
  const std::vector<OpcNode> many = Browse(*session, "ns=1;s=Many");
  ASSERT_EQ(many.size(), 1300U);
  std::set<std::string> names;
  for (const OpcNode& node : many) {
    names.insert(node.name);
    ASSERT_EQ(node.type.type, OpcType::Double) << node.name;
    ASSERT_FALSE(node.isBranch) << node.name;
  }
  EXPECT_EQ(names.size(), 1300U);
}

TEST_F(TroubledServer, AnnouncesItsEndOnceAheadOfIt) {
  ASSERT_EQ(StartServer({"--notice", "4000"}), Url());
  const auto session = ConnectPlant();
  ASSERT_NE(session, nullptr);
  int shutDowns = 0;
  int losses = 0;
  session->SetEvents({[&] { ++shutDowns; }, [&] { ++losses; }, {}});
  server->Signal(SIGTERM);
  ASSERT_TRUE(Wait([&] { return shutDowns == 1; }, 3000));
  EXPECT_EQ(losses, 0);
  EXPECT_TRUE(session->IsLive());
  ASSERT_TRUE(Wait([&] { return losses == 1; }));
  EXPECT_EQ(shutDowns, 1);
}

TEST_F(TroubledServer, MayHaveAnotherNodeWhereAPathLeads) {
  ASSERT_EQ(StartServer(), Url());
  const auto session = ConnectPlant();
  ASSERT_NE(session, nullptr);
  const auto group = Subscribe(*session);
  ASSERT_EQ(Add(*group, "Objects/Plant/Changing/Level").status, kOpcGood);
  ASSERT_TRUE(WaitForValue(1, 100));
  server->Signal(SIGUSR1);
  EXPECT_TRUE(WaitForNone(1)) << "it is gone";
  server->Signal(SIGUSR1);
  EXPECT_TRUE(WaitForValue(1, 200)) << "another node has its name";
}

TEST_F(TroubledServer, IsAskedAgainForAnItemThatItHasNotWhenItComesBack) {
  ASSERT_EQ(StartServer(), Url());
  const auto session = ConnectPlant();
  ASSERT_NE(session, nullptr);
  const auto group = Subscribe(*session);
  ASSERT_EQ(Add(*group, "ns=1;s=Changing.Level.1").status, kOpcGood);
  ASSERT_TRUE(WaitForValue(1, 100));
  server.reset();
  ASSERT_EQ(StartServer({"--empty"}), Url());
  ASSERT_TRUE(WaitForNone(1));
  EXPECT_TRUE(session->IsLive());
  server->Signal(SIGUSR1);
  EXPECT_TRUE(WaitForValue(1, 100));
}

TEST_F(TroubledServer, IsAskedAgainForASubscriptionThatItRefusesWhenItComesBack) {
  ASSERT_EQ(StartServer(), Url());
  const auto session = ConnectPlant();
  ASSERT_NE(session, nullptr);
  std::map<int, std::unique_ptr<OpcSubscription>> groups;
  for (const int handle : {1, 2}) {
    groups[handle] = Subscribe(*session, {.name = std::to_string(handle)});
    ASSERT_EQ(Add(*groups[handle], "ns=1;s=Pump.Depth", {}, handle).status, kOpcGood);
    NextChange(handle);
  }
  server.reset();
  changes.clear();
  ASSERT_EQ(StartServer({"--subscriptions", "1"}), Url());
  const auto hasValue = [](const OpcChange& each) { return !each.value.elements.empty(); };
  ASSERT_TRUE(Wait([&] { return std::any_of(changes.begin(), changes.end(), hasValue); }));
  const int taken = std::find_if(changes.begin(), changes.end(), hasValue)->clientHandle;
  const int refused = 3 - taken;
  EXPECT_TRUE(std::any_of(changes.begin(), changes.end(), [&](const OpcChange& each) {
    return each.clientHandle == refused && !hasValue(each);
  })) << "its value is no live one";
  groups.erase(taken);
  EXPECT_TRUE(WaitFor(refused, hasValue));
}

TEST_F(TroubledServer, MayRefuseADeadbandAndKeepsTheItemWithoutOne) {
  ASSERT_EQ(StartServer(), Url());
  const auto session = ConnectPlant();
  ASSERT_NE(session, nullptr);
  const auto group = Subscribe(*session, {.deadBand = 10});
  const OpcItemAnswer odd = Add(*group, "ns=1;s=Quality.Odd");
  EXPECT_EQ(odd.status, kOpcGood);
  EXPECT_FALSE(odd.hasRange) << "a text has no share of a range";
  EXPECT_EQ(NextChange(1).value, OpcValue(std::string("word")));
  EXPECT_TRUE(Add(*group, "ns=1;s=Pump.Rate", {}, 2).hasRange);
}

TEST_F(TroubledServer, LooksAsOftenAsANewRateSays) {
  ASSERT_EQ(StartServer(), Url());
  const auto session = ConnectPlant();
  ASSERT_NE(session, nullptr);
  const auto group = Subscribe(*session, {.updateRate = 2000});
  ASSERT_EQ(Add(*group, "ns=1;s=Pump.Depth").status, kOpcGood);
  NextChange(1);
  EXPECT_EQ(Done([&](OpcDone done) { group->SetUpdateRate(50, done); }), kOpcGood);
  changes.clear();
  // Depth moves ten times a second.
  EXPECT_TRUE(Wait([&] { return changes.size() >= 5; }, 1800));
}

TEST_F(TroubledServer, MayBringTextsAndArraysThatAreTooLong) {
  ASSERT_EQ(StartServer(), Url());
  const auto session = ConnectPlant();
  ASSERT_NE(session, nullptr);
  const auto group = Subscribe(*session);
  ASSERT_EQ(Add(*group, "ns=1;s=Large.Text", {}, 1).status, kOpcGood);
  const OpcChange text = NextChange(1);
  ASSERT_EQ(text.value.elements.size(), 1U);
  const auto& letters = std::get<std::string>(text.value.elements[0]);
  // "x" and letters of two bytes: 65,536 is in the middle of one.
  EXPECT_EQ(letters.size(), 65'535U);
  EXPECT_EQ(letters.substr(letters.size() - 2), "ж");
  ASSERT_EQ(Add(*group, "ns=1;s=Large.Array", {}, 2).status, kOpcGood);
  const OpcChange array = NextChange(2);
  EXPECT_TRUE(array.value.elements.empty());
  EXPECT_EQ(array.quality, 0);
  ASSERT_EQ(Add(*group, "ns=1;s=Large.Long", {}, 3).status, kOpcGood);
  EXPECT_EQ(NextChange(3).value.elements.size(), 20'000U);
}

TEST_F(TroubledServer, HasVariablesThatAreFoldersToo) {
  ASSERT_EQ(StartServer(), Url());
  const auto session = ConnectPlant();
  ASSERT_NE(session, nullptr);
  for (const OpcNode& node : Browse(*session, "ns=1;s=Pump")) {
    EXPECT_TRUE(node.isVariable) << node.name;
    // The range of Rate is a property of it, and no part.
    EXPECT_EQ(node.isBranch, node.name == "Motor") << node.name;
  }
  const std::vector<OpcNode> parts = Browse(*session, "ns=1;s=Pump.Motor");
  ASSERT_EQ(parts.size(), 2U);
  EXPECT_EQ(parts[0].id, "ns=1;s=Pump.Motor.Current");
}

TEST_F(TroubledServer, GetsOneConnectionFromAllThatAskTheSame) {
  ASSERT_EQ(StartServer(), Url());
  const test::Relay relay(Port());
  int answers = 0;
  for (int i = 0; i < 10; ++i)
    transport->FindServers(relay.Host(), [&](OpcStatus status, const std::vector<OpcServerEntry>& servers) {
      EXPECT_EQ(status, kOpcGood);
      EXPECT_EQ(servers.size(), 1U);
      ++answers;
    });
  ASSERT_TRUE(Wait([&] { return answers == 10; }));
  EXPECT_EQ(relay.Connections(), 1);
  const auto first = ConnectThrough(relay);
  const int before = relay.Connections();
  const auto second = ConnectThrough(relay);
  ASSERT_NE(second, nullptr);
  EXPECT_EQ(relay.Connections(), before);
}

TEST_F(TroubledServer, IsLookedForAtTheAddressThatItsHostHasThen) {
  std::vector<std::string> addresses = {"127.0.0.1"};
  std::vector<std::string> asked;
  transport = MakeUaTransport(clock, nullptr, {}, [&](const std::string& host, const auto& found) {
    asked.push_back(host);
    clock.Post([found, addresses] { found(addresses); });
  });
  ASSERT_EQ(StartServer(), Url());
  const auto session = Connect({.server = "VELK Plant", .host = "plant.rig:" + std::to_string(Port())});
  ASSERT_NE(session, nullptr);
  EXPECT_EQ(asked, (std::vector<std::string>{"plant.rig", "plant.rig"})) << "for the list, and for the session";
  const auto group = Subscribe(*session);
  ASSERT_EQ(Add(*group, "ns=1;s=Pump.Depth").status, kOpcGood);
  NextChange(1);
  server.reset();
  addresses = {"127.0.0.2"};
  ASSERT_EQ(StartServer({"--host", "127.0.0.2"}), "opc.tcp://127.0.0.2:" + std::to_string(Port()));
  EXPECT_TRUE(WaitFor(1, [](const OpcChange& each) { return !each.value.elements.empty(); }));
  addresses.clear();
  OpcStatus status = kOpcGood;
  EXPECT_EQ(Connect({.server = "VELK Plant", .host = "nobody.rig"}, &status), nullptr);
  EXPECT_EQ(status, kOpcNoServer);
}

// --- Servers that die in the middle of a call ---

/// All that a session can be asked for; each is answered, whatever comes of it.
class DyingServer : public TroubledServer {
 protected:
  void AskForEverything(test::Relay& relay) {
    const auto session = ConnectThrough(relay);
    if (session == nullptr) return;
    ReadStatus(*session);
    BrowsePump(*session);
    std::unique_ptr<OpcSubscription> group;
    if (!IsGood(Done([&](OpcDone done) { group = session->Subscribe({}, done); }))) return;
    const OpcItemAnswer rate = Add(*group, "ns=1;s=Pump.Rate");
    Done([&](OpcDone done) {
      session->Validate({.id = "Objects/Plant/Pump/Rate"},
                        [done](const OpcItemAnswer& answer) { done(answer.status); });
    });
    const std::int32_t item = rate.serverHandle;
    Done([&](OpcDone done) { group->Write(item, OpcValue(50.0), done); });
    Done([&](OpcDone done) { group->SetUpdateRate(50, done); });
    Done([&](OpcDone done) { group->SetDeadBand(5, done); });
    Done([&](OpcDone done) { group->SetItemActive(item, false, done); });
    Done([&](OpcDone done) { group->SetActive(false, done); });
    Done([&](OpcDone done) { group->Remove(item, done); });
  }

  /// At each of its messages in turn.
  void BreakEachMessage(Fault fault) {
    ASSERT_EQ(StartServer(), Url());
    int broken = 0;
    for (;; ++broken) {
      test::Relay relay(Port());
      transport = MakeUaTransport(clock);
      relay.FailAt(fault, broken + 1);
      const std::int64_t start = clock.Ticks();
      AskForEverything(relay);
      ASSERT_LT(clock.Ticks() - start, 5000) << "message " << broken + 1;
      if (!relay.HasFailed()) break;
      ASSERT_LT(broken, 100);
    }
    EXPECT_GT(broken, 15);
  }
};

TEST_F(DyingServer, LeavesNoCallWithoutAnAnswer) {
  BreakEachMessage(Fault::Cut);
}

TEST_F(DyingServer, LeavesNoCallWithoutAnAnswerWhereHalfOfOneCame) {
  BreakEachMessage(Fault::Halve);
}

TEST_F(DyingServer, EndsAnAdditionThatIsUnderWayWhenItFallsSilent) {
  ASSERT_EQ(StartServer(), Url());
  test::Relay relay(Port());
  const auto session = ConnectThrough(relay);
  ASSERT_NE(session, nullptr);
  int returns = 0;
  session->SetEvents({{}, {}, [&] { ++returns; }});
  const auto group = Subscribe(*session);
  relay.FailAtKind(Fault::Swallow, kTranslatePaths);
  EXPECT_FALSE(IsGood(Add(*group, "ns=1;s=Pump.Rate").status));
  EXPECT_TRUE(relay.HasFailed());
  ASSERT_TRUE(Wait([&] { return returns == 1; }));
  // The subscription is made behind the session.
  EXPECT_TRUE(Wait([&] { return IsGood(Add(*group, "ns=1;s=Pump.Rate").status); }));
}

TEST_F(DyingServer, IsConnectedAnewWhereItAnswersAndBringsNoValues) {
  ASSERT_EQ(StartServer(), Url());
  test::Relay relay(Port());
  const auto session = ConnectThrough(relay);
  ASSERT_NE(session, nullptr);
  int losses = 0;
  session->SetEvents({{}, [&] { ++losses; }, {}});
  const auto group = Subscribe(*session);
  ASSERT_EQ(Add(*group, "ns=1;s=Pump.Depth").status, kOpcGood);
  NextChange(1);
  relay.Lose(kPublish);
  ASSERT_TRUE(Wait([&] { return losses == 1; }, 15'000));
  relay.Lose(0);
  changes.clear();
  EXPECT_TRUE(WaitFor(1, [](const OpcChange& each) { return !each.value.elements.empty(); }));
}

}  // namespace
}  // namespace velk
