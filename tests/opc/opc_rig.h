#pragma once

#include <gtest/gtest.h>

#include <string>

#include "opc/opc_server_class.h"
#include "support/fake_clock.h"
#include "support/fake_opc.h"
#include "support/scripted_dialogs.h"

namespace velk::test {

/// OPC objects over servers in memory.
class OpcRig : public testing::Test {
 protected:
  void Connect() { ASSERT_TRUE(server.ConnectOPCServer("Plant", "10.0.0.5", 1, "Server 1")); }

  OPCGroupClass& AddGroup(const std::string& name = "Pumps") {
    std::string key;
    EXPECT_TRUE(server.AddOPCGroup(name, 250, 0, true, key));
    return *server.FindGroup(key);
  }

  /// The next call fails by this number, and its box comes.
  void ExpectBox(const std::string& function, OpcStatus status = 0x80020000) {
    opc.failures = {status};
    dialogs.Expect("The OPC function '" + function + "' has returned an error of ", Answer::Ok);
  }

  Gate gate;
  FakeClock clock{gate};
  ScriptedDialogs dialogs{gate};
  FakeOpc opc;
  OpcCalls calls{opc, clock, dialogs};
  OPCServerClass server{calls};
};

}  // namespace velk::test
