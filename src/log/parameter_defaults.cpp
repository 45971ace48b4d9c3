#include "log/parameter_defaults.h"
#include "model/texts.h"

#include <string>

namespace velk {

void FillEmptyFields(Parameter& parameter, int number, const Language& language) {
  if (parameter.name.empty()) {
    parameter.name = language.In(text::DefaultParameterName) + std::to_string(number);
    parameter.GraphVisible = true;
  }
  if (parameter.units.empty()) parameter.units = language.In(text::DefaultUnits);
  if (parameter.min == 0 && parameter.max == 0) parameter.max = 100;
  if (parameter.format.empty()) parameter.format = "#0.000";
  if (parameter.FormIndex == 0) parameter.FormIndex = static_cast<std::int16_t>(number);
}

}  // namespace velk
