#include "exchange/import_data.h"

#include <chrono>
#include <cmath>
#include <limits>

#include "base/dates.h"
#include "base/errors.h"
#include "exchange/texts.h"
#include "platform/database/catalog.h"
#include "platform/database/command.h"
#include "platform/database/jet_copy.h"
#include "platform/files/file_errors.h"

namespace velk {

namespace {

constexpr double kSecondsOfDay = 86400;
/// Half a millisecond: times of others are computed in other ways.
constexpr double kTimeGrain = 5e-4;
constexpr double kNoValue = std::numeric_limits<double>::quiet_NaN();
constexpr std::chrono::milliseconds kPiece{8};
constexpr int kRowsBetweenLooks = 64;
/// How often a piece finds the database locked before the run is given up.
constexpr int kMostTries = 50;

/// A cell as a date-time: a number, or a text that tells one; NaN for any other.
double MomentOf(const FieldValue& cell) {
  if (const auto* number = std::get_if<double>(&cell)) return *number;
  if (const auto* whole = std::get_if<std::int64_t>(&cell)) return static_cast<double>(*whole);
  if (const auto* text = std::get_if<std::string>(&cell)) {
    try {
      return CDate(*text);
    } catch (const RuntimeError&) {
      return kNoValue;
    }
  }
  return kNoValue;
}

double NumberOf(const FieldValue& cell) {
  if (const auto* number = std::get_if<double>(&cell)) return *number;
  if (const auto* whole = std::get_if<std::int64_t>(&cell)) return static_cast<double>(*whole);
  return kNoValue;
}

/// Which rows of a table are taken, and what was seen of the others.
class RowTest {
 public:
  explicit RowTest(const std::optional<ForeignStart>& start) : start_(start) {}

  /// The time of a row that is taken; NaN for others.
  double TimeOf(double date, double time) {
    if (!IsDateTime(date) || !IsDateTime(time)) return kNoValue;
    const double day = DatePart(date);
    const double clock = time - std::floor(time);
    const auto second = static_cast<int>(std::min(clock * kSecondsOfDay + kTimeGrain, kSecondsOfDay - 1));
    if (start_ && day > start_->day && (!later_ || day < *later_)) later_ = day;
    if (start_ && (day != start_->day || second < start_->second)) return kNoValue;
    return JoinDateTime(day, TimeOfDay(second / 3600, second / 60 % 60, second % 60));
  }
  const std::optional<double>& LaterDay() const { return later_; }

 private:
  const std::optional<ForeignStart> start_;
  std::optional<double> later_;
};

/// From a database of our engine: rows by their keys, so that each piece goes on where the last one stopped.
class RowsOfOurs : public ForeignRead {
 public:
  RowsOfOurs(const LiveImport& live, const std::optional<ForeignStart>& start) : live_(live), test_(start) {}

  bool Read(std::vector<ForeignRow>& rows) override {
    try {
      if (!command_) Open();
      const bool goesOn = ReadPiece(rows);
      tries_ = 0;
      return goesOn;
    } catch (const RuntimeError& error) {
      if (command_) command_->Reset();
      if (error.Number() != ErrorNumber::DatabaseLocked || ++tries_ > kMostTries) throw;
      return true;
    }
  }
  std::optional<double> LaterDay() const override { return test_.LaterDay(); }

 private:
  void Open() {
    connection_ = Connection::Open(live_.DBaseName, OpenMode::Follow);
    const auto table = Catalog(*connection_).Find(live_.TableName);
    std::string columns = QuoteName(live_.DateField) + ", " + QuoteName(live_.TimeField);
    for (const LiveField& field : live_.Fields) columns += ", " + QuoteName(field.Name);
    const std::string from = " FROM " + QuoteName(live_.TableName);
    const std::string key = table ? KeyOf(*table) : std::string();
    byKey_ = !key.empty() && HasKey(key + from);
    const std::string sql = byKey_ ? "SELECT " + columns + ", " + key + from + " WHERE " + key + " > ? ORDER BY " + key
                                   : "SELECT " + columns + ", 0" + from + " LIMIT -1 OFFSET ?";
    command_ = std::make_unique<Command>(*connection_, sql);
    if (!byKey_) reached_ = 0;
  }

  /// A table that is its own index has none; nor has a view, which is no table.
  bool HasKey(const std::string& keyFrom) const {
    try {
      const Command command(*connection_, "SELECT " + keyFrom + " WHERE 0");
      return true;
    } catch (const RuntimeError& error) {
      if (error.Number() == ErrorNumber::DatabaseLocked) throw;
      return false;
    }
  }

  bool ReadPiece(std::vector<ForeignRow>& rows) {
    const auto end = std::chrono::steady_clock::now() + kPiece;
    command_->Bind(1, reached_);
    for (int count = 1; command_->Next(); ++count) {
      TakeRow(rows);
      if (count % kRowsBetweenLooks != 0 || std::chrono::steady_clock::now() < end) continue;
      command_->Reset();
      return true;
    }
    return false;
  }

  void TakeRow(std::vector<ForeignRow>& rows) {
    const auto fields = static_cast<int>(live_.Fields.size());
    reached_ = byKey_ ? command_->Integer(fields + 2) : reached_ + 1;
    const double time = test_.TimeOf(Moment(0), Moment(1));
    if (std::isnan(time)) return;
    ForeignRow& row = rows.emplace_back(ForeignRow{time, {}});
    for (int i = 0; i < fields; ++i) row.values.push_back(command_->Number(i + 2));
  }

  double Moment(int column) const {
    const double number = command_->Number(column);
    return std::isnan(number) ? MomentOf(command_->Field(column)) : number;
  }

  const LiveImport live_;
  RowTest test_;
  std::shared_ptr<Connection> connection_;
  std::unique_ptr<Command> command_;
  bool byKey_ = true;
  std::int64_t reached_ = std::numeric_limits<std::int64_t>::min();  ///< key of the last row, or how many were read
  int tries_ = 0;
};

/// From a database of the Jet format, by the program that reads such files.
class RowsOfJet : public ForeignRead {
 public:
  RowsOfJet(const LiveImport& live, const JetTools& tools, const std::optional<ForeignStart>& start)
      : live_(live), test_(start), reader_(tools, "rows", live.DBaseName, Words(live, start), {}) {}

  bool Read(std::vector<ForeignRow>& rows) override {
    const auto end = std::chrono::steady_clock::now() + kPiece;
    if (!hasTable_ && !TakeTable()) return true;
    for (int count = 1;; ++count) {
      const JetReader::Came came = reader_.TakeRow(cells_);
      if (came != JetReader::Came::One) return came == JetReader::Came::Nothing;
      TakeRow(rows);
      if (count % kRowsBetweenLooks == 0 && std::chrono::steady_clock::now() >= end) return true;
    }
  }
  std::optional<double> LaterDay() const override { return reader_.LaterDay(); }

 private:
  static std::vector<std::string> Words(const LiveImport& live, const std::optional<ForeignStart>& start) {
    std::vector<std::string> words = {live.TableName};
    if (start)
      words.insert(words.end(), {live.DateField, live.TimeField, std::to_string(static_cast<long long>(start->day)),
                                 std::to_string(start->second)});
    return words;
  }

  bool TakeTable() {
    JetTable table;
    const JetReader::Came came = reader_.TakeTable(table);
    if (came == JetReader::Came::Nothing) return false;
    if (came == JetReader::Came::End) RaiseNoTable();
    date_ = ColumnOf(table, live_.DateField);
    time_ = ColumnOf(table, live_.TimeField);
    for (const LiveField& field : live_.Fields) columns_.push_back(ColumnOf(table, field.Name));
    hasTable_ = true;
    return true;
  }

  std::size_t ColumnOf(const JetTable& table, const std::string& name) const {
    for (std::size_t i = 0; i < table.columns.size(); ++i)
      if (SameName(table.columns[i].name, name)) return i;
    RaiseNoTable();
  }

  [[noreturn]] void RaiseNoTable() const {
    throw RuntimeError(ErrorNumber::NoSuchTable,
                       FileErrorText(ErrorNumber::NoSuchTable, live_.DBaseName + " (" + live_.TableName + ")"));
  }

  void TakeRow(std::vector<ForeignRow>& rows) {
    const double time = test_.TimeOf(MomentOf(cells_[date_]), MomentOf(cells_[time_]));
    if (std::isnan(time)) return;
    ForeignRow& row = rows.emplace_back(ForeignRow{time, {}});
    for (const std::size_t column : columns_) row.values.push_back(NumberOf(cells_[column]));
  }

  const LiveImport live_;
  RowTest test_;
  JetReader reader_;
  bool hasTable_ = false;
  std::size_t date_ = 0, time_ = 0;
  std::vector<std::size_t> columns_;
  std::vector<FieldValue> cells_;
};

}  // namespace

ForeignStart StartAt(double time) {
  const DateParts parts = Split(time);
  return {DatePart(time), parts.hour * 3600 + parts.minute * 60 + parts.second};
}

void ImportData::Initialize(const LiveImport& live, const JetTools& tools) {
  if (live.DBaseName.empty() || live.TableName.empty() || live.DateField.empty() || live.TimeField.empty())
    throw RuntimeError(kInvalidParameters, text::InvalidParameters);
  live_ = live;
  tools_ = tools;
}

std::unique_ptr<ForeignRead> ImportData::Begin(const std::optional<ForeignStart>& start) const {
  if (IsJetFile(live_.DBaseName)) return std::make_unique<RowsOfJet>(live_, tools_, start);
  return std::make_unique<RowsOfOurs>(live_, start);
}

std::unique_ptr<ForeignRead> ImportData::ReadData(const ForeignStart& start) const {
  return Begin(start);
}

std::unique_ptr<ForeignRead> ImportData::ReadAll() const {
  return Begin(std::nullopt);
}

}  // namespace velk
