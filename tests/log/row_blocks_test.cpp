#include "log/row_blocks.h"

#include <cmath>
#include <fstream>
#include <stdexcept>

#include "log/log_fixture.h"
#include "log/log_reader.h"

namespace velk {
namespace {

using Keys = std::vector<std::int64_t>;

/// A file of 200 rows with an ID each `apart`; A is the number of the row, from 1.
class RowBlocksTest : public test::LogFixture {
 protected:
  void MakeRows(std::int64_t distance) {
    MakeDatabase(path,
                 "CREATE TABLE logData (ID INTEGER PRIMARY KEY, Date DATE, Time DATE, A DOUBLE, B DOUBLE);"
                 "WITH RECURSIVE n(i) AS (VALUES (1) UNION ALL SELECT i + 1 FROM n WHERE i < 200)"
                 "INSERT INTO logData SELECT i * " +
                     std::to_string(distance) + ", 46095, i / 86400.0, i, NULL FROM n");
    apart = distance;
  }
  KeySpan All() const { return {apart, 200 * apart}; }
  /// What the rows of a walk hold, one after the other.
  RowBlock Walk(RowBlocks& blocks) {
    RowBlock all;
    for (RowBlock block; blocks.Next(block, [] {});) {
      ++count;
      for (std::size_t i = 0; i < block.Count(); ++i) {
        all.keys.push_back(block.keys[i]);
        all.times.push_back(block.times[i]);
        for (const double value : block.Values(i)) all.values.push_back(value);
      }
    }
    return all;
  }

  std::int64_t apart = 1;
  int count = 0;  ///< of blocks
};

TEST_F(RowBlocksTest, GiveAllRowsOfASpanInTheirOrderHoweverFarTheirKeysAreApart) {
  for (const std::int64_t distance : {std::int64_t{1}, std::int64_t{1000}, std::int64_t{1} << 52}) {
    path = folder.File(std::to_string(distance) + ".mdb");
    MakeRows(distance);
    LogReader reader(path);
    reader.Choose({0});
    RowBlocks blocks = reader.Blocks(All());
    count = 0;
    const RowBlock all = Walk(blocks);
    ASSERT_EQ(all.Count(), 200U) << distance;
    for (std::size_t i = 0; i < 200; ++i) {
      EXPECT_EQ(all.keys[i], static_cast<std::int64_t>(i + 1) * distance);
      EXPECT_EQ(all.times[i], 46095 + static_cast<double>(i + 1) / 86400);
      EXPECT_EQ(all.values[i], static_cast<double>(i + 1));
    }
    EXPECT_EQ(count > 1, distance == 1000) << "read ahead in parts only where keys can be divided";
    RowBlock behind;
    EXPECT_FALSE(blocks.Next(behind, [] {}));
  }
}

TEST_F(RowBlocksTest, KeepToTheSpanAndToTheChannelsThatWereChosen) {
  MakeRows(1000);
  LogReader reader(path);
  reader.Choose({1, 0});
  RowBlocks blocks = reader.Blocks({50'001, 150'999});
  reader.Choose({});
  const RowBlock all = Walk(blocks);
  ASSERT_EQ(all.Count(), 100U) << "51 to 150 thousand";
  EXPECT_EQ(all.keys.front(), 51'000);
  EXPECT_EQ(all.keys.back(), 150'000);
  EXPECT_TRUE(std::isnan(all.values[0])) << "Null";
  EXPECT_EQ(all.values[1], 51);
}

TEST_F(RowBlocksTest, GiveNothingOfASpanWithoutRows) {
  MakeRows(1000);
  LogReader reader(path);
  for (const KeySpan& span : {KeySpan{1, 999}, KeySpan{300'000, 900'000}}) {
    RowBlocks blocks = reader.Blocks(span);
    EXPECT_EQ(Walk(blocks).Count(), 0U);
  }
}

TEST_F(RowBlocksTest, CanBeLeftWhileTheyWaitForTheFile) {
  MakeRows(1000);
  LogReader reader(path);
  const auto writer = Connection::Open(path, OpenMode::ReadWrite);
  writer->Execute("BEGIN EXCLUSIVE");
  RowBlock block;
  RowBlocks blocks = reader.Blocks(All());
  const auto leave = [&] {
    writer->Execute("ROLLBACK");
    throw std::runtime_error("left");
  };
  EXPECT_THROW(blocks.Next(block, leave), std::runtime_error);
  EXPECT_TRUE(blocks.Next(block, [] {})) << "and be taken up again";
}

TEST_F(RowBlocksTest, RaiseWhatTheReadingOfTheFileRaises) {
  MakeRows(1000);
  {
    // The rows begin on the third page of 4 KiB, or lie below it.
    std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(8192);
    file << std::string(4096, '\xFF');
  }
  LogReader reader(path);
  RowBlock block;
  RowBlocks ahead = reader.Blocks(All());
  RowBlocks here = reader.Blocks({1000, 2000});
  for (RowBlocks* blocks : {&ahead, &here}) EXPECT_THROW(while (blocks->Next(block, [] {})){}, RuntimeError);
  EXPECT_FALSE(ahead.Next(block, [] {})) << "and are at their end then";
}

TEST_F(RowBlocksTest, LetARecordingEndInTheMiddleOfAWalk) {
  NameChannels({"A"});
  StartLog(path);
  for (int i = 0; i < 100; ++i) AppendLogRow();
  log.Writing()->Execute("UPDATE logData SET ID = ID * 1000");
  LogReader reader(path);
  RowBlocks blocks = reader.Blocks({1000, 100'000});
  RowBlock block;
  ASSERT_TRUE(blocks.Next(block, [] {}));
  std::size_t rows = block.Count();
  log.Finalise();
  EXPECT_EQ(FilesInFolder(), (std::vector<std::string>{"run.mdb"}));
  while (blocks.Next(block, [] {})) rows += block.Count();
  EXPECT_EQ(rows, 100U);
}

}  // namespace
}  // namespace velk
