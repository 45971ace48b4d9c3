#pragma once

#include "graphs/curve_source.h"
#include "model/session.h"

namespace velk {

/// The curves of one graph number: those of CurrentParameters that the graph map names.
class ParameterCurves : public CurveSource {
 public:
  ParameterCurves(const Session& session, int graphNumber) : session_(session), graphNumber_(graphNumber) {}

  int Count() const override { return session_.GraphCurveCount[graphNumber_]; }
  const Parameter& Curve(int slot) const override { return session_.CurrentParameters[ParameterOf(slot)]; }
  /// The parameter's index; 0 where the slot is empty.
  int ParameterOf(int slot) const { return session_.GraphSlots[slot][graphNumber_]; }

 private:
  const Session& session_;
  int graphNumber_;
};

/// Copies curves that were edited in CurrentParameters back to where they were configured: Parameters, or
/// AdditionalParameters behind those. Those of a file that is played back go to PlaybackParameters; computed ones
/// behind them are the unit's, but for the graph that they stand on, until the unit has its place back.
void CarryBack(Session& session, const ParameterCurves& curves);

}  // namespace velk
