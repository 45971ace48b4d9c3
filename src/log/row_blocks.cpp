#include "log/row_blocks.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <map>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include "log/log_schema.h"
#include "log/row_time.h"
#include "platform/database/scan.h"
#include "platform/database/table_pages.h"

namespace velk {

namespace {

constexpr std::int64_t kFieldsOfBlock = std::int64_t{1} << 16;
constexpr std::size_t kFieldsBeforeValues = 3;
constexpr std::uint64_t kFewBlocks = 4;
constexpr std::uint64_t kManyBlocks = std::uint64_t{1} << 20;
constexpr unsigned kMostThreads = 4;
constexpr std::int64_t kAheadOfAThread = 3;  ///< blocks, of half a megabyte each
constexpr std::chrono::milliseconds kWaitAtOnce(5);

}  // namespace

void AddRow(const Command& row, std::size_t channels, RowBlock& block) {
  block.keys.push_back(row.Integer(0));
  block.times.push_back(RowTime(row, 1));
  for (int i = 0; i < static_cast<int>(channels); ++i)
    block.values.push_back(row.Number(i + static_cast<int>(kFieldsBeforeValues)));
}

/// The file, for one thread.
class RowBlocks::Source {
 public:
  explicit Source(Query query) : query_(std::move(query)) {}

  /// The first rows of a span, `most` of them at most.
  void Read(const KeySpan& span, std::int64_t most, RowBlock& block) {
    if (!rows_) Open();
    Empty(block, most);
    rows_->Bind(1, span.first).Bind(2, span.last);
    rows_->Run([&](std::span<const ScannedField> fields) {
      block.keys.push_back(fields[0].Integer());
      block.times.push_back(RowTime(fields[1], fields[2]));
      for (const ScannedField& field : fields.subspan(kFieldsBeforeValues)) block.values.push_back(field.Number());
      return static_cast<std::int64_t>(block.Count()) == most;
    });
    rows_->Reset();
    if (connection_->IsRecordedTo()) Close();
  }

  /// All rows of a span of so many keys.
  void ReadPart(const KeySpan& span, std::int64_t keys, RowBlock& block) {
    if (!rows_) Open();
    Empty(block, keys);
    const bool isRead = pages_->Read(span.first, span.last, [&](std::int64_t key, std::span<const double> fields) {
      block.keys.push_back(key);
      block.times.push_back(RowTime(fields[0], fields[1]));
      block.values.insert(block.values.end(), fields.begin() + 2, fields.end());
    });
    if (!isRead) Read(span, keys, block);
  }

 private:
  void Empty(RowBlock& block, std::int64_t most) const {
    const auto rows = static_cast<std::size_t>(most);
    block = {};
    block.channels = query_.channels.size();
    block.keys.reserve(rows);
    block.times.reserve(rows);
    block.values.reserve(rows * block.channels);
  }
  void Open() {
    connection_ = Connection::Open(query_.path, OpenMode::ReadOnly);
    rows_.emplace(*connection_, "SELECT 1 FROM logData NOT INDEXED WHERE " + query_.key +
                                    " BETWEEN ? AND ? AND Visit(" + query_.columns + ") ORDER BY " + query_.key);
    std::vector<std::string> columns{"Date", "Time"};
    columns.insert(columns.end(), query_.channels.begin(), query_.channels.end());
    pages_.emplace(*connection_, kLogData, columns, 2);
  }
  void Close() {
    rows_.reset();
    pages_.reset();
    connection_.reset();
  }

  const Query query_;
  std::shared_ptr<Connection> connection_;
  std::optional<Scan> rows_;
  std::optional<TablePages> pages_;
};

/// The threads, and what they have read: the span in parts of so many keys, each thread taking the next part.
class RowBlocks::Ahead {
 public:
  Ahead(const Query& query, const KeySpan& span, std::int64_t keysOfPart, std::int64_t parts)
      : span_(span), keysOfPart_(keysOfPart), parts_(parts) {
    const unsigned count = std::clamp(std::thread::hardware_concurrency(), 1U, kMostThreads);
    most_ = kAheadOfAThread * count;
    for (unsigned i = 0; i < count; ++i) threads_.emplace_back([this, query] { Work(query); });
  }
  ~Ahead() {
    {
      const std::lock_guard lock(mutex_);
      ends_ = true;
    }
    space_.notify_all();
    for (std::thread& thread : threads_) thread.join();
  }
  Ahead(const Ahead&) = delete;
  Ahead& operator=(const Ahead&) = delete;

  /// The next part; false behind the last one.
  bool Next(RowBlock& block, const std::function<void()>& wait) {
    if (taken_ == parts_) return false;
    while (!IsThere()) wait();
    Part part;
    {
      const std::lock_guard lock(mutex_);
      part = std::move(read_.extract(taken_).mapped());
      taken_ = part.failure ? parts_ : taken_ + 1;
    }
    space_.notify_one();
    if (part.failure) std::rethrow_exception(part.failure);
    block = std::move(part.rows);
    return true;
  }

 private:
  struct Part {
    RowBlock rows;
    std::exception_ptr failure;
  };

  bool IsThere() {
    std::unique_lock lock(mutex_);
    return ready_.wait_for(lock, kWaitAtOnce, [this] { return read_.contains(taken_); });
  }

  void Work(const Query& query) {
    Source source(query);
    for (bool isSound = true; isSound;) {
      const auto number = TakePart();
      if (!number) return;
      Part part;
      try {
        source.ReadPart(SpanOf(*number), keysOfPart_, part.rows);
      } catch (...) {
        part.failure = std::current_exception();
        isSound = false;
      }
      {
        const std::lock_guard lock(mutex_);
        read_.emplace(*number, std::move(part));
      }
      ready_.notify_one();
    }
  }
  KeySpan SpanOf(std::int64_t part) const {
    const std::int64_t first = span_.first + part * keysOfPart_;
    return {first, span_.last - first < keysOfPart_ ? span_.last : first + keysOfPart_ - 1};
  }
  /// Nothing at the end.
  std::optional<std::int64_t> TakePart() {
    std::unique_lock lock(mutex_);
    space_.wait(lock, [this] { return ends_ || next_ == parts_ || next_ < taken_ + most_; });
    if (ends_ || next_ == parts_) return std::nullopt;
    return next_++;
  }

  const KeySpan span_;
  const std::int64_t keysOfPart_, parts_;
  std::int64_t most_ = 0;
  std::vector<std::thread> threads_;

  std::mutex mutex_;  ///< of all that stands below
  std::condition_variable space_, ready_;
  std::int64_t next_ = 0, taken_ = 0;
  bool ends_ = false;
  std::map<std::int64_t, Part> read_;
};

RowBlocks::RowBlocks(Query query, const KeySpan& span)
    : rest_(span),
      rowsOfBlock_(kFieldsOfBlock / static_cast<std::int64_t>(query.channels.size() + kFieldsBeforeValues)) {
  const std::uint64_t keys = static_cast<std::uint64_t>(span.last) - static_cast<std::uint64_t>(span.first);
  const std::uint64_t parts = keys / static_cast<std::uint64_t>(rowsOfBlock_) + 1;
  if (query.isRecordedTo || parts < kFewBlocks || parts > kManyBlocks)
    here_ = std::make_unique<Source>(std::move(query));
  else
    ahead_ = std::make_unique<Ahead>(query, span, rowsOfBlock_, static_cast<std::int64_t>(parts));
}

RowBlocks::~RowBlocks() = default;

bool RowBlocks::Next(RowBlock& block, const std::function<void()>& wait) {
  do {
    const bool there = here_ ? NextHere(block) : ahead_->Next(block, wait);
    if (!there) return false;
  } while (block.Count() == 0);
  return true;
}

bool RowBlocks::NextHere(RowBlock& block) {
  if (isDone_) return false;
  here_->Read(rest_, rowsOfBlock_, block);
  isDone_ = block.Count() == 0 || block.keys.back() == rest_.last;
  if (!isDone_) rest_.first = block.keys.back() + 1;
  return true;
}

}  // namespace velk
