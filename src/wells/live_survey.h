#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "log/log_row.h"
#include "platform/database/connection.h"
#include "wells/well.h"

namespace velk {

inline constexpr const char* kSurveyData = "surveyData";

/// What a live survey reads of a row, in the order of its fields.
enum class SurveyQuantity { Speed, Date, Time, Depth, Inclination, Azimuth, RPM };
inline constexpr std::size_t kSurveyQuantities = 7;
using SurveyFields = std::array<std::string, kSurveyQuantities>;

/// Which samples count, by their speed.
enum class SpeedFilter : std::int16_t { RunningIn, PullingOut, All };

struct LiveSurveyChoice {
  SurveyFields fields;  ///< of the log, by SurveyQuantity
  SpeedFilter filter = SpeedFilter::RunningIn;
  std::int16_t interval = kDefaultInterval;  ///< units of depth
};

/// The fields of a log with channels of these names: its date, its time, and a column for each channel.
std::vector<std::string> FieldsOfLog(const std::vector<std::string>& channels);

/// The survey that grows while a log does: rows of the log are averaged until the hole is an interval deeper, and each
/// mean becomes a row of surveyData, from which the path is computed anew.
class LiveSurvey {
 public:
  /// The well outlives this.
  explicit LiveSurvey(Well& well) : well_(well) {}

  /// Makes surveyData anew in a database that others may be writing to by the same connection, and begins the survey at
  /// the surface: the well is of no file then. Raises what the database raises, and a survey that runs goes on.
  void Start(const LiveSurveyChoice& choice, const std::shared_ptr<Connection>& to,
             const std::vector<std::string>& channels);
  void Stop();
  /// It runs, and the database that it writes to is still open.
  bool IsOn() const { return on_ && !to_.expired(); }
  /// What it was started with last; the presets before.
  const LiveSurveyChoice& Choice() const { return choice_; }

  /// Takes a row of the log. One that was taken already, or has no value in a field other than RPM, changes nothing.
  /// Raises what the database raises; the row can be given again then.
  void LiveSurveyStep(const LogRow& row);

  /// Computes the path of the rows of surveyData behind the surface; without a row the well stays as it is. Raises what
  /// CalculateTrajectory raises.
  void LoadSurveyAndCalculate();

 private:
  /// All that a step changes.
  struct State {
    int count = 0;
    SurveyStation mean;      ///< of the rows since the last one of surveyData
    SurveyStation previous;  ///< the last one of surveyData
    std::int64_t taken = 0;  ///< key of the last row
  };

  double ValueOf(const LogRow& row, SurveyQuantity quantity) const;
  bool Counts(double speed) const;
  void Append(const LogRow& row, const State& state);

  Well& well_;
  LiveSurveyChoice choice_;
  std::array<int, kSurveyQuantities> places_{};  ///< of the fields in FieldsOfLog
  std::weak_ptr<Connection> to_;
  bool on_ = false;
  State state_;
};

}  // namespace velk
