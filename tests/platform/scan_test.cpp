#include "platform/database/scan.h"

#include <gtest/gtest.h>

#include <cmath>

#include "base/errors.h"
#include "support/temporary_folder.h"

namespace velk {
namespace {

class ScanTest : public testing::Test {
 protected:
  ScanTest() {
    connection_->Execute(
        "CREATE TABLE t (k INTEGER PRIMARY KEY, a, b);"
        "INSERT INTO t VALUES (1, 2.5, 'text'), (2, NULL, 7), (3, -9, NULL), (4, 1e300, 'x')");
  }
  std::string Query(const std::string& fields) {
    return "SELECT 1 FROM t WHERE k BETWEEN ? AND ? AND Visit(" + fields + ") ORDER BY k";
  }

  test::TemporaryFolder folder_;
  std::shared_ptr<Connection> connection_ = Connection::Open(folder_.File("t.mdb"), OpenMode::CreateNew);
};

TEST_F(ScanTest, VisitsTheRowsOfAQueryWithTheirFields) {
  Scan scan(*connection_, Query("k, a, b"));
  scan.Bind(1, std::int64_t{2}).Bind(2, std::int64_t{3});
  std::vector<std::int64_t> keys;
  std::vector<double> numbers;
  std::vector<FieldValue> values;
  scan.Run([&](std::span<const ScannedField> fields) {
    EXPECT_EQ(fields.size(), 3U);
    keys.push_back(fields[0].Integer());
    numbers.push_back(fields[1].Number());
    values.push_back(fields[2].Value());
    return false;
  });
  EXPECT_EQ(keys, (std::vector<std::int64_t>{2, 3}));
  EXPECT_TRUE(std::isnan(numbers[0])) << "Null";
  EXPECT_EQ(numbers[1], -9);
  EXPECT_EQ(values, (std::vector<FieldValue>{std::int64_t{7}, std::monostate{}}));
}

TEST_F(ScanTest, StopsWhereItsVisitorHasEnoughGoesOnThereOrBeginsAnew) {
  Scan scan(*connection_, Query("b, k"));
  scan.Bind(1, std::int64_t{1}).Bind(2, std::int64_t{4});
  std::vector<std::int64_t> keys;
  const auto two = [&](std::span<const ScannedField> fields) {
    if (keys.empty()) {
      EXPECT_EQ(fields[0].Value(), FieldValue("text"));
      EXPECT_TRUE(std::isnan(fields[0].Number()));
    }
    keys.push_back(fields[1].Integer());
    return keys.size() % 2 == 0;
  };
  EXPECT_TRUE(scan.Run(two));
  EXPECT_EQ(keys, (std::vector<std::int64_t>{1, 2}));
  EXPECT_TRUE(scan.Run(two));
  EXPECT_EQ(keys, (std::vector<std::int64_t>{1, 2, 3, 4}));
  EXPECT_FALSE(scan.Run(two)) << "behind the last row";
  keys.clear();
  EXPECT_TRUE(scan.Run(two));
  scan.Reset();
  keys.clear();
  EXPECT_TRUE(scan.Run(two));
  EXPECT_EQ(keys.front(), 1);
}

TEST_F(ScanTest, RaisesWhatTheEngineSays) {
  EXPECT_THROW(Scan(*connection_, "SELECT 1 FROM nowhere WHERE Visit(1)"), RuntimeError);
}

}  // namespace
}  // namespace velk
