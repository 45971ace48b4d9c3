#pragma once

#include "model/main_view.h"
#include "model/session.h"
#include "platform/dialogs/procedure.h"

namespace velk {

/// How a sample is drawn.
struct Plotting {
  double samplingRate = 0;  ///< days a row, by which the blocks of a page are cut
  bool watchesAlarms = false;
  bool movesScrollBar = false;  ///< the history behind the page grows with each block
  bool isComputed = false;      ///< Compute has run for this sample
  bool catchesUp = false;       ///< behind a gap, frames of all blocks up to the sample: see page_catch_up.h
  bool beginsAnew = false;      ///< the first sample of its kind: its segments have no length
};

/// Computes and draws one sample: CurrentValue at SampleTime, over the time base of the session's charts.
class SamplePlotter {
 public:
  SamplePlotter(Session& session, MainView& view) : session_(session), view_(view) {}

  /// The additional parameters of a sample, hidden ones too, ahead of anything that is drawn. `run` marks each formula:
  /// a fault in one stops the sample there.
  void Compute(const Statements& run);
  /// The additional parameters unless that has run, the frame of a new block, the labels and one segment a curve,
  /// parameter by parameter.
  void Draw(const Statements& run, const Plotting& plotting);
  /// GraphPageTime follows the first graph's page.
  void ReadPageStart();
  /// Behind a drawn sample: the next block once this one is full, and the place where the next segment begins.
  void MoveTimeBase(double samplingRate);

 private:
  void ComputeOne(const Statements& run, int parameter);
  void DrawParameter(int parameter, const Plotting& plotting);

  Session& session_;
  MainView& view_;
};

}  // namespace velk
