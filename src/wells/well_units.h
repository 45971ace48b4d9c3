#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/operator_text.h"
#include "platform/settings/settings.h"

namespace velk {

/// The systems of units, by the code that files of surveys store.
inline constexpr std::int16_t kApiEnglish = 0;
inline constexpr std::int16_t kMetric = 1;
inline constexpr std::int16_t kUserDefined = 2;

/// A factor for each quantity that the well tools may convert; of these the length alone is in use.
using UnitTable = std::array<double, 42>;
inline constexpr std::size_t kLengthSlot = 4;

/// What the operator calls his own units, and how many of them make one of API-English.
struct UserUnits {
  double length = 1;
  std::string depthLabel;
  std::string angleLabel;
};

struct WellUnits {
  UnitTable UnitFactor = Ones();      ///< what a conversion divides by
  UnitTable MetricFactor = Metric();  ///< how many metric units one of API-English is
  UnitTable UserFactor = Ones();      ///< how many of the operator's
  UserUnits user;

  static UnitTable Ones();
  static UnitTable Metric();

  /// Takes the operator's own units over.
  void SetUser(const UserUnits& units);
  /// Fills UnitFactor for a conversion between two systems.
  void Convert(std::int16_t from, std::int16_t to);
};

/// "API-English", "Metric", "User Defined".
OperatorText UnitSystemName(std::int16_t system);
OperatorText DepthUnitLabel(const WellUnits& units, std::int16_t system);
OperatorText AngleUnitLabel(const WellUnits& units, std::int16_t system);

/// The operator's own units as the settings keep them. A length that is no positive number counts as 1.
UserUnits ReadUserUnits(SettingsStore& store, std::string_view application);
void SaveUserUnits(SettingsStore& store, std::string_view application, const UserUnits& units);

}  // namespace velk
