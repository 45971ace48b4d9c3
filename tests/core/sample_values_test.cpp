#include "core/sample_values.h"

#include <gtest/gtest.h>

#include "base/errors.h"

namespace velk {
namespace {

Session MakeSession(std::int16_t channels) {
  Session session;
  session.NumberOfParameters = channels;
  session.Delimiter = " ";
  session.Terminator = "\r\n";
  for (int i = 1; i <= kMaxParameters; ++i) {
    session.Parameters[i].Gain = 1;
    session.Parameters[i].min = 0;
    session.Parameters[i].max = 100;
  }
  return session;
}

TEST(SampleValues, AcceptsALineWhoseTerminatorStandsBehindCharacterNine) {
  const Session session = MakeSession(1);
  EXPECT_TRUE(IsAccepted(session, "12:00:00 \r\n"));  // position 10
  EXPECT_FALSE(IsAccepted(session, "12:00:00\r\n"));  // position 9
  EXPECT_FALSE(IsAccepted(session, "\r\n12:00:00 1 2 3\r\n"));
  EXPECT_FALSE(IsAccepted(session, "12:00:00 1 2 3"));
  EXPECT_FALSE(IsAccepted(session, ""));
}

TEST(SampleValues, TakesTheFieldsBehindTheTime) {
  Session session = MakeSession(3);
  SampleValues values;
  ASSERT_EQ(values.Take(session, "12:00:00 1.5 -2 0030\r\n"), LineFault::None);
  EXPECT_EQ(session.CurrentValue[1], 1.5f);
  EXPECT_EQ(session.CurrentValue[2], -2.0f);
  EXPECT_EQ(session.CurrentValue[3], 30.0f);
}

TEST(SampleValues, ScalesByGainAndOffsetOfTheConfiguredParameters) {
  Session session = MakeSession(2);
  session.Parameters[1].Gain = 0.1;
  session.Parameters[1].Offset = -5;
  session.CurrentParameters[1].Gain = 1000;  // the working copy plays no part
  SampleValues values;
  ASSERT_EQ(values.Take(session, "12:00:00 250 7\r\n"), LineFault::None);
  EXPECT_EQ(session.CurrentValue[1], static_cast<float>(250 * static_cast<double>(0.1f) - 5));
  EXPECT_EQ(session.CurrentValue[2], 7.0f);
}

TEST(SampleValues, RoundsGainThroughItsDecimalTextTo32Bits) {
  Session session = MakeSession(1);
  session.Parameters[1].Gain = 1.0 / 3;  // as text 0.333333333333333, then the nearest 32-bit float
  SampleValues values;
  ASSERT_EQ(values.Take(session, "12:00:00 3000000\r\n"), LineFault::None);
  EXPECT_EQ(session.CurrentValue[1], static_cast<float>(3000000 * static_cast<double>(0.33333334f)));
}

TEST(SampleValues, FollowsAChangedGainAtTheNextLine) {
  Session session = MakeSession(1);
  SampleValues values;
  ASSERT_EQ(values.Take(session, "12:00:00 4\r\n"), LineFault::None);
  session.Parameters[1].Gain = 2;
  ASSERT_EQ(values.Take(session, "12:00:01 4\r\n"), LineFault::None);
  EXPECT_EQ(session.CurrentValue[1], 8.0f);
}

TEST(SampleValues, RejectsALineWithAFieldBeyond32BitsBeforeAnyValueChanges) {
  for (const char* field : {"1e39", "-1e39", "1e999", "3.5e38"}) {
    Session session = MakeSession(2);
    session.SmoothValue[1] = 2;
    SampleValues values;
    ASSERT_EQ(values.Take(session, "12:00:00 10 20\r\n"), LineFault::None);
    const auto history = session.SmoothHistory;
    const auto before = session.CurrentValue;
    EXPECT_EQ(values.Take(session, std::string("12:00:01 11 ") + field + "\r\n"), LineFault::BeyondRange) << field;
    EXPECT_EQ(session.CurrentValue, before) << field;
    EXPECT_EQ(session.SmoothHistory, history) << field;
  }
}

TEST(SampleValues, RejectsALineWhoseScaledValueIsBeyond32Bits) {
  Session session = MakeSession(1);
  session.Parameters[1].Gain = 1e30;
  SampleValues values;
  EXPECT_EQ(values.Take(session, "12:00:00 1e20\r\n"), LineFault::BeyondRange);
  EXPECT_EQ(values.Take(session, "12:00:00 2\r\n"), LineFault::None);
  EXPECT_EQ(session.CurrentValue[1], static_cast<float>(2 * static_cast<double>(1e30f)));
}

TEST(SampleValues, ReadsFieldsThatAreNoNumbersAsZero) {
  Session session = MakeSession(4);
  SampleValues values;
  ASSERT_EQ(values.Take(session, "12:00:00 nan inf -- 7x\r\n"), LineFault::None);
  EXPECT_EQ(session.CurrentValue[1], 0.0f);
  EXPECT_EQ(session.CurrentValue[2], 0.0f);
  EXPECT_EQ(session.CurrentValue[3], 0.0f);
  EXPECT_EQ(session.CurrentValue[4], 7.0f);
}

TEST(SampleValues, RejectsALineThatRunsOutOfFieldsAheadOfTheLastParameter) {
  for (const char* line : {"12:34:56 5\r\n", "12:34:56 5 6\r\n", "12:34:56 \r\n", "12:34:56,5,6,7\r\n"}) {
    Session session = MakeSession(3);
    SampleValues values;
    ASSERT_EQ(values.Take(session, "12:34:55 10 20 30\r\n"), LineFault::None);
    const auto before = session.CurrentValue;
    EXPECT_EQ(values.Take(session, line), LineFault::FieldMissing) << line;
    EXPECT_EQ(session.CurrentValue, before) << line;
  }
}

TEST(SampleValues, ReadsAnEmptyFieldAsZero) {
  Session session = MakeSession(3);
  session.Delimiter = ",";
  SampleValues values;
  ASSERT_EQ(values.Take(session, "12:34:56,,5,\r\n"), LineFault::None);
  EXPECT_EQ(session.CurrentValue[1], 0.0f);
  EXPECT_EQ(session.CurrentValue[2], 5.0f);
  EXPECT_EQ(session.CurrentValue[3], 0.0f);
}

TEST(SampleValues, LeaveFurtherFieldsOutAndWantNoneWithoutParameters) {
  Session session = MakeSession(2);
  SampleValues values;
  ASSERT_EQ(values.Take(session, "12:34:56 5 6 7\r\n"), LineFault::None);
  EXPECT_EQ(session.CurrentValue[2], 6.0f);
  session.NumberOfParameters = 0;
  EXPECT_EQ(values.Take(session, "12:34:56\r\n"), LineFault::None);
}

TEST(Smoothing, OfLengthOneLeavesTheValueAndOverwritesTheFirstSlot) {
  Session session = MakeSession(1);
  EXPECT_EQ(Smooth(session, 1, 7.25f), 7.25f);
  EXPECT_EQ(session.SmoothHistory[1][1], 7.25);
  EXPECT_EQ(Smooth(session, 1, 9.0f), 9.0f);
  EXPECT_EQ(session.SmoothHistory[1][1], 9.0);
}

TEST(Smoothing, AveragesTheLastSamplesBeginningFromZeros) {
  Session session = MakeSession(1);
  session.SmoothValue[1] = 4;
  EXPECT_EQ(Smooth(session, 1, 4), 1.0f);
  EXPECT_EQ(Smooth(session, 1, 8), 3.0f);
  EXPECT_EQ(Smooth(session, 1, 12), 6.0f);
  EXPECT_EQ(Smooth(session, 1, 16), 10.0f);
  EXPECT_EQ(Smooth(session, 1, 20), 14.0f);
}

TEST(Smoothing, SumsIn64Bits) {
  Session session = MakeSession(1);
  session.SmoothValue[1] = 10;
  float average = 0;
  for (int i = 0; i < 10; ++i) average = Smooth(session, 1, 16777216.0f + static_cast<float>(2 * i));
  // 16777216 + 0, 2, 4, ... 18 in 32 bits; the mean of the ten is exactly 16777225, a tie that 32 bits round to even
  EXPECT_EQ(average, 16777224.0f);
}

TEST(Significance, ComparesTheChangeWithTheScaleOfTheConfiguredParameter) {
  Session session = MakeSession(1);
  session.SensitivityCriterion = 20;
  session.CurrentParameters[1].max = 1;  // the working copy plays no part
  session.PreviousValue[1] = 50;
  session.CurrentValue[1] = 69.9f;
  EXPECT_FALSE(HasMoved(session, 1));
  session.CurrentValue[1] = 70;
  EXPECT_TRUE(HasMoved(session, 1)) << "the limit itself is a move";
  session.CurrentValue[1] = 30;
  EXPECT_TRUE(HasMoved(session, 1)) << "down as well as up";
}

TEST(Significance, OfAnEmptyScaleRaises) {
  Session session = MakeSession(1);
  session.Parameters[1].max = session.Parameters[1].min;
  session.CurrentValue[1] = 1;
  try {
    HasMoved(session, 1);
    FAIL() << "no error";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), ErrorNumber::DivisionByZero);
  }
}

TEST(Significance, ComesWithHalfASamplingInterval) {
  Session session = MakeSession(1);
  session.SamplingRate = 2.0 / 86400;
  session.Times.LastPlotTime = 46000;
  session.SampleTime = 46000 + 0.98 / 86400;
  EXPECT_FALSE(IsDue(session));
  session.SampleTime = 46000 + 1.02 / 86400;
  EXPECT_TRUE(IsDue(session));
}

}  // namespace
}  // namespace velk
