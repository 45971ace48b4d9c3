// Every protocol from Connect to Stop: the real program against the simulator of its instrument, and the rows of the
// log against the simulator's own journal. Each runs in a process of its own, since what one protocol sets up in the
// session may outlast the choice of another.

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace velk
