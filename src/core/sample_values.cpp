#include "core/sample_values.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "base/errors.h"
#include "base/numbers.h"
#include "base/single.h"
#include "instruments/reading/decimal_fields.h"
#include "instruments/reading/field_numbers.h"
#include "instruments/table/protocols.h"

namespace velk {

namespace {

/// Characters that an accepted line has at least in front of its terminator: "hh:mm:ss" and a delimiter.
constexpr std::size_t kTimeCharacters = 9;

}  // namespace

bool IsAccepted(const Session& session, std::string_view line) {
  const std::size_t place = line.find(session.Terminator);
  return place != std::string_view::npos && place + 1 > kTimeCharacters;
}

const SampleValues::Scale& SampleValues::ScaleOf(const Session& session, int parameter) {
  const Parameter& configured = session.Parameters[parameter];
  Scale& scale = scales_[parameter];
  if (scale.gain != configured.Gain || scale.offset != configured.Offset)
    scale = {configured.Gain, configured.Offset, ThroughText(configured.Gain), ThroughText(configured.Offset)};
  return scale;
}

LineFault SampleValues::Take(Session& session, std::string_view line) {
  std::array<double, kSlots> fields;
  const int wanted = session.NumberOfParameters;
  const FieldNumbers read = ReadFieldNumbers(line, session.Delimiter, session.Terminator,
                                             std::span(fields).first(static_cast<std::size_t>(std::max(wanted, 0))));
  if (!read.areSound && ProtocolOf(session).decimalFields &&
      !HasDecimalFields(line, session.Delimiter, session.Terminator))
    return LineFault::FieldNotDecimal;
  for (int i = 1; i <= wanted; ++i) {
    if (static_cast<std::size_t>(i) > read.count) return LineFault::FieldMissing;
    const double field = fields[static_cast<std::size_t>(i - 1)];
    const Scale& scale = ScaleOf(session, i);
    const double value = field * static_cast<double>(scale.gain32) + static_cast<double>(scale.offset32);
    if (!FitsSingle(field) || !FitsSingle(value)) return LineFault::BeyondRange;
    scaled_[i] = static_cast<float>(value);
  }
  for (int i = 1; i <= wanted; ++i) session.CurrentValue[i] = Smooth(session, i, scaled_[i]);
  return LineFault::None;
}

float Smooth(Session& session, int parameter, float value) {
  const int length = session.SmoothValue[parameter];
  double sum = 0;
  for (int j = 2; j <= length; ++j) {
    const double past = session.SmoothHistory[j][parameter];
    sum += past;
    session.SmoothHistory[j - 1][parameter] = past;
  }
  sum += static_cast<double>(value);
  session.SmoothHistory[length][parameter] = static_cast<double>(value);
  return static_cast<float>(sum / length);
}

bool HasMoved(const Session& session, int parameter) {
  const Parameter& configured = session.Parameters[parameter];
  const float change = std::abs(session.CurrentValue[parameter] - session.PreviousValue[parameter]);
  if (std::isinf(change)) return true;  // from one end of the 32-bit range to the other
  const double range = configured.max - configured.min;
  const double share = static_cast<double>(change) / range;
  if (range == 0 || !std::isfinite(share)) Divide(static_cast<double>(change), range);  // raises
  return share >= session.SensitivityCriterion * 0.01;
}

bool IsDue(const Session& session) {
  const double passed = session.SampleTime - session.Times.LastPlotTime;
  return passed >= session.SamplingRate / 2 || passed < 0;
}

}  // namespace velk
