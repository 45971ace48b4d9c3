#pragma once

#include <string>

#include "core/recorder.h"
#include "core/sample_values.h"
#include "instruments/own_unit.h"
#include "model/graph_window.h"
#include "model/main_view.h"
#include "model/session.h"
#include "platform/platform.h"
#include "platform/procedure.h"

namespace velk {

/// The road of one sample: from a received line to the charts, the log and the status bar.
class SampleRoad {
 public:
  SampleRoad(Session& session, const Platform& platform, MainView& view, Recorder& recorder);

  /// One sample from a line of the line driver. Lets events run; the guard SampleBusy swallows 28 lines that come in
  /// while a sample runs, and lets the 29th overrun it.
  void ProcessLine(const std::string& line);

  /// A sample is under way, perhaps with a box on top of it.
  bool IsRunning() const { return depth_ > 0; }

  /// At Connect: until a first line has been accepted there are no values to hold.
  void ForgetValues() { hasValues_ = false; }

 private:
  class Running;
  class RowAheadOfBoxes;

  bool PassesGuard();
  void RunSample(const Statements& run, const std::string& line);
  /// Decodes the line and takes its values; a rejected line leaves the values as they are.
  void TakeLine(const Statements& run, const std::string& line);
  /// Brings a line into the common form, or rejects it by the terminator at its head.
  void Decode(std::string& line);
  /// False for a sample that is not significant: it is neither drawn nor logged.
  bool DrawAndLog(const Statements& run);
  bool IsSignificant(const Statements& run);
  void Draw(const Statements& run);
  void DrawParameter(int parameter);
  /// The value of a computed channel, unless a decoder fills it.
  void Compute(const Statements& run, int parameter);
  void ReadPageStart();
  void MovePlotTime();

  Session& session_;
  Platform platform_;
  MainView& view_;
  Recorder& recorder_;
  OwnUnitDecoder ownUnit_;
  SampleValues values_;
  Report report_;
  int depth_ = 0;
  bool hasValues_ = false;
};

}  // namespace velk
