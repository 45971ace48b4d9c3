// An adapter that is pulled out in the middle of a job and comes back under another name.

#include <gtest/gtest.h>

#include <QTimer>
#include <cstdio>

#include "base/dates.h"
#include "support/adapter_tree.h"
#include "support/pty.h"
#include "ui/program_rig.h"

namespace velk {
namespace {

/// A unit of two channels that sends ten lines a second, no two of them alike, into a pseudo-terminal.
class UnitOnAdapter {
 public:
  explicit UnitOnAdapter(const Clock& clock) {
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this, &clock] {
      ++lines_;
      char values[32];
      std::snprintf(values, sizeof values, " %09.3f %09.3f\r\n", lines_ * 1.0, 500.0 - lines_);
      terminal->Send(FormatDate(clock.Now(), "hh:mm:ss") + values);
    });
    timer_.start(100);
  }

  std::unique_ptr<test::Pty> terminal = std::make_unique<test::Pty>();

 private:
  QTimer timer_;
  int lines_ = 0;
};

TEST(AnAdapter, ThatComesBackUnderAnotherNameIsFoundAndRowsGoOn) {
  test::ProgramRig rig;
  const test::AdapterTree machine;
  UnitOnAdapter unit(rig.clock);
  machine.Plug("ttyUSB0", {"A1", "1-2"}, unit.terminal->Device());
  rig.devices = machine.Devices();
  rig.SetChannels(2);
  rig.Set("Protocol", "SerialData", "KESTA version 4");
  rig.StartProgram();
  rig.Connect();
  ASSERT_EQ(rig.Status(), "Ready to Acquire");
  rig.StartJob();
  ASSERT_TRUE(rig.RunUntil([&] { return rig.Rows() >= 2; }, 20'000));

  rig.dialogs.Expect("ttyUSB0: the serial device is gone", Answer::Ok);
  unit.terminal = std::make_unique<test::Pty>();
  machine.Unplug("ttyUSB0");
  machine.Plug("ttyUSB0", {"B7", "1-3"});  // another one takes its name
  machine.Plug("ttyUSB1", {"A1", "1-2"}, unit.terminal->Device());
  const long long before = rig.Rows();
  EXPECT_TRUE(rig.RunUntil([&] { return rig.Rows() >= before + 2; }, 20'000));
  rig.StopJob();
  rig.Exit();
}

}  // namespace
}  // namespace velk
