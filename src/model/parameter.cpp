#include "model/parameter.h"

namespace velk {

void CopyDefinition(const Parameter& from, Parameter& to) {
  const Parameter before = to;
  to = from;
  to.AverageCount = before.AverageCount;
  to.AverageSum = before.AverageSum;
  to.RunningMinimum = before.RunningMinimum;
  to.RunningMaximum = before.RunningMaximum;
}

}  // namespace velk
