#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "log/row_block.h"
#include "log/row_filter.h"
#include "platform/database/command.h"

namespace velk {

/// Adds a statement's present row: key, date, time, then so many channels.
void AddRow(const Command& row, std::size_t channels, RowBlock& block);

/// A walk through all rows of a span of keys, in their order, as they are when they are read. A long span of a file at
/// rest is read ahead by threads that do nothing else, each over a connection of its own; rows come out on the thread
/// that asks for them. A file that is being recorded to is read on that thread alone, and no connection stays open
/// behind a block: the recording may end between two of them.
class RowBlocks {
 public:
  /// What the rows are read by.
  struct Query {
    std::string path;
    std::string columns;  ///< key, date, time and the channels, as they stand in a statement
    std::string key;      ///< the same
    std::vector<std::string> channels;
    bool isRecordedTo;
  };

  RowBlocks(Query query, const KeySpan& span);
  /// Gives up what is being read.
  ~RowBlocks();
  RowBlocks(const RowBlocks&) = delete;
  RowBlocks& operator=(const RowBlocks&) = delete;

  /// The next rows, as many as are read in a few milliseconds; false behind the last one. Where they are not there yet,
  /// `wait` is called every few milliseconds; it may let events run, and throw to leave the walk. Raises what the
  /// opening and the reading of the file raise.
  bool Next(RowBlock& block, const std::function<void()>& wait);

 private:
  class Source;
  class Ahead;

  bool NextHere(RowBlock& block);

  KeySpan rest_;
  bool isDone_ = false;
  std::int64_t rowsOfBlock_;
  std::unique_ptr<Source> here_;  ///< where threads are not worth it, or keys are too far apart to be divided
  std::unique_ptr<Ahead> ahead_;
};

}  // namespace velk
