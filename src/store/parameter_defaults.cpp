#include "store/parameter_defaults.h"

#include <string>

namespace velk {

void FillEmptyFields(Parameter& parameter, int number, const clstranslation& translator) {
  if (parameter.name.empty()) {
    parameter.name = translator.Translate(MessageId::DefaultParameterName) + std::to_string(number);
    parameter.GraphVisible = true;
  }
  if (parameter.units.empty()) parameter.units = translator.Translate(MessageId::DefaultUnits);
  if (parameter.min == 0 && parameter.max == 0) parameter.max = 100;
  if (parameter.format.empty()) parameter.format = "#0.000";
  if (parameter.FormIndex == 0) parameter.FormIndex = static_cast<std::int16_t>(number);
}

}  // namespace velk
