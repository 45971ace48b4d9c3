#include "model/parameter.h"

#include <gtest/gtest.h>

namespace velk {
namespace {

TEST(Parameter, KeepsItsRunningStatisticsWhenItsDefinitionIsCopied) {
  Parameter edited;
  edited.name = "New name";
  edited.max = 12;
  edited.AverageCount = 1;
  edited.RunningMaximum = 1;
  Parameter running;
  running.AverageCount = 500;
  running.AverageSum = 7000;
  running.RunningMinimum = -3;
  running.RunningMaximum = 88;
  CopyDefinition(edited, running);
  EXPECT_EQ(running.name, "New name");
  EXPECT_EQ(running.max, 12.0);
  EXPECT_EQ(running.AverageCount, 500);
  EXPECT_EQ(running.AverageSum, 7000.0);
  EXPECT_EQ(running.RunningMinimum, -3.0);
  EXPECT_EQ(running.RunningMaximum, 88.0);
}

}  // namespace
}  // namespace velk
