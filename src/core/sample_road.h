#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "core/sample_errors.h"
#include "core/sample_log.h"
#include "core/sample_plotter.h"
#include "core/sample_values.h"
#include "instruments/reading/line_fault.h"
#include "instruments/table/decoders.h"
#include "model/main_view.h"
#include "model/session.h"
#include "platform/dialogs/procedure.h"
#include "platform/platform.h"

namespace velk {

/// What a sample's source has brought in.
enum class Values {
  Taken,             ///< CurrentValue is new
  TakenWithOwnTime,  ///< the same, and SampleTime is the line's own date and time
  Held,              ///< the line was rejected: the last values stand
  Left               ///< the sample ends here: stopped, or out of time
};

/// The road of one sample, whatever its source: past the guard, taken in, thinned, plotted, recorded, the page turned.
class SampleRoad {
 public:
  SampleRoad(Session& session, const Platform& platform, MainView& view, SampleLog& log);

  /// One sample from a line of the line driver. Lets events run; the guard SampleBusy swallows 28 lines that come in
  /// while a sample runs, and lets the 29th overrun it.
  void ProcessLine(const std::string& line);

  /// One sample from any source. `take` runs behind the guard, with SampleTime set to Now; where it has waited, it
  /// sets SampleTime again; `report` names the procedure in the box of an error.
  void Sample(const Report& report, const std::function<Values(const Statements& run)>& take);

  /// Takes the values of a line in the common form; a line that is rejected is counted.
  Values TakeValues(const Statements& run, const std::string& line);

  /// Counts a line that was rejected and keeps the reason; where its number of values is what is wrong, and `line` is
  /// given, the two numbers.
  void CountRejected(LineFault fault, std::string_view line = {});

  /// Names a procedure in the box of a sample's error. Made once, not for each sample: its texts cost memory.
  Report ReportOf(const char* procedure);

  /// The decoders of this session, with what they keep from line to line.
  Decoders& LineDecoders() { return decoders_; }

  /// Called in each sample that has brought values, ahead of its row.
  std::function<void()> onValues;

  /// A sample is under way, perhaps with a box on top of it.
  bool IsRunning() const { return depth_ > 0; }

 private:
  class RowAheadOfBoxes;

  void NoteLine(Values values);
  LineFault TakeLine(const Statements& run, const std::string& line);
  bool ShowsLengthOnly(LineFault fault, bool wrongCount) const;
  bool PassesGuard();
  void Leave();
  void RunSample(const Statements& run, const std::function<Values(const Statements& run)>& take);
  void PlotAndRecord(const Statements& run, Values values);
  /// False for a sample that is not significant: it is neither drawn nor logged.
  bool DrawAndLog(const Statements& run, Values values, std::optional<double> rowTime);
  bool IsSignificant(const Statements& run);

  Session& session_;
  Platform platform_;
  MainView& view_;
  SampleLog& log_;
  SampleErrors errors_;
  const Report lineReport_;
  SamplePlotter plotter_;
  Decoders decoders_;
  SampleValues values_;
  int depth_ = 0;
};

}  // namespace velk
