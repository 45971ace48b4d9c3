#pragma once

#include "ui/instruments.h"
#include "ui/log_against_lines.h"
#include "ui/program_rig.h"

namespace velk::test {

/// One job with one instrument, from the settings to the log.
class InstrumentJob {
 public:
  /// Starts the simulator and writes the settings; nothing of the program yet.
  explicit InstrumentJob(const Instrument& instrument);

  /// Start-up, Connect, a file, and Start half a second later: lines from ahead of the job are not of the job.
  void Begin();
  /// Lets the program run until this holds, presses Stop and leaves the program.
  void RunAndEnd(const std::function<bool()>& isOver);
  /// The log against what the simulator sent; prints its row of the table.
  void ExpectLogOfTheAcceptedLines();

  ProgramRig rig;

 private:
  Agreement CompareLog(const std::vector<LogRow>& rows) const;
  Agreement CompareFrom(const std::vector<SentLine>& lines, const std::vector<LogRow>& rows) const;
  void ExpectTimesOfTheJob(const std::vector<LogRow>& rows) const;

  Instrument instrument_;
  double begun_ = 0, ended_ = 0;
};

}  // namespace velk::test
