#include "instruments/setup/sampling_choice.h"

#include <gtest/gtest.h>

#include "base/numbers.h"

namespace velk {
namespace {

constexpr double kDay = 86400;

TEST(SamplingChoice, OffersEachValueInEachUnitAndFindsItAgain) {
  constexpr int kNumbers[] = {1, 5, 10, 15, 20, 30};
  constexpr int kSeconds[] = {1, 60, 3600};
  for (const int number : kNumbers) {
    for (int unit = 0; unit < 3; ++unit) {
      const SamplingChoice choice{static_cast<double>(number), static_cast<SamplingUnit>(unit)};
      const double rate = SamplingRateOf(choice);
      EXPECT_DOUBLE_EQ(rate, number * kSeconds[unit] / kDay);
      EXPECT_EQ(SamplingChoiceOf(rate), choice) << number << " " << unit;
      // As the settings hold it.
      EXPECT_EQ(SamplingChoiceOf(Val(NumberText(rate))), choice) << number << " " << unit;
      EXPECT_EQ(ChosenSamplingRate(choice, 1 / kDay), rate);
    }
  }
}

TEST(SamplingChoice, ShowsARateThatIsNotOfferedAsItIs) {
  const auto expect = [](double seconds, double number, SamplingUnit unit) {
    const SamplingChoice shown = SamplingChoiceOf(seconds / kDay);
    EXPECT_DOUBLE_EQ(shown.number, number) << seconds;
    EXPECT_EQ(shown.unit, unit) << seconds;
  };
  expect(2, 2, SamplingUnit::Seconds);
  expect(0.5, 0.5, SamplingUnit::Seconds);
  expect(90, 90, SamplingUnit::Seconds);
  expect(120, 2, SamplingUnit::Minutes);
  expect(7200, 2, SamplingUnit::Hours);
  expect(86400, 24, SamplingUnit::Hours);
  expect(5400, 90, SamplingUnit::Minutes);
}

TEST(SamplingChoice, LeavesTheStoredRateToItsLastDigitWhereNothingElseIsChosen) {
  const double odd = 2.0000001234 / kDay;
  EXPECT_EQ(ChosenSamplingRate(SamplingChoiceOf(odd), odd), odd);
  EXPECT_EQ(ChosenSamplingRate({5, SamplingUnit::Seconds}, odd), 5 / kDay);
  EXPECT_EQ(ChosenSamplingRate({2, SamplingUnit::Minutes}, 2 / kDay), 120 / kDay);
}

}  // namespace
}  // namespace velk
