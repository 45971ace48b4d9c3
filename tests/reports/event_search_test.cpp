#include "reports/event_search.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace velk {
namespace {

/// The number of the value, from 0, at which a search for one channel stops; -1 where it doesn't.
int StopsAt(double factor, const std::vector<double>& values) {
  EventSearch search(factor);
  for (std::size_t i = 0; i < values.size(); ++i)
    if (search.Push({&values[i], 1})) return static_cast<int>(i);
  return -1;
}

TEST(EventSearchTest, StopsWhereAValueIsBeyondTheFactorTimesTheMeanOfTwo) {
  EXPECT_EQ(StopsAt(3, {10, 20, 45}), -1) << "the mean is 15, three times that is 45";
  EXPECT_EQ(StopsAt(3, {10, 20, 45.1}), 2);
  EXPECT_EQ(StopsAt(3, {10, 20, 5}), -1) << "a third of it is 5";
  EXPECT_EQ(StopsAt(3, {10, 20, 4.9}), 2);
}

TEST(EventSearchTest, TakesAFactorOfZeroForTwo) {
  EXPECT_EQ(StopsAt(0, {10, 10, 20}), -1);
  EXPECT_EQ(StopsAt(0, {10, 10, 20.1}), 2);
}

TEST(EventSearchTest, MirrorsTheRuleBelowZero) {
  EXPECT_EQ(StopsAt(2, {-10, -10, -20}), -1);
  EXPECT_EQ(StopsAt(2, {-10, -10, -20.1}), 2);
  EXPECT_EQ(StopsAt(2, {-10, -10, -4.9}), 2);
  EXPECT_EQ(StopsAt(2, {-10, -10, 1}), 2) << "above a half of the mean";
}

TEST(EventSearchTest, GoesOnWhereTheMeanIsZeroOrNoNumber) {
  EXPECT_EQ(StopsAt(2, {0, 0, 1000}), -1);
  EXPECT_EQ(StopsAt(2, {-5, 5, 1000}), -1);
  EXPECT_EQ(StopsAt(2, {std::nan(""), 5, 1000}), -1);
  EXPECT_EQ(StopsAt(2, {5, 5, std::nan(""), 1000, 5}), -1) << "until the hole has left the two before";
  EXPECT_EQ(StopsAt(2, {5, 5, std::nan(""), 5, 5, 11}), 5);
}

TEST(EventSearchTest, ComparesWithTheTwoRecordsRightBefore) {
  EXPECT_EQ(StopsAt(2, {1, 1, 2, 3, 5, 8}), -1) << "1.5 to 3, 2.5 to 5, 4 to 8";
  EXPECT_EQ(StopsAt(2, {1, 1, 2, 3, 5, 8.1}), 5);
}

TEST(EventSearchTest, WatchesAllChannels) {
  EventSearch search(2);
  EXPECT_FALSE(search.Push(std::vector<double>{1, 100}));
  EXPECT_FALSE(search.Push(std::vector<double>{1, 100}));
  EXPECT_TRUE(search.Push(std::vector<double>{1, 201}));
}

}  // namespace
}  // namespace velk
