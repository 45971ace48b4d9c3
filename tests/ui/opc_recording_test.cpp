// The whole program over a plant's server of OPC UA, which is a process of its own.

#include <gtest/gtest.h>
#include <unistd.h>

#include <cmath>
#include <cstdlib>

#include "model/main_view.h"
#include "opc/opc_configuration.h"
#include "ui/program_rig.h"

namespace velk {
namespace {

constexpr int kItems = 20;

class OpcRecording : public testing::Test {
 protected:
  static std::string Port() { return std::to_string(21000 + static_cast<int>(getpid() % 20000)); }
  static std::string Url() { return "opc.tcp://127.0.0.1:" + Port(); }

  void StartPlant() { ASSERT_EQ(rig.StartSimulator("opc", {"--port", Port(), "--many", "64"}), Url()); }

  /// Count, Depth, and some of the many variables: each of them tells which moment of the plant it is of.
  void StartProgram() {
    std::vector<std::string> ids = {"ns=1;s=Pump.Count", "ns=1;s=Pump.Depth"};
    for (int i = 0; i < kItems - 2; ++i) ids.push_back("ns=1;s=Many.V" + std::to_string(i));
    SaveOPCConfiguration(rig.settings, {{Url(), "", {{"Plant", 0, 100, ids}}}});
    rig.Set("Protocol", "SerialData", "OPC Server");
    rig.Set("General", "SensitivityCriterion", "0");
    rig.StartProgram();
  }
  /// The moment of the plant that a channel's value is of, from 0 on.
  static double MomentOf(double value, int channel) {
    if (channel == 0) return value;
    return channel == 1 ? 2 * value : value - 10000.0 * (channel - 2);
  }

  test::ProgramRig rig;
};

TEST_F(OpcRecording, HasTheValuesThatThePlantHadAtEachRow) {
  StartPlant();
  StartProgram();
  ASSERT_EQ(rig.application->State().NumberOfParameters, kItems);
  rig.Connect();
  rig.StartJob();
  ASSERT_TRUE(rig.RunUntil([this] { return rig.Rows() >= 12; }, 30'000));
  rig.StopJob();
  const std::vector<test::SentFrame> journal = rig.Journal();
  const std::vector<test::LogRow> rows = rig.LogRows();
  ASSERT_GE(rows.size(), 12U);
  for (const test::LogRow& row : rows) {
    ASSERT_EQ(row.values.size(), static_cast<std::size_t>(kItems));
    for (int channel = 0; channel < kItems; ++channel) {
      const double moment = MomentOf(row.values[static_cast<std::size_t>(channel)], channel);
      ASSERT_EQ(moment, std::floor(moment)) << channel;
      ASSERT_GE(moment, 1) << channel;
      ASSERT_LE(moment, static_cast<double>(journal.size())) << channel;
      // A value waits for the line, the line for the sample: a second each, and the moments between.
      EXPECT_NEAR(moment, MomentOf(row.values[0], 0), 3) << channel;
    }
  }
  for (std::size_t i = 1; i < rows.size(); ++i) EXPECT_GE(rows[i].values[0], rows[i - 1].values[0]);
  EXPECT_GT(rows.back().values[0], rows.front().values[0] + 50);
}

/// Three times in each run of the tests; scripts/opc_kill_test has 200.
TEST_F(OpcRecording, GoesOnByItselfBehindAServerThatIsKilled) {
  const char* const told = std::getenv("VELK_OPC_KILLS");
  const int kills = told == nullptr ? 3 : std::atoi(told);
  StartPlant();
  StartProgram();
  rig.Connect();
  rig.StartJob();
  const auto count = [this] { return rig.application->State().CurrentValue[1]; };
  for (int kill = 1; kill <= kills; ++kill) {
    ASSERT_TRUE(
        rig.RunUntil([&] { return rig.application->State().Data.sourceFault.IsEmpty() && count() > 5; }, 40'000))
        << "kill " << kill;
    const long long before = rig.Rows();
    rig.simulator.reset();
    ASSERT_TRUE(rig.RunUntil(
        [this] { return rig.application->State().Data.sourceFault.English().find("no connection to ") == 0; }, 10'000))
        << "kill " << kill;
    ASSERT_TRUE(rig.RunUntil([&] { return rig.Rows() > before; }, 5000)) << "values repeat, kill " << kill;
    const float last = count();
    StartPlant();
    ASSERT_TRUE(rig.RunUntil([&] { return count() != last; }, 40'000)) << "kill " << kill;
  }
  rig.StopJob();
  EXPECT_TRUE(rig.dialogs.shown.empty());
}

TEST_F(OpcRecording, StopsWithinTwoSecondsWhereTheServerIsSilent) {
  StartPlant();
  StartProgram();
  rig.Connect();
  rig.StartJob();
  ASSERT_TRUE(rig.RunUntil([this] { return rig.Rows() >= 2; }, 20'000));
  rig.simulator->Signal(SIGSTOP);
  const double start = test::ProgramRig::Seconds();
  rig.StopJob();
  EXPECT_LT(test::ProgramRig::Seconds() - start, 2);
  rig.simulator->Signal(SIGCONT);
}

TEST_F(OpcRecording, ExitsWithinTwoSecondsWhereTheServerIsSilent) {
  StartPlant();
  StartProgram();
  ASSERT_TRUE(
      rig.RunUntil([this] { return rig.application->Window().ButtonImage("connect") == image::ConnectOn; }, 10'000));
  rig.simulator->Signal(SIGSTOP);
  const double start = test::ProgramRig::Seconds();
  rig.Exit();
  EXPECT_LT(test::ProgramRig::Seconds() - start, 2);
  rig.simulator->Signal(SIGCONT);
}

}  // namespace
}  // namespace velk
