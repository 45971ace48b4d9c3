#include "reports/row_order.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace velk {
namespace {

void NoStep(double, double) {
}

std::vector<std::int64_t> KeysShown(const RowOrder& order) {
  std::vector<std::int64_t> keys;
  for (int row = 0; row < order.Count(); ++row) keys.push_back(order.KeyAt(row));
  return keys;
}

using Keys = std::vector<std::int64_t>;

/// Five rows by time with the values 3, 1, 3, 2, 1.
SortedPlaces SortedFive() {
  ColumnSort sort(5);
  const double values[] = {3, 1, 3, 2, 1};
  for (Place place = 0; place < 5; ++place) sort.Take(place, values[place]);
  return sort.Sort(NoStep);
}

TEST(ColumnSortTest, LeavesRowsOfTheSameValueInOrderOfTime) {
  const SortedPlaces sorted = SortedFive();
  EXPECT_EQ(sorted.places, (std::vector<Place>{1, 4, 3, 0, 2}));
  EXPECT_EQ(sorted.sameAsBefore, (std::vector<bool>{false, true, false, false, true}));
}

TEST(ColumnSortTest, PutsEmptyFieldsAheadOfNumbersAndTextsBehindThem) {
  ColumnSort sort(5);
  sort.Take(0, std::string("b"));
  sort.Take(1, 1e300);
  sort.Take(2, {});
  sort.Take(3, std::string("a"));
  sort.Take(4, std::int64_t{-7});
  EXPECT_EQ(sort.Sort(NoStep).places, (std::vector<Place>{2, 4, 1, 3, 0}));
}

TEST(ColumnSortTest, SortsMoreRowsThanItSortsAtOnce) {
  std::mt19937 random(7);
  std::vector<std::pair<double, Place>> rows;
  ColumnSort sort(200'000);
  for (Place place = 0; place < 200'000; ++place) {
    rows.emplace_back(random() % 5000, place);
    sort.Take(place, rows.back().first);
  }
  std::stable_sort(rows.begin(), rows.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  double done = 0, of = 0;
  const SortedPlaces sorted = sort.Sort([&](double now, double all) {
    EXPECT_GT(now, done);
    done = now;
    of = all;
  });
  for (std::size_t i = 0; i < rows.size(); ++i) ASSERT_EQ(sorted.places[i], rows[i].second) << i;
  EXPECT_GE(done, of) << "it tells all of its work";
}

TEST(RowOrderTest, ShowsAllRowsInOrderOfTimeAtFirst) {
  const RowOrder order({10, 11, 14, 12, 13});
  EXPECT_EQ(KeysShown(order), (Keys{10, 11, 14, 12, 13}));
  EXPECT_EQ(order.RowOf(2), 2);
}

TEST(RowOrderTest, ShowsARangeInEitherOrderOfAColumn) {
  const SortedPlaces sorted = SortedFive();
  RowOrder order({10, 11, 12, 13, 14});
  order.SortBy(&sorted, false);
  EXPECT_EQ(KeysShown(order), (Keys{11, 14, 13, 10, 12}));
  order.SortBy(&sorted, true);
  EXPECT_EQ(KeysShown(order), (Keys{10, 12, 13, 11, 14})) << "equal ones in order of time";
  order.SetRange(1, 4);
  EXPECT_EQ(KeysShown(order), (Keys{12, 13, 11}));
  EXPECT_EQ(order.RowOf(3), 1);
  EXPECT_EQ(order.RowOf(0), -1) << "beyond the range";
}

TEST(RowOrderTest, LeavesARowOutUntilItIsRestored) {
  const SortedPlaces sorted = SortedFive();
  RowOrder order({10, 11, 12, 13, 14});
  order.Remove(0);
  EXPECT_EQ(KeysShown(order), (Keys{11, 12, 13, 14}));
  EXPECT_EQ(order.RowOf(0), -1);
  order.SortBy(&sorted, true);
  EXPECT_EQ(KeysShown(order), (Keys{12, 13, 11, 14}));
  order.Remove(3);
  EXPECT_EQ(KeysShown(order), (Keys{12, 11, 14}));
  order.Restore(0, 15);
  EXPECT_EQ(KeysShown(order), (Keys{15, 12, 11, 14})) << "under a new key";
}

TEST(RowOrderTest, OfALogWithoutRowsShowsNothing) {
  RowOrder order(std::vector<std::int64_t>{});
  order.SetRange(0, 0);
  EXPECT_EQ(order.Count(), 0);
}

}  // namespace
}  // namespace velk
