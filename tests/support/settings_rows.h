#pragma once

#include <functional>
#include <string>
#include <vector>

#include "model/session.h"

namespace velk::test {

enum class Kind { Text, Boolean, Int16, Int32, Single, Double };

/// One key of application "VELK2" as operators' stores hold it.
struct SettingsRow {
  std::string section;
  std::string key;
  Kind kind;
  std::string preset;  ///< what the field reads as when nothing is stored
  std::string other;   ///< another value, in the same form as it is stored
  std::function<std::string(const Session&)> field;

  std::string Name() const { return section + '/' + key; }
};

/// Every key that is both read and written, with the parameters of the given numbers.
std::vector<SettingsRow> SettingsRows(const std::vector<int>& parameters, const std::vector<int>& formulas);

/// Texts that are none of the kind's values.
std::vector<std::string> WrongTexts(Kind kind);

}  // namespace velk::test
