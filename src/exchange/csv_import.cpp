#include "exchange/csv_import.h"

#include <future>
#include <optional>

#include "base/errors.h"
#include "exchange/log_tables.h"
#include "exchange/row_inserter.h"
#include "exchange/texts.h"
#include "log/log_schema.h"
#include "log/recording_lock.h"
#include "log/summary_report.h"
#include "log/texts.h"
#include "platform/database/catalog.h"
#include "platform/files/file_errors.h"
#include "platform/files/new_file.h"

namespace velk {

namespace {

constexpr std::size_t kRowsOfBatch = 4096;
/// Rows of one transaction where a log is appended to.
constexpr std::int64_t kRowsKept = 65536;

/// Reads rows in a thread of its own while those before them are written. Nothing is shared but the rows handed over.
class RowsAhead {
 public:
  explicit RowsAhead(CsvRowReader& reader) : reader_(reader) { Begin(); }

  /// The next rows; false behind the last ones.
  bool Next(CsvRows& rows) {
    if (!next_.get()) return false;
    std::swap(rows, ahead_);
    bytes_ = reader_.BytesRead();
    Begin();
    return true;
  }
  double Bytes() const { return static_cast<double>(bytes_); }

 private:
  void Begin() {
    next_ = std::async(std::launch::async, [this] { return reader_.Read(ahead_, kRowsOfBatch); });
  }

  CsvRowReader& reader_;
  CsvRows ahead_;
  std::int64_t bytes_ = 0;
  std::future<bool> next_;  ///< its end waits for the thread
};

/// Writes all rows; `kept` is called behind each batch with the rows so far.
template <class Kept>
CsvImportResult WriteRows(const CsvFile& file, const CsvPlan& plan, RowInserter& inserter, LongTask& task, Kept kept) {
  CsvRowReader reader(file, plan);
  CsvImportResult result;
  {
    RowsAhead ahead(reader);
    CsvRows rows;
    task.Doing(text::ReadingRows);
    while (ahead.Next(rows)) {
      inserter.InsertRows(rows);
      inserter.InsertComments(rows);
      result.rows += static_cast<std::int64_t>(rows.Count());
      kept(result.rows);
      task.Step(ahead.Bytes(), static_cast<double>(file.Bytes().Size()));
    }
  }
  result.badLine = reader.BadLine();
  return result;
}

/// Where an import is left in the middle: what was appended stays, as far as the disk takes it.
void KeepRows(std::optional<Transaction>& transaction, Connection& log) {
  try {
    if (transaction) transaction->Commit();
    log.Finalise();
  } catch (const RuntimeError&) {  // what ended the import is told
  }
}

void EnsureReportOf(Connection& log, const CsvPlan& plan, const Language& language) {
  if (Catalog(log).Find(kSummaryReport)) return;
  Catalog(log).Append(SummaryReportTable(SummaryColumnNames(plan.names, {}, language.In(text::Comments)),
                                         std::vector<bool>(plan.names.size(), true)));
}

}  // namespace

CsvImportResult ImportIntoNewLog(const CsvFile& file, const CsvPlan& plan, const std::string& path, bool replaces,
                                 const Language& language, LongTask& task) {
  const auto lock = replaces ? LockForRecording(path) : nullptr;
  NewFile made(path, replaces ? NewFile::IfThere::Replace : NewFile::IfThere::Refuse);
  CsvImportResult result;
  {
    const auto log = Connection::Open(made.PartName(), OpenMode::CreateNew);
    // Until it has its name nobody needs the file: nothing has to be taken back.
    log->Execute("PRAGMA page_size=16384; PRAGMA journal_mode=MEMORY; PRAGMA cache_size=-65536");
    Transaction transaction(*log);
    CreateLogTables(*log, plan.names, plan.commentField >= 0, language);
    FillGraphSettings(log, plan.names, language);
    RowInserter inserter(log, plan, language.In(text::Comments));
    result = WriteRows(file, plan, inserter, task, [](std::int64_t) {});
    task.Doing(text::MakingIndex);
    task.Step(1, 0);
    Catalog(*log).AppendIndex(kLogDataTimes, kLogData, {"Date", "Time"});
    transaction.Commit();
  }
  made.Complete();
  return result;
}

CsvImportResult AppendToLog(const CsvFile& file, const CsvPlan& plan, const std::string& path, const Language& language,
                            LongTask& task) {
  const auto lock = LockForRecording(path);
  const auto log = Connection::Open(path, OpenMode::ReadWrite);
  auto transaction = std::make_optional<Transaction>(*log);
  EnsureReportOf(*log, plan, language);
  RowInserter inserter(log, plan, CommentsColumn(*log));
  std::int64_t kept = 0;
  const auto keep = [&](std::int64_t rows) {
    if (rows - kept < kRowsKept) return;
    transaction->Commit();
    transaction.emplace(*log);
    kept = rows;
  };
  CsvImportResult result;
  try {
    result = WriteRows(file, plan, inserter, task, keep);
  } catch (...) {
    KeepRows(transaction, *log);
    throw;
  }
  transaction->Commit();
  log->Finalise();
  return result;
}

}  // namespace velk
