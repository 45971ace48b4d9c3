#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "wells/survey_file.h"
#include "wells/trajectory.h"
#include "wells/well_units.h"

namespace velk {

/// The one well of the process: its survey, and the path that was computed last. Read and written directly, as the
/// session is.
struct Well {
  std::vector<SurveyStation> Survey;  ///< input of the trajectory; the first row is the surface
  std::int16_t SavedSurveyCount = 0;  ///< rows of the survey that was loaded or accepted last
  WellPath Path;
  std::int16_t CalculationInterval = kDefaultInterval;  ///< units of depth
  std::vector<WellSection> Sections;                    ///< of the .dt5 file that was read last

  std::string SurveyFileName;                  ///< the .d15 file in use; empty: none
  std::string WellFileName;                    ///< the .dt5 file that the survey is of; empty: none
  std::int16_t SurveyFileUnits = kApiEnglish;  ///< of the survey
  std::int16_t WellFileUnits = kApiEnglish;    ///< of the last .dt5 file; a new survey begins with it
  bool SurveyAccepted = false;                 ///< by the editor
  bool SurveyIsKept = true;                    ///< its rows are in a file
  WellUnits Units;
};

/// Whether the operator has entered rows that are in no file.
inline bool HasUnsavedRows(const Well& well) {
  return !well.SurveyIsKept && well.Survey.size() > 1;
}

/// The file that the rows of a well are of; empty: none.
inline const std::string& FileOfWell(const Well& well) {
  return well.SurveyFileName.empty() ? well.WellFileName : well.SurveyFileName;
}

}  // namespace velk
