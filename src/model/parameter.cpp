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

void CopyDefinitionInFile(const Parameter& from, Parameter& to) {
  const bool shown = to.GraphVisible;
  const std::int16_t graph = to.FormIndex;
  CopyDefinition(from, to);
  to.GraphVisible = shown;
  to.FormIndex = graph;
}

}  // namespace velk
