// Any bytes as a survey: both kinds of file are read, what a survey file gave is written and read again, and the path
// of either is computed.

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "base/errors.h"
#include "wells/survey_file.h"

namespace {

/// The path, or the error that it ends with; anything else ends the program.
void Compute(const std::vector<velk::SurveyStation>& rows) {
  std::int16_t interval = 1000;
  try {
    const velk::WellPath path = velk::CalculateTrajectory(rows, interval);
    if (path.stations.empty() || path.stations.size() > 32767) std::abort();
  } catch (const velk::RuntimeError&) {
    return;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const velk::SurveyFile well = velk::ReadWellText(bytes);
  if (well.rows.size() > velk::kWellFileRows || well.sections.size() > velk::kMostSections) std::abort();
  const velk::SurveyFile survey = velk::ReadSurveyText(bytes);
  // A number is written with 15 digits: what was read from them comes back as it is.
  const std::string once = velk::SurveyText(survey.rows, survey.units.value_or(0));
  const velk::SurveyFile again = velk::ReadSurveyText(once);
  if (again.rows.size() != survey.rows.size() || velk::SurveyText(again.rows, again.units.value_or(0)) != once)
    std::abort();
  Compute(survey.rows);
  Compute(well.rows);
  return 0;
}
