#include "wells/well_units.h"

#include <cmath>

#include "base/errors.h"
#include "base/numbers.h"
#include "wells/texts.h"

namespace velk {

namespace {

constexpr std::string_view kSection = "Units";
constexpr double kMetresInFoot = 0.3048;

/// The factor of one quantity.
double FactorOf(std::int16_t from, std::int16_t to, double metric, double user) {
  if (from == to) return 1;
  const auto inSystem = [&](std::int16_t system) {
    if (system == kMetric) return metric;
    return system == kUserDefined ? user : 1.0;
  };
  return Divide(inSystem(from), inSystem(to));
}

}  // namespace

UnitTable WellUnits::Ones() {
  UnitTable table;
  table.fill(1);
  return table;
}

UnitTable WellUnits::Metric() {
  UnitTable table = Ones();
  table[kLengthSlot] = kMetresInFoot;
  return table;
}

void WellUnits::SetUser(const UserUnits& units) {
  user = units;
  UserFactor[kLengthSlot] = units.length;
}

void WellUnits::Convert(std::int16_t from, std::int16_t to) {
  for (std::size_t i = 1; i < UnitFactor.size(); ++i)
    UnitFactor[i] = FactorOf(from, to, MetricFactor[i], UserFactor[i]);
}

OperatorText UnitSystemName(std::int16_t system) {
  if (system == kMetric) return text::UnitsMetric;
  return system == kUserDefined ? text::UnitsUserDefined : text::UnitsApiEnglish;
}

OperatorText DepthUnitLabel(const WellUnits& units, std::int16_t system) {
  if (system == kMetric) return text::UnitMetres;
  return system == kUserDefined ? OperatorText(units.user.depthLabel) : OperatorText(text::UnitFeet);
}

OperatorText AngleUnitLabel(const WellUnits& units, std::int16_t system) {
  return system == kUserDefined ? OperatorText(units.user.angleLabel) : OperatorText(text::UnitDegrees);
}

UserUnits ReadUserUnits(SettingsStore& store, std::string_view application) {
  UserUnits units;
  const double length = Val(store.Get(application, kSection, "UserLength", "1"));
  if (std::isfinite(length) && length > 0) units.length = length;
  units.depthLabel = store.Get(application, kSection, "UserDepthLabel", "");
  units.angleLabel = store.Get(application, kSection, "UserAngleLabel", "");
  return units;
}

void SaveUserUnits(SettingsStore& store, std::string_view application, const UserUnits& units) {
  store.Save(application, kSection, "UserLength", NumberText(units.length));
  store.Save(application, kSection, "UserDepthLabel", units.depthLabel);
  store.Save(application, kSection, "UserAngleLabel", units.angleLabel);
  store.Flush();
}

}  // namespace velk
