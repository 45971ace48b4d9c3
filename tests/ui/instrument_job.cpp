#include "ui/instrument_job.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "base/numbers.h"
#include "instruments/table/protocols.h"

namespace velk::test {

namespace {

/// Seconds that a line may be on its way from the simulator to the program.
constexpr double kOnItsWay = 0.3;
constexpr int kLongestJobMs = 60'000;
constexpr int kAheadOfStartMs = 500;

std::vector<std::string> ArgumentsOf(const Instrument& instrument) {
  std::vector<std::string> arguments = instrument.arguments;
  if (instrument.frames == 0) return arguments;
  const bool isUnit = instrument.simulator == std::string("unit");
  const auto add = [&](const char* option, const std::string& value) {
    arguments.insert(arguments.end(), {option, value});
  };
  add("--baud", "0");
  add("--interval", "0.1");
  add("--channels", std::to_string(instrument.form.channels));
  add(isUnit ? "--pause-after" : "--silence-after", std::to_string(instrument.frames));
  add(isUnit ? "--pause" : "--silence", "1000");
  return arguments;
}

}  // namespace

InstrumentJob::InstrumentJob(const Instrument& instrument) : instrument_(instrument) {
  const std::string address = rig.StartSimulator(instrument.simulator, ArgumentsOf(instrument));
  rig.SetChannels(instrument.form.channels);
  rig.Set("General", "SamplingRate", NumberText(instrument.samplingSeconds / 86400));
  rig.Set("Protocol", "SerialData", instrument.serialData);
  rig.Set("Protocol", "PortDevice1", address);
  rig.Set("Protocol", "daqIPAddress", address);
  rig.Set("Protocol", "Delimiter", instrument.form.delimiter);
  rig.Set("Protocol", "Terminator", instrument.form.terminator);
}

void InstrumentJob::Begin() {
  if (instrument_.asksAtStartUp) rig.dialogs.Expect("Continue with current serial port settings?", Answer::Yes);
  // A pseudo-terminal has none; only this unit shakes hands by them.
  if (instrument_.serialData == protocol::Kesta3) rig.dialogs.Expect("modem lines", Answer::Ok);
  rig.StartProgram();
  ASSERT_EQ(rig.Status(), "Ready");
  rig.Connect();
  ASSERT_EQ(rig.Status(), "Ready to Acquire");
  rig.RunFor(kAheadOfStartMs);
  begun_ = rig.clock.Now();
  rig.StartJob();
  ASSERT_EQ(rig.Status(), "Acquiring Data");
}

void InstrumentJob::RunAndEnd(const std::function<bool()>& isOver) {
  EXPECT_TRUE(rig.RunUntil(isOver, kLongestJobMs, [this] { rig.StopJob(); }));
  EXPECT_EQ(rig.Status(), "Ready");
  ended_ = rig.clock.Now();
  rig.Exit();
}

void InstrumentJob::ExpectLogOfTheAcceptedLines() {
  EXPECT_FALSE(std::filesystem::exists(rig.LogPath() + "-wal"));
  const std::vector<LogRow> rows = rig.LogRows();
  const Agreement agreement = CompareLog(rows);
  EXPECT_EQ(agreement.fault, "");
  EXPECT_GE(agreement.accepted, instrument_.leastAccepted);
  if (instrument_.rule != OwnDateAndTime) ExpectTimesOfTheJob(rows);
  std::printf("| %s | %s | velk_sim_%s | %zu | %zu | %zu | %zu |\n", instrument_.name, instrument_.serialData,
              instrument_.simulator, agreement.sent, agreement.accepted, rows.size(), agreement.held);
}

/// From the first line on that the job can have read. No journal tells that one to the last millisecond, and of a frame
/// that was cut off ahead of Start the program may have the beginning or not.
Agreement InstrumentJob::CompareLog(const std::vector<LogRow>& rows) const {
  std::vector<SentFrame> journal = rig.Journal();
  Agreement best = CompareFrom(instrument_.lines(journal, instrument_.form), rows);
  while (!best.fault.empty() && !journal.empty() && journal.front().sentAt < rig.RunningAt()) {
    const bool isOld = journal.front().sentAt < rig.StartedAt() - kOnItsWay;
    journal.erase(journal.begin());
    if (isOld) continue;
    const Agreement agreement = CompareFrom(instrument_.lines(journal, instrument_.form), rows);
    if (agreement.fault.empty() || agreement.accepted > best.accepted) best = agreement;
  }
  return best;
}

Agreement InstrumentJob::CompareFrom(const std::vector<SentLine>& lines, const std::vector<LogRow>& rows) const {
  std::size_t first = 0, last = 0;
  while (first < lines.size() && lines[first].sentAt < rig.StartedAt() - kOnItsWay) ++first;
  while (last < lines.size() && lines[last].sentAt < rig.RunningAt()) ++last;
  last += instrument_.setUp + 1;
  const std::size_t unread = instrument_.frames > 0 ? 0 : 1;
  Agreement best;
  for (std::size_t at = first; at <= last; ++at) {
    const Agreement agreement =
        Compare(lines, at, instrument_.rule, instrument_.form, rows, unread, instrument_.samplingSeconds < kNeverDue);
    if (agreement.fault.empty()) return agreement;
    if (best.fault.empty() || agreement.accepted > best.accepted) best = agreement;
  }
  return best;
}

void InstrumentJob::ExpectTimesOfTheJob(const std::vector<LogRow>& rows) const {
  constexpr double kSecond = 1.0 / 86400;
  double before = begun_ - kSecond;  // rows carry whole seconds
  for (const LogRow& row : rows) {
    EXPECT_GE(row.dateTime, before - kSecond / 1000);
    before = row.dateTime;
  }
  EXPECT_LE(before, ended_);
}

}  // namespace velk::test
