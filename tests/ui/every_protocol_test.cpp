// Every protocol from Connect to Stop: the real program against the simulator of its instrument, and the rows of the
// log against the simulator's own journal. Each runs in a process of its own, since what one protocol sets up in the
// session may outlast the choice of another.

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "ui/instrument_job.h"

namespace velk {
namespace {

using test::Instrument;

class EveryProtocol : public testing::TestWithParam<Instrument> {};

TEST_P(EveryProtocol, LogsEachAcceptedLineOnceAndToTheLastDigit) {
  const Instrument& instrument = GetParam();
  test::InstrumentJob job(instrument);
  job.Begin();
  job.RunAndEnd(instrument.stepByStep   ? job.rig.AllIsLoggedStepByStep(instrument.frames)
                : instrument.frames > 0 ? job.rig.AllIsLogged(instrument.frames)
                                        : [&] { return job.rig.Rows() >= 20; });
  job.ExpectLogOfTheAcceptedLines();
}

std::string NameOf(const testing::TestParamInfo<Instrument>& which) {
  return which.param.name;
}

INSTANTIATE_TEST_SUITE_P(, EveryProtocol, testing::ValuesIn(test::Instruments()), NameOf);

const Instrument& InstrumentNamed(const std::string& name) {
  const auto& all = test::Instruments();
  return *std::find_if(all.begin(), all.end(), [&](const Instrument& each) { return each.name == name; });
}

TEST(ABufferingInstrument, ThatSendsSingleLinesTurnsPages) {
  Instrument instrument = InstrumentNamed("IntermittentAndByRequest");
  instrument.name = "IntermittentSingleLines";
  instrument.arguments = {"--clock", "10:00:00", "--burst", "1", "--apart", "30"};
  instrument.frames = 40;  // twenty minutes by the unit's time, on pages of some four
  instrument.samplingSeconds = 1;
  test::InstrumentJob job(instrument);
  job.Begin();
  const auto isOver = job.rig.AllIsLogged(instrument.frames);
  int pages = 0;
  job.RunAndEnd([&] {
    pages = job.rig.application->State().PageCount;
    return isOver();
  });
  EXPECT_GE(pages, 3);
  job.ExpectLogOfTheAcceptedLines();
}

// --- A pause ---

/// The rows that the lines sent between two moments would make.
std::set<std::vector<double>> RowsOfLinesSent(const test::ProgramRig& rig, const Instrument& instrument, double from,
                                              double to) {
  std::set<std::vector<double>> rows;
  for (const test::SentLine& line : instrument.lines(rig.Journal(), instrument.form)) {
    const auto sample = test::CountAndTime(line, nullptr, instrument.form);
    if (!sample || line.sentAt <= from || line.sentAt >= to) continue;
    std::vector<double> row;
    for (const double field : sample->fields) row.push_back(test::Logged(field, row.size() + 1));
    rows.insert(row);
  }
  return rows;
}

void ExpectNothingOfThePauseInTheLog(const char* name) {
  const Instrument& instrument = InstrumentNamed(name);
  constexpr double kOnItsWay = 0.3;
  test::InstrumentJob job(instrument);
  job.Begin();
  EXPECT_TRUE(job.rig.RunUntil([&] { return job.rig.Rows() >= 4; }, 20'000, [&] { job.rig.Press("Pause"); }));
  EXPECT_EQ(job.rig.Status(), "Acquiring Paused");
  const double paused = test::ProgramRig::Seconds();
  job.rig.RunFor(1800);
  const double resumed = test::ProgramRig::Seconds();
  job.rig.Press("Pause");
  EXPECT_EQ(job.rig.Status(), "Acquiring Data");
  job.RunAndEnd(job.rig.AllIsLogged(instrument.frames));

  const auto missed = RowsOfLinesSent(job.rig, instrument, paused + kOnItsWay, resumed - kOnItsWay);
  const auto wanted = RowsOfLinesSent(job.rig, instrument, resumed + kOnItsWay, resumed + 60);
  EXPECT_GE(missed.size(), 3U);
  EXPECT_GE(wanted.size(), 3U);
  std::set<std::vector<double>> logged;
  for (const test::LogRow& row : job.rig.LogRows()) logged.insert(row.values);
  for (const auto& row : missed) EXPECT_FALSE(logged.contains(row)) << testing::PrintToString(row);
  for (const auto& row : wanted) EXPECT_TRUE(logged.contains(row)) << testing::PrintToString(row);
}

TEST(APause, KeepsTheLinesOfAPolledInstrumentOutOfTheLog) {
  ExpectNothingOfThePauseInTheLog("DataTakerA");
}

TEST(APause, KeepsTheLinesOfAnOwnUnitOutOfTheLog) {
  ExpectNothingOfThePauseInTheLog("Kesta3");
}

}  // namespace
}  // namespace velk
