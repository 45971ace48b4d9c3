#pragma once

#include <optional>
#include <string>

#include "base/language.h"
#include "graphs/parameter_curves.h"
#include "log/log_reader.h"
#include "model/session.h"

namespace velk {

/// A curve's value in the log.
struct ReadPoint {
  double time = 0;  ///< of its row
  float value = 0;
};

/// The value of a curve in the first row from the second of `time` up to one row length behind `time`; nothing where no
/// row stands there or the row has none for the curve. Raises what reading the log raises.
std::optional<ReadPoint> ReadValueAt(const Session& session, const ParameterCurves& curves, int slot, LogReader& log,
                                     double time);

/// "Pressure at 09:31:05 : 12.50"
std::string ReadValueCaption(const Parameter& curve, const ReadPoint& point, const Language& language);

}  // namespace velk
