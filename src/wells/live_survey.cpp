#include "wells/live_survey.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "base/dates.h"
#include "base/errors.h"
#include "log/field_names.h"
#include "platform/database/catalog.h"
#include "platform/database/command.h"

namespace velk {

namespace {

constexpr int kDatePlace = 0, kTimePlace = 1, kFirstChannel = 2;
constexpr double kSecondsOfDay = 86400;

Table SurveyDataTable() {
  using namespace column_type;
  return {kSurveyData,
          {{"ID", kInteger},
           {"Date", kDate},
           {"Time", kDate},
           {"Depth", kDouble},
           {"Inclination", kDouble},
           {"Azimuth", kDouble},
           {"DogLeg", kDouble},
           {"RPM", kDouble}},
          "ID"};
}

/// A new one in the place of what another survey has left in the file.
void CreateSurveyTable(Connection& connection) {
  Transaction transaction(connection);
  Catalog catalog(connection);
  if (const auto old = catalog.Find(kSurveyData)) connection.Execute("DROP TABLE " + QuoteName(old->name));
  catalog.Append(SurveyDataTable());
  transaction.Commit();
}

/// The seconds of a day; any channel may have been matched with the time.
int SecondsOf(double time) {
  const double seconds = std::floor((time - std::floor(time)) * kSecondsOfDay + 0.001);
  return static_cast<int>(std::min(seconds, kSecondsOfDay - 1));
}

double Mean(int count, double mean, double value) {
  return (count * mean + value) / (count + 1);
}

}  // namespace

std::vector<std::string> FieldsOfLog(const std::vector<std::string>& channels) {
  std::vector<std::string> fields = {"Date", "Time"};
  const std::vector<std::string> columns = LogColumnNames(channels);
  fields.insert(fields.end(), columns.begin(), columns.end());
  return fields;
}

void LiveSurvey::Start(const LiveSurveyChoice& choice, const std::shared_ptr<Connection>& to,
                       const std::vector<std::string>& channels) {
  const std::vector<std::string> fields = FieldsOfLog(channels);
  std::array<int, kSurveyQuantities> places{};
  for (std::size_t i = 0; i < kSurveyQuantities; ++i) {
    const auto found = std::find(fields.begin(), fields.end(), choice.fields[i]);
    if (found == fields.end()) throw RuntimeError(ErrorNumber::InvalidArgument);
    places[i] = static_cast<int>(found - fields.begin());
  }
  CreateSurveyTable(*to);
  choice_ = choice;
  places_ = places;
  to_ = to;
  state_ = {};
  on_ = true;
  well_.CalculationInterval = choice.interval;
  well_.Survey = {SurveyStation{}};
  well_.SavedSurveyCount = 0;
  well_.SurveyIsKept = true;
  well_.SurveyFileName.clear();
  well_.WellFileName.clear();
  well_.Sections.clear();
}

void LiveSurvey::Stop() {
  on_ = false;
  to_.reset();
}

double LiveSurvey::ValueOf(const LogRow& row, SurveyQuantity quantity) const {
  const int place = places_[static_cast<std::size_t>(quantity)];
  if (place == kDatePlace) return std::floor(row.time);
  if (place == kTimePlace) return row.time - std::floor(row.time);
  const auto channel = static_cast<std::size_t>(place - kFirstChannel);
  return channel < row.values.size() ? row.values[channel] : std::nan("");
}

bool LiveSurvey::Counts(double speed) const {
  if (choice_.filter == SpeedFilter::RunningIn) return speed > 0;
  return choice_.filter == SpeedFilter::All || speed < 0;
}

void LiveSurvey::LiveSurveyStep(const LogRow& row) {
  if (!IsOn() || row.key == state_.taken) return;
  State next = state_;
  next.taken = row.key;
  const double speed = ValueOf(row, SurveyQuantity::Speed);
  const SurveyStation value{ValueOf(row, SurveyQuantity::Depth), ValueOf(row, SurveyQuantity::Inclination),
                            ValueOf(row, SurveyQuantity::Azimuth)};
  const double needed[] = {speed,
                           value.depth,
                           value.inclination,
                           value.azimuth,
                           ValueOf(row, SurveyQuantity::Date),
                           ValueOf(row, SurveyQuantity::Time)};
  const bool isWhole =
      std::all_of(std::begin(needed), std::end(needed), [](double each) { return std::isfinite(each); });
  if (isWhole && Counts(speed)) {
    const bool isDue = std::fabs(value.depth - state_.previous.depth) > choice_.interval;
    next.mean = {Mean(next.count, next.mean.depth, value.depth),
                 Mean(next.count, next.mean.inclination, value.inclination),
                 Mean(next.count, next.mean.azimuth, value.azimuth)};
    next.count = isDue ? 0 : next.count + 1;
    if (isDue && value.depth > 0 && speed != 0) {
      Append(row, next);
      next.previous = next.mean;
    }
  }
  state_ = next;
}

void LiveSurvey::Append(const LogRow& row, const State& state) {
  const auto to = to_.lock();
  Command insert(*to, std::string("INSERT INTO ") + kSurveyData +
                          " (\"Date\", \"Time\", Depth, Inclination, Azimuth, DogLeg, RPM) VALUES (?,?,?,?,?,?,?)");
  const double values[] = {std::floor(ValueOf(row, SurveyQuantity::Date)),
                           TimeOfDay(0, 0, SecondsOf(ValueOf(row, SurveyQuantity::Time))),
                           state.mean.depth,
                           state.mean.inclination,
                           state.mean.azimuth,
                           SegmentDogLeg(state_.previous, state.mean)};
  for (int i = 0; i < 6; ++i) insert.Bind(i + 1, values[i]);
  const double rpm = ValueOf(row, SurveyQuantity::RPM);
  insert.Bind(7, std::isfinite(rpm) ? FieldValue(rpm) : FieldValue());
  insert.Execute();
}

void LiveSurvey::LoadSurveyAndCalculate() {
  if (!IsOn()) return;
  std::vector<SurveyStation> survey = {SurveyStation{}};
  {
    const auto to = to_.lock();
    Command rows(*to, std::string("SELECT * FROM ") + kSurveyData + " ORDER BY Depth;");
    constexpr int kDepth = 3;
    while (rows.Next()) survey.push_back({rows.Number(kDepth), rows.Number(kDepth + 1), rows.Number(kDepth + 2)});
  }
  if (survey.size() == 1) return;
  WellPath path = CalculateTrajectory(survey, well_.CalculationInterval);
  well_.SavedSurveyCount = ToInt16(static_cast<double>(survey.size()));
  well_.Survey = std::move(survey);
  well_.Path = std::move(path);
}

}  // namespace velk
