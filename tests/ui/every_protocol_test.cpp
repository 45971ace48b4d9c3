// Every protocol from Connect to Stop: the real program against the simulator of its instrument, and the rows of the
// log against the simulator's own journal. Each runs in a process of its own, since what one protocol sets up in the
// session may outlast the choice of another.

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>

#include "platform/numbers.h"
#include "ui/instruments.h"
#include "ui/log_against_lines.h"
#include "ui/program_rig.h"

namespace velk {
namespace {

using test::Agreement;
using test::Instrument;
using test::SentLine;

/// Seconds that a line may be on its way from the simulator to the program.
constexpr double kOnItsWay = 0.3;

class EveryProtocol : public testing::TestWithParam<Instrument> {
 protected:
  EveryProtocol() : instrument(GetParam()) {
    const std::string frames = std::to_string(instrument.frames);
    std::vector<std::string> arguments = instrument.arguments;
    const auto add = [&](std::initializer_list<std::string> more) { arguments.insert(arguments.end(), more); };
    const bool isUnit = instrument.simulator == std::string("unit");
    if (instrument.frames > 0) {
      add({"--baud", "0", "--interval", "0.1", "--channels", std::to_string(instrument.form.channels)});
      add({isUnit ? "--pause-after" : "--silence-after", frames, isUnit ? "--pause" : "--silence", "1000"});
    }
    const std::string address = rig.StartSimulator(instrument.simulator, arguments);
    rig.SetChannels(instrument.form.channels);
    rig.Set("General", "SamplingRate", NumberText(instrument.samplingSeconds / 86400));
    rig.Set("Protocol", "SerialData", instrument.serialData);
    rig.Set("Protocol", "PortDevice1", address);
    rig.Set("Protocol", "daqIPAddress", address);
    rig.Set("Protocol", "Delimiter", instrument.form.delimiter);
    rig.Set("Protocol", "Terminator", instrument.form.terminator);
  }

  std::function<bool()> IsOver() {
    if (instrument.stepByStep) return rig.AllIsLoggedStepByStep(instrument.frames);
    if (instrument.frames > 0) return rig.AllIsLogged(instrument.frames);
    return [this] { return rig.Rows() >= 20; };
  }

  /// The log against the lines from the first one that the job can have read. No journal tells that one to the last
  /// millisecond, and of a frame that was cut off ahead of Start the program may have the beginning or not.
  Agreement CompareLog(const std::vector<test::LogRow>& rows) {
    std::vector<test::SentFrame> journal = rig.Journal();
    Agreement best = CompareFrom(instrument.lines(journal, instrument.form), rows);
    while (!best.fault.empty() && !journal.empty() && journal.front().sentAt < rig.RunningAt()) {
      const bool isOld = journal.front().sentAt < rig.StartedAt() - kOnItsWay;
      journal.erase(journal.begin());
      if (isOld) continue;
      const Agreement agreement = CompareFrom(instrument.lines(journal, instrument.form), rows);
      if (agreement.fault.empty() || agreement.accepted > best.accepted) best = agreement;
    }
    return best;
  }

  Agreement CompareFrom(const std::vector<SentLine>& lines, const std::vector<test::LogRow>& rows) {
    std::size_t first = 0, last = 0;
    while (first < lines.size() && lines[first].sentAt < rig.StartedAt() - kOnItsWay) ++first;
    while (last < lines.size() && lines[last].sentAt < rig.RunningAt()) ++last;
    last += instrument.setUp + 1;
    const std::size_t unread = instrument.frames > 0 ? 0 : 1;
    Agreement best;
    for (std::size_t at = first; at <= last; ++at) {
      const Agreement agreement = test::Compare(lines, at, instrument.rule, instrument.form, rows, unread,
                                                instrument.samplingSeconds < test::kNeverDue);
      if (agreement.fault.empty()) return agreement;
      if (best.fault.empty() || agreement.accepted > best.accepted) best = agreement;
    }
    return best;
  }

  void ExpectTimesOfTheJob(const std::vector<test::LogRow>& rows, double begun, double ended) {
    constexpr double kSecond = 1.0 / 86400;
    double before = begun - kSecond;
    for (const test::LogRow& row : rows) {
      EXPECT_GE(row.dateTime, before - kSecond / 1000);
      before = row.dateTime;
    }
    EXPECT_LE(before, ended);
  }

  const Instrument& instrument;
  test::ProgramRig rig;
};

TEST_P(EveryProtocol, LogsEachAcceptedLineOnceAndToTheLastDigit) {
  if (instrument.asksAtStartUp) rig.dialogs.Expect("Continue with current serial port settings?", Answer::Yes);
  rig.StartProgram();
  ASSERT_EQ(rig.Status(), "Ready");
  rig.Connect();
  ASSERT_EQ(rig.Status(), "Ready to Acquire");
  rig.RunFor(500);  // lines from before the job are not of the job
  const double begun = rig.clock.Now();
  rig.StartJob();
  ASSERT_EQ(rig.Status(), "Acquiring Data");
  EXPECT_TRUE(rig.RunUntil(IsOver(), 60'000, [this] { rig.StopJob(); }));
  EXPECT_EQ(rig.Status(), "Ready");
  const double ended = rig.clock.Now();
  rig.Exit();

  EXPECT_FALSE(std::filesystem::exists(rig.LogPath() + "-wal"));
  const std::vector<test::LogRow> rows = rig.LogRows();
  const Agreement agreement = CompareLog(rows);
  EXPECT_EQ(agreement.fault, "");
  EXPECT_GE(agreement.accepted, instrument.leastAccepted);
  if (instrument.rule != test::OwnDateAndTime) ExpectTimesOfTheJob(rows, begun, ended);
  std::printf("| %s | %s | velk_sim_%s | %zu | %zu | %zu | %zu |\n", instrument.name, instrument.serialData,
              instrument.simulator, agreement.sent, agreement.accepted, rows.size(), agreement.held);
}

std::string NameOf(const testing::TestParamInfo<Instrument>& which) {
  return which.param.name;
}

INSTANTIATE_TEST_SUITE_P(, EveryProtocol, testing::ValuesIn(test::Instruments()), NameOf);

}  // namespace
}  // namespace velk
