#include "graphs/read_value.h"

#include <cmath>

#include "base/dates.h"
#include "base/numbers.h"
#include "graphs/row_values.h"
#include "graphs/texts.h"

namespace velk {

namespace {

/// A channel's name is whatever the operator calls it; only a language that goes by the English text may know it.
constexpr int kNoMessage = 0;

/// Rows stand at whole seconds.
double CutToSecond(double time) {
  const DateParts parts = Split(time);
  return JoinDateTime(DatePart(time), TimeOfDay(parts.hour, parts.minute, parts.second));
}

}  // namespace

std::optional<ReadPoint> ReadValueAt(const Session& session, const ParameterCurves& curves, int slot, LogReader& log,
                                     double time) {
  RowValues values(session, curves, log.Channels().size());
  log.Choose(values.Channels());
  const auto rows = log.Page({CutToSecond(time), time + session.Times.GraphTimeStep, RowFilter::Compare::Sum}, 1);
  if (rows.empty()) return std::nullopt;
  values.Take(rows[0]);
  const float value = values.Of(slot);
  if (std::isnan(value)) return std::nullopt;
  return ReadPoint{rows[0].time, value};
}

std::string ReadValueCaption(const Parameter& curve, const ReadPoint& point, const Language& language) {
  return language.Translate(curve.name, kNoMessage) + language.In(text::ReadAt) + FormatDate(point.time, "hh:mm:ss") +
         " : " + Format(point.value, curve.format);
}

}  // namespace velk
