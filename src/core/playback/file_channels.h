#pragma once

#include <optional>

#include "log/log_parameters.h"
#include "model/session.h"

namespace velk {

// The channels of a file that is played back, in the place of the unit's.

/// CurrentParameters become the saved PlaybackParameters.
void SetOldPlayGraphSettings(Session& session);
/// What is saved as PlaybackParameters becomes CurrentParameters.
void SetupPlayBackParam(Session& session);

/// Lays what a file tells of its channels over CurrentParameters, from slot 1 on: name, units, scale, colour, format,
/// graph, IncludeInSummary, visible. Where it tells names only, a channel is as it was saved among PlaybackParameters
/// under the same name, as far as it was.
void OverlayFileChannels(Session& session, const LogParameters& file);

/// At Connect: CurrentParameters and values are no file's any more.
void LeaveFile(Session& session);

/// What of the session is the unit's while a file has its place.
class UnitSetUp {
 public:
  /// The counts and the time base, when a file is accepted.
  void KeepCounts(Session& session);
  /// The state that goes on from sample to sample (averages, statistics of formulas, last values), when rows begin to
  /// run through it. They find it as a program has it at its start.
  void KeepValues(Session& session);
  /// All of it that was kept, back in its place.
  void GiveBack(Session& session);

 private:
  struct Counts {
    std::int16_t totalParameters;
    double sampleSeconds, graphTimeStep;
  };
  struct Values {
    decltype(Session::PreviousValue) previousValue;
    decltype(Session::SmoothHistory) smoothHistory;
    std::vector<Parameter> statistics;  ///< AdditionalParameters, for their running state
    bool firstPoint;
  };
  std::optional<Counts> counts_;
  std::optional<Values> values_;
};

}  // namespace velk
