// A sound file of rows and an index with any of its bytes changed: the pages are left to statements, or give what these
// give wherever the engine's own check finds the file sound. The input is places and bytes, three bytes a change.

#include <unistd.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/errors.h"
#include "platform/database/command.h"
#include "platform/database/connection.h"
#include "platform/database/index_pages.h"
#include "platform/database/table_pages.h"

namespace {

using velk::Command;
using velk::Connection;
using velk::OpenMode;
using Numbers = std::vector<double>;  // of one row after the other, the key first

const std::string kFile =
    (std::filesystem::temp_directory_path() / ("fuzz_table_pages-" + std::to_string(getpid()))).string();

std::string SoundFile() {
  std::filesystem::remove(kFile);
  Connection::Open(kFile, OpenMode::CreateNew)
      ->Execute(
          "PRAGMA page_size=512; CREATE TABLE logData (ID INTEGER PRIMARY KEY, A DOUBLE, B, C);"
          "CREATE INDEX byTwo ON logData (C, A);"
          "WITH RECURSIVE n(i) AS (VALUES (1) UNION ALL SELECT i + 1 FROM n WHERE i < 120)"
          "INSERT INTO logData SELECT i, i / 7.0, CASE i % 6 WHEN 0 THEN NULL WHEN 1 THEN 'text' WHEN 2 THEN -i"
          " WHEN 3 THEN i * 1000000 WHEN 4 THEN i % 2 ELSE i * -1e12 END,"
          "i * 7 % 10 FROM n");
  std::ifstream stream(kFile, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

std::optional<Numbers> OfPages(const Connection& connection) {
  Numbers numbers;
  velk::TablePages pages(connection, "logData", {"A", "B"}, 1);
  const bool isRead = pages.Read(10, 110, [&](std::int64_t key, std::span<const double> fields) {
    numbers.push_back(static_cast<double>(key));
    numbers.insert(numbers.end(), fields.begin(), fields.end());
  });
  return isRead ? std::optional(numbers) : std::nullopt;
}

std::optional<Numbers> OfIndex(Connection& connection) {
  std::vector<std::int64_t> keys;
  if (!velk::KeysFromIndex(connection, "logData", {"C", "A"}, keys, [] {})) return std::nullopt;
  return Numbers(keys.begin(), keys.end());
}

/// The fields of all rows that a statement gives.
Numbers OfStatement(const Connection& connection, const char* sql) {
  Numbers numbers;
  Command rows(connection, sql);
  while (rows.Next())
    for (int i = 0; i < rows.ColumnCount(); ++i) numbers.push_back(rows.Number(i));
  return numbers;
}

bool IsSound(const Connection& connection) {
  Command check(connection, "PRAGMA integrity_check(1)");
  return check.Next() && check.Text(0) == "ok";
}

bool AreSame(const Numbers& a, const Numbers& b) {
  bool same = a.size() == b.size();
  for (std::size_t i = 0; i < a.size() && same; ++i) same = a[i] == b[i] || (std::isnan(a[i]) && std::isnan(b[i]));
  return same;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const std::string sound = SoundFile();
  std::string bytes = sound;
  for (std::size_t i = 0; i + 2 < size; i += 3)
    bytes[static_cast<std::size_t>(data[i] << 8 | data[i + 1]) % bytes.size()] = static_cast<char>(data[i + 2]);
  std::ofstream(kFile, std::ios::binary) << bytes;
  try {
    const auto connection = Connection::Open(kFile, OpenMode::ReadOnly);
    const auto rows = OfPages(*connection), order = OfIndex(*connection);
    if ((!rows && !order) || !IsSound(*connection)) return 0;
    const char* stated = "SELECT rowid, A, B FROM logData WHERE rowid BETWEEN 10 AND 110 ORDER BY rowid";
    if (rows && !AreSame(*rows, OfStatement(*connection, stated))) std::abort();
    if (order &&
        !AreSame(*order, OfStatement(*connection, "SELECT rowid FROM logData NOT INDEXED ORDER BY C, A, rowid")))
      std::abort();
  } catch (const velk::RuntimeError&) {
    return 0;  // the engine refuses the file
  }
  return 0;
}
