#include "core/playback/file_channels.h"

#include <algorithm>
#include <utility>

#include "formula/additional_parameters.h"
#include "log/field_names.h"

namespace velk {

namespace {

/// Puts over a channel what files tell of theirs.
void Overlay(const Parameter& told, Parameter& channel) {
  channel.name = told.name;
  channel.units = told.units;
  channel.min = told.min;
  channel.max = told.max;
  channel.color = told.color;
  channel.format = told.format;
  channel.FormIndex = told.FormIndex;
  channel.GraphVisible = true;
  channel.IncludeInSummary = told.IncludeInSummary;
}

/// A channel by its name as a column carries it; null where it was never saved.
const Parameter* SavedChannel(const Session& session, const std::string& name) {
  const auto& saved = session.PlaybackParameters;
  const auto* const found = std::find_if(saved.begin() + 1, saved.end(), [&](const Parameter& channel) {
    return CleanFieldName(channel.name) == CleanFieldName(name);
  });
  return found == saved.end() ? nullptr : found;
}

/// A channel that only its name is told of. A graph and a scale are never empty.
void Recall(const Parameter& saved, const Parameter& told, Parameter& channel) {
  channel = saved;
  channel.GraphVisible = true;
  channel.IncludeInSummary = told.IncludeInSummary;
  if (channel.FormIndex == 0) channel.FormIndex = told.FormIndex;
  if (channel.units.empty()) channel.units = told.units;
  if (channel.format.empty()) channel.format = told.format;
  if (channel.min != channel.max) return;
  channel.min = told.min;
  channel.max = told.max;
}

void PutStatistics(const Parameter& from, Parameter& to) {
  to.AverageCount = from.AverageCount;
  to.AverageSum = from.AverageSum;
  to.RunningMinimum = from.RunningMinimum;
  to.RunningMaximum = from.RunningMaximum;
}

}  // namespace

void SetOldPlayGraphSettings(Session& session) {
  session.CurrentParameters = session.PlaybackParameters;
}

void SetupPlayBackParam(Session& session) {
  session.PlaybackParameters = session.CurrentParameters;
}

void OverlayFileChannels(Session& session, const LogParameters& file) {
  std::size_t slot = 0;
  for (const Parameter& told : file.channels) {
    Parameter& channel = session.CurrentParameters[++slot];
    const Parameter* const saved = file.hasGraphSettings ? nullptr : SavedChannel(session, told.name);
    if (saved != nullptr)
      Recall(*saved, told, channel);
    else
      Overlay(told, channel);
  }
}

void LeaveFile(Session& session) {
  if (ShowsFile(session)) session.CurrentValue.fill(0);
  session.PlaybackParameterCount = 0;
}

void UnitSetUp::KeepCounts(Session& session) {
  counts_ = {session.TotalParameters, session.SampleSeconds, session.Times.GraphTimeStep};
  session.UnitParameters = session.NumberOfParameters;
}

void UnitSetUp::KeepValues(Session& session) {
  values_ = {session.PreviousValue, session.SmoothHistory, session.AdditionalParameters, session.FirstPoint};
  session.CurrentValue.fill(0);
  session.PreviousValue.fill(0);
  session.SmoothHistory = {};
  for (int i = 1; i <= session.NumberOfFormulae; ++i)
    PrepareStatistics(session.AdditionalParameters[i], session.Formula[i]);
}

void UnitSetUp::GiveBack(Session& session) {
  if (const auto counts = std::exchange(counts_, std::nullopt)) {
    session.TotalParameters = counts->totalParameters;
    session.SampleSeconds = counts->sampleSeconds;
    session.Times.GraphTimeStep = counts->graphTimeStep;
    session.NumberOfParameters = session.UnitParameters.value_or(session.NumberOfParameters);
    session.UnitParameters.reset();
  }
  if (const auto values = std::exchange(values_, std::nullopt)) {
    session.PreviousValue = values->previousValue;
    session.SmoothHistory = values->smoothHistory;
    session.FirstPoint = values->firstPoint;
    const std::size_t count = std::min(values->statistics.size(), session.AdditionalParameters.size());
    for (std::size_t i = 0; i < count; ++i) PutStatistics(values->statistics[i], session.AdditionalParameters[i]);
  }
}

}  // namespace velk
