#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/language.h"
#include "platform/settings/settings.h"

namespace velk {

/// A field of a table that another program fills: what it is called there, and how it is drawn.
struct LiveField {
  std::string Name = {};         ///< in the table
  std::int16_t Type = 3;         ///< see field_types.h
  std::string DisplayName = {};  ///< of its curve
  double min = 0;                ///< of its scale
  double max = 100;
  std::string Unit = "Unit";
  std::string format = "#0.000";
  double Lower = 0;  ///< alarm limits; they count where they are set
  double Upper = 0;
  std::int32_t Colour = 0;  ///< 0x00bbggrr
  bool UpperSet = false;
  bool LowerSet = false;
  bool Wrapping = true;

  bool operator==(const LiveField&) const = default;
};

/// Which database of another program is followed, and what of it.
struct LiveImport {
  bool Import = false;  ///< following is on
  std::string DBaseName = {};
  std::string TableName = {};
  std::string DateField = {};
  std::string TimeField = {};
  std::vector<LiveField> Fields = {};

  bool operator==(const LiveImport&) const = default;
};

/// Reads what the settings keep. False, and `live` is empty, where they name no database.
bool LoadFromRegistry(SettingsStore& settings, const Language& language, LiveImport& live);

/// Stores it; it reaches the disk with the next Flush. The name of the database comes last: without it nothing of the
/// rest counts.
void SaveToRegistory(SettingsStore& settings, const LiveImport& live);

}  // namespace velk
