// Links that are lost or change in the middle of a job: an adapter that is pulled out and comes back under another
// name, a frame that is cut off by that, lines that end otherwise for a while.

#include <gtest/gtest.h>

#include <QTimer>
#include <algorithm>
#include <cstdio>

#include "base/dates.h"
#include "base/numbers.h"
#include "support/adapter_tree.h"
#include "support/pty.h"
#include "ui/instrument_job.h"

namespace velk {
namespace {

using test::Instrument;
using test::InstrumentJob;

/// A unit of two channels that sends ten lines a second, no two of them alike, into a pseudo-terminal.
class UnitOnAdapter {
 public:
  explicit UnitOnAdapter(const Clock& clock) {
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this, &clock] {
      ++lines_;
      char values[32];
      std::snprintf(values, sizeof values, " %09.3f %09.3f\r\n", FirstOf(lines_), SecondOf(lines_));
      terminal->Send(FormatDate(clock.Now(), "hh:mm:ss") + values);
    });
    timer_.start(100);
  }

  static double FirstOf(int line) { return line; }
  static double SecondOf(int line) { return 500.0 - line; }
  int Lines() const { return lines_; }

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
  rig.Set("General", "SamplingRate", NumberText(test::kNeverDue / 86400));  // no row of held values
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

  // Each row has the values of one line that was sent, in the order of the lines.
  const auto rows = rig.LogRows();
  ASSERT_GE(rows.size(), static_cast<std::size_t>(before) + 2);
  int line = 0;
  for (const test::LogRow& row : rows) {
    const auto holds = [&](int number) {
      return row.values == std::vector<double>{test::Logged(UnitOnAdapter::FirstOf(number), 1),
                                               test::Logged(UnitOnAdapter::SecondOf(number), 2)};
    };
    do ++line;
    while (line <= unit.Lines() && !holds(line));
    EXPECT_LE(line, unit.Lines()) << testing::PrintToString(row.values);
  }
}

/// The instrument of that name, whose cable is pulled out within a frame and plugged in again as another device.
struct PulledOut {
  explicit PulledOut(const char* name, const char* run) {
    const auto& all = test::Instruments();
    instrument =
        *std::find_if(all.begin(), all.end(), [&](const Instrument& each) { return each.name == std::string(name); });
    instrument.name = run;
    instrument.samplingSeconds = test::kNeverDue;
    instrument.frames = 40;
    instrument.leastAccepted = 15;  // some have other faults too
    machine.Know("ttyUSB0", {"A1", "1-2"});
    machine.Know("ttyUSB1", {"A1", "1-2"});
    instrument.arguments.insert(instrument.arguments.end(),
                                {"--link", machine.Path("ttyUSB0"), "--return-as", machine.Path("ttyUSB1"),
                                 "--hangup-within", "--hangup-after", "18", "--return-after", "0.5"});
  }
  /// The job; `told` is what the operator is told of the loss.
  void Run(const char* told) {
    InstrumentJob job(instrument);
    job.rig.devices = machine.Devices();
    job.rig.Set("Protocol", "PortDevice1", machine.Path("ttyUSB0"));
    job.Begin();
    job.rig.dialogs.Expect(told, Answer::Ok);
    job.RunAndEnd(job.rig.AllIsLogged(instrument.frames));
    job.ExpectLogOfTheAcceptedLines();
  }

  const test::AdapterTree machine;
  Instrument instrument;
};

TEST(AnAdapter, OfAnOwnUnitThatStopsWithinAFrameLosesThatFrameOnly) {
  PulledOut("Kesta4", "Kesta4AsAnotherDevice").Run("the serial device is gone");
}

TEST(AnAdapter, OfAnInstrumentOnThePlainPortThatStopsWithinAFrameLosesThatFrameOnly) {
  PulledOut("DataTakerA", "DataTakerAsAnotherDevice").Run("there is no such serial device");
}

TEST(AnInstrument, ThatEndsItsLinesOtherwiseForAWhileIsReadOnBehindThat) {
  const auto& all = test::Instruments();
  Instrument instrument = *std::find_if(
      all.begin(), all.end(), [](const Instrument& each) { return each.name == std::string("AnySerialData"); });
  instrument.name = "AnySerialDataOtherEnd";
  instrument.arguments = {"--delimiter",       ",",  "--other-end",        "lf",
                          "--other-end-after", "15", "--other-end-frames", "8"};
  instrument.leastAccepted = 25;
  InstrumentJob job(instrument);
  job.Begin();
  job.RunAndEnd(job.rig.AllIsLogged(instrument.frames));
  job.ExpectLogOfTheAcceptedLines();
}

}  // namespace
}  // namespace velk
