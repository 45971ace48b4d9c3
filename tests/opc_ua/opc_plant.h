#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/loop/gate.h"
#include "platform/loop/system_clock.h"
#include "platform/opc/ua/ua_transport.h"
#include "support/child_program.h"

namespace velk::test {

/// The simulated plant and a transport to it, over the machine's own clock and loopback.
class OpcPlant : public testing::Test {
 protected:
  /// A port that differs from process to process, since test programs run side by side.
  static int Port() { return 20000 + static_cast<int>(getpid() % 20000); }
  static std::string Url() { return "opc.tcp://127.0.0.1:" + std::to_string(Port()); }
  static std::string Host() { return "127.0.0.1:" + std::to_string(Port()); }

  /// Empty where it didn't start.
  std::string StartServer(std::vector<std::string> options = {}) {
    options.insert(options.end(), {"--port", std::to_string(Port())});
    server = std::make_unique<ChildProgram>(VELK_SIM_OPC, options);
    return server->NextLine();
  }

  /// Lets events run until `isDone`, for as many milliseconds at most.
  bool Wait(const std::function<bool()>& isDone, int milliseconds = 8000) {
    const std::int64_t end = clock.Ticks() + milliseconds;
    while (!isDone() && clock.Ticks() < end) clock.WaitRound();
    return isDone();
  }

  /// What a call that ends with a status came to.
  OpcStatus Done(const std::function<void(OpcDone)>& begin) {
    std::optional<OpcStatus> status;
    begin([&](OpcStatus told) { status = told; });
    EXPECT_TRUE(Wait([&] { return status.has_value(); })) << "no answer";
    return status.value_or(0xFFFFFFFF);
  }

  std::unique_ptr<OpcSession> Connect(const OpcPlace& place, OpcStatus* what = nullptr) {
    std::unique_ptr<OpcSession> session;
    const OpcStatus status = Done([&](OpcDone done) {
      transport->Connect(place, [&session, done](OpcStatus told, std::unique_ptr<OpcSession> connected) {
        session = std::move(connected);
        done(told);
      });
    });
    if (what != nullptr) *what = status;
    return session;
  }

  std::unique_ptr<OpcSubscription> Subscribe(OpcSession& session, const OpcSubscriptionWish& wish = {}) {
    std::unique_ptr<OpcSubscription> group;
    EXPECT_EQ(Done([&](OpcDone done) { group = session.Subscribe(wish, done); }), kOpcGood);
    group->SetHandler(
        [this](std::span<const OpcChange> told) { changes.insert(changes.end(), told.begin(), told.end()); });
    return group;
  }

  OpcItemAnswer Add(OpcSubscription& group, const std::string& id, const OpcDataType& type = {}, int handle = 1) {
    OpcItemAnswer answer;
    answer.status = Done([&](OpcDone done) {
      group.Add({.id = id, .type = type, .clientHandle = handle}, [&answer, done](const OpcItemAnswer& told) {
        answer = told;
        done(told.status);
      });
    });
    return answer;
  }

  /// The next value of a handle; one without elements where none comes.
  OpcChange NextChange(int handle) {
    OpcChange found;
    EXPECT_TRUE(Wait([&] {
      for (const OpcChange& change : changes) {
        if (change.clientHandle == handle) found = change;
      }
      return found.clientHandle == handle;
    })) << "no value";
    changes.clear();
    return found;
  }

  std::vector<OpcNode> Browse(OpcSession& session, const std::string& folder) {
    std::vector<OpcNode> nodes;
    EXPECT_EQ(Done([&](OpcDone done) {
                session.Browse(folder, [&nodes, done](const OpcPage& page) {
                  nodes.insert(nodes.end(), page.nodes.begin(), page.nodes.end());
                  if (page.isLast) done(page.status);
                });
              }),
              kOpcGood);
    return nodes;
  }

  std::vector<OpcChange> changes;
  Gate gate;
  SystemClock clock{gate};
  std::unique_ptr<ChildProgram> server;
  std::unique_ptr<OpcTransport> transport = MakeUaTransport(clock);
};

}  // namespace velk::test
