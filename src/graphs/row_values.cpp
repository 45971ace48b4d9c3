#include "graphs/row_values.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/errors.h"
#include "formula/additional_parameters.h"
#include "formula/substitute.h"
#include "graphs/coordinates.h"

namespace velk {

namespace {

constexpr float kNone = std::numeric_limits<float>::quiet_NaN();

}  // namespace

RowValues::RowValues(const Session& session, const ParameterCurves& curves, std::size_t channels)
    : session_(session), curves_(curves), values_(AllSlots(kNone)) {
  Session::PerParameter<bool> needed{};
  for (int slot = 1; slot <= curves.Count(); ++slot) Need(curves.ParameterOf(slot), needed);
  const int last = std::min<int>(session.NumberOfParameters, static_cast<int>(channels));
  for (int parameter = 1; parameter <= last; ++parameter)
    if (needed[parameter]) channels_.push_back(parameter - 1);
  std::sort(computed_.begin(), computed_.end(),
            [](const Computed& a, const Computed& b) { return a.parameter < b.parameter; });
  if (computed_.empty()) return;
  statistics_.resize(static_cast<std::size_t>(session.NumberOfFormulae) + 1);
  for (std::size_t i = 1; i < statistics_.size(); ++i) PrepareStatistics(statistics_[i], session.Formula[i]);
}

/// A formula may lean on other computed channels.
void RowValues::Need(int parameter, Session::PerParameter<bool>& needed) {
  if (parameter < 1 || parameter > kMaxParameters || needed[parameter]) return;
  needed[parameter] = true;
  const int formula = parameter - session_.NumberOfParameters;
  if (formula < 1 || formula > session_.NumberOfFormulae) return;
  const std::string& text = session_.Formula[static_cast<std::size_t>(formula)];
  if (text == kLinkedParameter) return;
  const std::vector<int> references = ReferencesOf(session_, text);
  computed_.push_back({parameter, references});
  for (const int reference : references) Need(reference, needed);
}

void RowValues::Take(std::span<const double> channels) {
  for (std::size_t i = 0; i < channels_.size(); ++i) {
    const std::size_t parameter = static_cast<std::size_t>(channels_[i]) + 1;
    const Parameter& channel = session_.CurrentParameters[parameter];
    const double value = channels[i];
    values_[parameter] = NarrowOrNan(session_.AcquisitionMode ? value : value * channel.Gain + channel.Offset);
  }
  for (const Computed& channel : computed_) values_[static_cast<std::size_t>(channel.parameter)] = ValueOf(channel);
}

float RowValues::ValueOf(const Computed& channel) {
  for (const int reference : channel.references)
    if (std::isnan(values_[static_cast<std::size_t>(reference)])) return kNone;
  try {
    return velk::ValueOf(session_, values_, statistics_, channel.parameter - session_.NumberOfParameters);
  } catch (const RuntimeError&) {
    return kNone;  // the curve stays open here, as it did where it was drawn live
  }
}

}  // namespace velk
