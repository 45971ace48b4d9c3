// Reads one file of a Jet database for VELK, which trusts neither such files nor the library that reads them: it runs
// this program, under limits of its own, and takes what comes out as any bytes from outside.
//
//   velk_jet_reader tables CHARSET FILE                            what tables there are, with their columns
//   velk_jet_reader rows CHARSET FILE TABLE                        all rows of a table
//   velk_jet_reader rows CHARSET FILE TABLE DATE TIME DAY SECOND   those of one day, from a second of it on
//
// CHARSET is that of texts in files of version 3, such as CP1251. The answer goes to the standard output, numbers in the
// machine's order: "VELKJET1"; for each table 'T', its name and count of columns, and for each column its name and
// type (a byte, as the format numbers them); for each row 'R' and its cells, each a byte (0 nothing, 1 a 64-bit float,
// 2 a 64-bit whole number, 3 a text) and the value; behind rows of one day 'D' and, as a 64-bit float, the earliest
// later day that there are rows of; behind all rows of a table of which some could not be read 'L' and how many, as a
// 64-bit whole number; at the end 'E'. Names and texts are a 32-bit length and UTF-8.
// Without the 'E' the answer is not whole.

// Ahead of the library, which would take it for C.
#include <glib.h>
//
#include <mdbtools.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <strings.h>
#include <cmath>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

#ifdef VELK_SANITIZED  // a sanitizer reserves terabytes of addresses for itself
constexpr rlim_t kMemory = RLIM_INFINITY;
#else
constexpr rlim_t kMemory = 512U << 20;
#endif
constexpr rlim_t kSeconds = 60;
constexpr std::size_t kMostOutput = std::size_t{4} << 30;
constexpr std::size_t kMostText = 1 << 20;
constexpr int kObjectsPage = 2;

void Limit(int what, rlim_t most) {
  const rlimit limit{most, most};
  setrlimit(static_cast<__rlimit_resource>(what), &limit);
}

void LimitAll() {
  Limit(RLIMIT_AS, kMemory);
  Limit(RLIMIT_CPU, kSeconds);
  Limit(RLIMIT_CORE, 0);
  Limit(RLIMIT_FSIZE, 0);
  Limit(RLIMIT_NPROC, 0);
  prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
  // Whoever asked is gone: nobody reads the answer.
  prctl(PR_SET_PDEATHSIG, SIGKILL);
}

/// What goes out, in large pieces.
class Answer {
 public:
  ~Answer() { Flush(); }
  void Byte(int value) { Put(static_cast<char>(value)); }
  template <class Value>
  void Number(Value value) {
    char bytes[sizeof value];
    std::memcpy(bytes, &value, sizeof value);
    for (const char byte : bytes) Put(byte);
  }
  void Text(const char* text, std::size_t size) {
    Number(static_cast<std::uint32_t>(size));
    buffer_.append(text, size);
    if (buffer_.size() >= kPiece) Flush();
  }
  void Text(const char* text) { Text(text, std::strlen(text)); }
  void Flush() {
    written_ += buffer_.size();
    if (written_ > kMostOutput) std::_Exit(3);
    for (std::size_t done = 0; done < buffer_.size();) {
      const ssize_t count = write(STDOUT_FILENO, buffer_.data() + done, buffer_.size() - done);
      if (count <= 0) std::_Exit(4);
      done += static_cast<std::size_t>(count);
    }
    buffer_.clear();
  }

 private:
  static constexpr std::size_t kPiece = 256 * 1024;
  void Put(char byte) {
    buffer_ += byte;
    if (buffer_.size() >= kPiece) Flush();
  }

  std::string buffer_;
  std::size_t written_ = 0;
};

/// A table's place in the file, by the catalogue that stands on a page of its own. The library's way to the catalogue
/// reads the properties of all objects too, and never ends on some damaged files.
struct Place {
  std::string name;
  long type = 0;
  unsigned long page = 0;
};

MdbColumn* ColumnOf(const MdbTableDef* table, const char* name) {
  for (unsigned i = 0; i < table->num_cols; ++i) {
    auto* column = static_cast<MdbColumn*>(g_ptr_array_index(table->columns, i));
    if (strcasecmp(column->name, name) == 0) return column;
  }
  return nullptr;
}

std::vector<MdbColumn*> ColumnsOf(const MdbTableDef* table) {
  std::vector<MdbColumn*> columns;
  for (unsigned i = 0; i < table->num_cols; ++i)
    columns.push_back(static_cast<MdbColumn*>(g_ptr_array_index(table->columns, i)));
  return columns;
}

MdbTableDef* OpenTable(MdbHandle* file, const Place& place) {
  auto* entry = static_cast<MdbCatalogEntry*>(std::calloc(1, sizeof(MdbCatalogEntry)));
  entry->mdb = file;
  std::snprintf(entry->object_name, sizeof entry->object_name, "%s", place.name.c_str());
  entry->object_type = MDB_TABLE;
  entry->table_pg = place.page;
  MdbTableDef* table = mdb_read_table(entry);
  if (table == nullptr || mdb_read_columns(table) == nullptr) return nullptr;
  mdb_rewind_table(table);
  return table;
}

/// Whether the present row has a value there that lies within its page.
bool HasCell(const MdbColumn* column) {
  return column->cur_value_len > 0 && column->cur_value_start >= 0 &&
         column->cur_value_start + column->cur_value_len <= MDB_PGSIZE;
}

template <class Value>
Value Raw(const MdbHandle* file, const MdbColumn* column) {
  Value value{};
  if (HasCell(column) && column->cur_value_len >= static_cast<int>(sizeof value))
    std::memcpy(&value, file->pg_buf + column->cur_value_start, sizeof value);
  return value;
}

std::string TextOf(MdbHandle* file, const MdbColumn* column) {
  if (!HasCell(column)) return {};
  char* text = mdb_col_to_string(file, file->pg_buf, column->cur_value_start, column->col_type, column->cur_value_len);
  std::string result = text == nullptr ? "" : text;
  g_free(text);
  return result;
}

std::vector<Place> Places(MdbHandle* file) {
  std::vector<Place> places;
  MdbTableDef* objects = OpenTable(file, {"MSysObjects", MDB_TABLE, kObjectsPage});
  if (objects == nullptr) return places;
  const MdbColumn *id = ColumnOf(objects, "Id"), *name = ColumnOf(objects, "Name"), *type = ColumnOf(objects, "Type");
  if (id == nullptr || name == nullptr || type == nullptr) return places;
  while (mdb_fetch_row(objects) && places.size() < 10'000) {
    Place place{TextOf(file, name), Raw<std::int16_t>(file, type) & 0x7F,
                static_cast<unsigned long>(Raw<std::uint32_t>(file, id) & 0x00FFFFFF)};
    if (place.type == MDB_TABLE && !place.name.empty()) places.push_back(std::move(place));
  }
  return places;
}

void PutHead(Answer& answer, const char* name, const std::vector<MdbColumn*>& columns) {
  answer.Byte('T');
  answer.Text(name);
  answer.Number(static_cast<std::uint32_t>(columns.size()));
  for (const MdbColumn* column : columns) {
    answer.Text(column->name);
    answer.Byte(column->col_type);
  }
}

void PutReal(Answer& answer, double value) {
  answer.Byte(1);
  answer.Number(value);
}

void PutWhole(Answer& answer, std::int64_t value) {
  answer.Byte(2);
  answer.Number(value);
}

void PutCell(Answer& answer, MdbHandle* file, const MdbColumn* column) {
  // A truth is told by the mark of a missing value.
  if (column->col_type == MDB_BOOL) return PutWhole(answer, column->cur_value_len == 0 ? 1 : 0);
  if (!HasCell(column)) return answer.Byte(0);
  switch (column->col_type) {
    case MDB_BYTE:
      return PutWhole(answer, Raw<std::uint8_t>(file, column));
    case MDB_INT:
      return PutWhole(answer, Raw<std::int16_t>(file, column));
    case MDB_LONGINT:
      return PutWhole(answer, Raw<std::int32_t>(file, column));
    case MDB_MONEY:
      return PutReal(answer, static_cast<double>(Raw<std::int64_t>(file, column)) / 10000);
    case MDB_FLOAT:
      return PutReal(answer, static_cast<double>(Raw<float>(file, column)));
    case MDB_DOUBLE:
    case MDB_DATETIME:
      return PutReal(answer, Raw<double>(file, column));
    case MDB_NUMERIC:
      return PutReal(answer, std::strtod(TextOf(file, column).c_str(), nullptr));
    case MDB_TEXT:
    case MDB_MEMO: {
      const std::string text = TextOf(file, column);
      answer.Byte(3);
      return answer.Text(text.data(), text.size());
    }
    default:
      return answer.Byte(0);
  }
}

/// Which rows are wanted: those of a day, from a second of it on.
struct Filter {
  const MdbColumn* date = nullptr;
  const MdbColumn* time = nullptr;
  double day = 0;
  double second = 0;
  double laterDay = 0;  ///< the earliest one behind that day; 0 where none was seen

  bool Passes(const MdbHandle* file) {
    constexpr double kSecondsOfDay = 86400;
    // Times of others are computed in other ways.
    constexpr double kGrain = 5e-4;
    if (date == nullptr) return true;
    if (!HasCell(date) || !HasCell(time)) return false;
    const double rowDay = std::floor(Raw<double>(file, date)), clock = Raw<double>(file, time);
    if (rowDay > day && (laterDay == 0 || rowDay < laterDay)) laterDay = rowDay;
    return rowDay == day && std::floor((clock - std::floor(clock)) * kSecondsOfDay + kGrain) >= second;
  }
};

bool IsMoment(const MdbColumn* column) {
  return column != nullptr && column->col_type == MDB_DATETIME;
}

int PutRows(Answer& answer, MdbHandle* file, const char* path, char** arguments, int count) {
  struct stat status {};
  const std::int64_t most = stat(path, &status) == 0 ? status.st_size : 0;
  for (const Place& place : Places(file)) {
    if (strcasecmp(place.name.c_str(), arguments[0]) != 0) continue;
    MdbTableDef* table = OpenTable(file, place);
    if (table == nullptr) return 2;
    Filter filter;
    if (count >= 5) filter = {ColumnOf(table, arguments[1]), ColumnOf(table, arguments[2]), std::atof(arguments[3]),
                              std::atof(arguments[4])};
    if (count >= 5 && (!IsMoment(filter.date) || !IsMoment(filter.time))) return 2;
    const auto columns = ColumnsOf(table);
    PutHead(answer, place.name.c_str(), columns);
    std::int64_t rows = 0;
    // A row takes two bytes at least: more than that are a circle of pages.
    for (; mdb_fetch_row(table); ++rows) {
      if (rows > most / 2) return 2;
      if (!filter.Passes(file)) continue;
      answer.Byte('R');
      for (const MdbColumn* column : columns) PutCell(answer, file, column);
    }
    if (filter.laterDay != 0) {
      answer.Byte('D');
      answer.Number(filter.laterDay);
    }
    if (filter.date == nullptr && rows < static_cast<std::int64_t>(table->num_rows)) {
      answer.Byte('L');
      answer.Number(static_cast<std::int64_t>(table->num_rows) - rows);
    }
    answer.Byte('E');
    return 0;
  }
  return 1;
}

int PutTables(Answer& answer, MdbHandle* file) {
  for (const Place& place : Places(file))
    if (MdbTableDef* table = OpenTable(file, place)) PutHead(answer, place.name.c_str(), ColumnsOf(table));
  answer.Byte('E');
  return 0;
}

}  // namespace

int main(int count, char** arguments) {
  LimitAll();
  if (count < 4) return 2;
  const std::string work = arguments[1];
  setenv("MDB_JET3_CHARSET", arguments[2], 1);
  setenv("MDBICONV", "UTF-8", 1);
  MdbHandle* file = mdb_open(arguments[3], MDB_NOFLAGS);
  if (file == nullptr) return 2;
  mdb_set_bind_size(file, kMostText);
  Answer answer;
  for (const char byte : {'V', 'E', 'L', 'K', 'J', 'E', 'T', '1'}) answer.Byte(byte);
  int result = 2;
  if (work == "tables") result = PutTables(answer, file);
  if (work == "rows" && count >= 5) result = PutRows(answer, file, arguments[3], arguments + 4, count - 4);
  answer.Flush();
  // What the library holds goes with the process; giving it back is one more way to trip over a damaged file.
  std::_Exit(result);
}
