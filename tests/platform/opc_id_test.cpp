#include "platform/opc/opc_id.h"

#include <gtest/gtest.h>

namespace velk {
namespace {

TEST(OpcIdTest, TellsIdentifiersOfNodesFromPaths) {
  for (const char* id : {"s=Pump", "i=85", "ns=2;s=Pump.Pressure", "ns=0;i=1", "ns=65535;s=", "g=x", "ns=3;b=QUE="})
    EXPECT_TRUE(IsOpcNodeId(id)) << id;
  for (const char* id :
       {"", "s", "Objects/Pump", "ns=2", "ns=;s=x", "ns=65536;s=x", "ns=-1;s=x", "ns=2;", "x=1", "S=Pump"})
    EXPECT_FALSE(IsOpcNodeId(id)) << id;
}

TEST(OpcIdTest, TakesAPathApart) {
  EXPECT_EQ(OpcPathOf("Objects/Pump/Rate"), (std::vector<OpcStep>{{{}, "Objects"}, {{}, "Pump"}, {{}, "Rate"}}));
  EXPECT_EQ(OpcPathOf("/Objects/2:Pump"), (std::vector<OpcStep>{{{}, "Objects"}, {2, "Pump"}}));
  EXPECT_EQ(OpcPathOf("A&/B/C&&D/7&:E"), (std::vector<OpcStep>{{{}, "A/B"}, {{}, "C&D"}, {{}, "7:E"}}));
  EXPECT_EQ(OpcPathOf("Flow: in"), (std::vector<OpcStep>{{{}, "Flow: in"}}));
  EXPECT_EQ(OpcPathOf("3:4:x"), (std::vector<OpcStep>{{3, "4:x"}}));
  EXPECT_EQ(OpcPathOf("70000:x"), (std::vector<OpcStep>{{{}, "70000:x"}}));
}

TEST(OpcIdTest, RefusesPathsWithoutSteps) {
  for (const char* path : {"", "/", "A//B", "A/", "//A", "A&", "2:", "A/2:"})
    EXPECT_EQ(OpcPathOf(path), std::nullopt) << path;
  std::string deep = "x";
  for (int i = 1; i < 64; ++i) deep += "/x";
  EXPECT_TRUE(OpcPathOf(deep));
  EXPECT_EQ(OpcPathOf(deep + "/x"), std::nullopt);
}

TEST(OpcIdTest, MakesTheEndpointOfAHost) {
  EXPECT_EQ(OpcHostUrl(""), "opc.tcp://localhost:4840");
  EXPECT_EQ(OpcHostUrl("10.0.0.5"), "opc.tcp://10.0.0.5:4840");
  EXPECT_EQ(OpcHostUrl("rig-7:4841"), "opc.tcp://rig-7:4841");
  EXPECT_EQ(OpcHostUrl("[::1]:4841"), "opc.tcp://[::1]:4841");
  EXPECT_EQ(OpcHostUrl("[fe80::2]"), "opc.tcp://[fe80::2]:4840");
  for (const char* host : {":4840", "rig:", "rig:0", "rig:65536", "rig:x", "a b", "::1", "rig/x", "[::1", "x]"})
    EXPECT_EQ(OpcHostUrl(host), std::nullopt) << host;
}

TEST(OpcIdTest, TellsTheNameOfAHost) {
  EXPECT_EQ(OpcHostName(""), "localhost");
  EXPECT_EQ(OpcHostName("rig:4841"), "rig");
  EXPECT_EQ(OpcHostName("[::1]:4841"), "[::1]");
  EXPECT_EQ(OpcHostName("rig:x"), std::nullopt);
}

TEST(OpcIdTest, PutsTheNamedHostInPlaceOfTheEndpointsOwn) {
  EXPECT_EQ(WithOpcHost("opc.tcp://plc:4841/UA/Server", "10.0.0.5"), "opc.tcp://10.0.0.5:4841/UA/Server");
  EXPECT_EQ(WithOpcHost("opc.tcp://plc:4841", "10.0.0.5:5000"), "opc.tcp://10.0.0.5:5000");
  EXPECT_EQ(WithOpcHost("opc.tcp://plc", ""), "opc.tcp://plc:4840");
  EXPECT_EQ(WithOpcHost("opc.tcp://plc:4841/x", ""), "opc.tcp://plc:4841/x");
  for (const char* url : {"", "Plant", "http://plc", "opc.tcp://", "opc.tcp:///x", "opc.tcp://plc:x"})
    EXPECT_EQ(WithOpcHost(url, "10.0.0.5"), std::nullopt) << url;
  EXPECT_EQ(WithOpcHost("opc.tcp://plc", "a b"), std::nullopt);
}

}  // namespace
}  // namespace velk
