#include "exchange/foreign_tables.h"

#include <algorithm>
#include <array>

#include "base/text.h"
#include "platform/database/catalog.h"
#include "platform/database/command.h"
#include "platform/database/jet_copy.h"
#include "platform/files/file_errors.h"

namespace velk {

namespace {

constexpr int kOffered[] = {2, 3, 4, 5, 7, 16, 20, 133, 134, 135, 137};

/// The types of the Jet format, by its numbers; 0 is none of them.
constexpr std::array<int, 17> kOfJet = {0,
                                        field_type::Boolean,
                                        field_type::Byte,
                                        field_type::SmallInteger,
                                        field_type::Integer,
                                        field_type::Currency,
                                        field_type::Single,
                                        field_type::Double,
                                        field_type::Date,
                                        field_type::Binary,
                                        field_type::WideText,
                                        field_type::Binary,
                                        field_type::Memo,
                                        0,
                                        0,
                                        0,
                                        field_type::Numeric};

/// What a declared type means; the engine itself keeps to none.
struct Declared {
  const char* part;  ///< of the type, in capitals; the first row that fits counts
  int type;
};
constexpr Declared kDeclared[] = {
    {"DATETIME", field_type::Timestamp},
    {"TIMESTAMP", field_type::Timestamp},
    {"DATE", field_type::Date},
    {"TIME", field_type::TimeOnly},
    {"SMALLINT", field_type::SmallInteger},
    {"TINYINT", field_type::TinyInteger},
    {"BIGINT", field_type::BigInteger},
    {"BOOL", field_type::Boolean},
    {"CHAR", field_type::WideText},
    {"CLOB", field_type::Memo},
    {"TEXT", field_type::Memo},
    {"INT", field_type::Integer},
    {"REAL", field_type::Double},
    {"FLOA", field_type::Double},
    {"DOUB", field_type::Double},
    {"NUM", field_type::Numeric},
    {"DEC", field_type::Numeric},
};

int TypeOfDeclared(const std::string& declared) {
  std::string capitals = declared;
  std::transform(capitals.begin(), capitals.end(), capitals.begin(),
                 [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
  for (const Declared& row : kDeclared)
    if (capitals.find(row.part) != std::string::npos) return row.type;
  return field_type::Binary;
}

LiveField FieldOf(std::string name, int type) {
  LiveField field;
  field.Name = std::move(name);
  field.Type = static_cast<std::int16_t>(type);
  return field;
}

std::vector<ForeignTable> TablesOfJet(const std::string& file, const JetTools& tools,
                                      const std::function<void(double bytes)>& step) {
  std::vector<ForeignTable> tables;
  JetReader reader(tools, "tables", file, {}, step);
  for (JetTable table; reader.NextTable(table);) {
    ForeignTable& told = tables.emplace_back(ForeignTable{table.name, {}});
    for (const JetColumn& column : table.columns) {
      const auto type = static_cast<std::size_t>(column.type);
      told.fields.push_back(FieldOf(column.name, type < kOfJet.size() ? kOfJet[type] : 0));
    }
  }
  return tables;
}

std::vector<ForeignTable> TablesOfOurs(const std::string& file) {
  std::vector<ForeignTable> tables;
  const auto connection = Connection::Open(file, OpenMode::Follow);
  Command names(*connection,
                "SELECT name FROM sqlite_schema WHERE type IN ('table', 'view') AND name NOT LIKE 'sqlite\\_%' "
                "ESCAPE '\\' ORDER BY name");
  while (names.Next()) tables.push_back({names.Text(0), {}});
  for (ForeignTable& table : tables) {
    Command columns(*connection, "SELECT name, type FROM pragma_table_info(?)");
    columns.Bind(1, table.name);
    while (columns.Next()) table.fields.push_back(FieldOf(columns.Text(0), TypeOfDeclared(columns.Text(1))));
  }
  return tables;
}

}  // namespace

bool IsOffered(int type) {
  return std::find(std::begin(kOffered), std::end(kOffered), type) != std::end(kOffered);
}

bool CanBeDate(int type) {
  return type == field_type::Date || type == field_type::DayOnly || type == field_type::Timestamp;
}

bool CanBeTime(int type) {
  return type == field_type::Date || type == field_type::TimeOnly || type == field_type::Timestamp;
}

std::vector<ForeignTable> ReadForeignTables(const std::string& file, const JetTools& tools,
                                            const std::function<void(double bytes)>& step) {
  CheckRegularFile(file, false);
  return IsJetFile(file) ? TablesOfJet(file, tools, step) : TablesOfOurs(file);
}

std::vector<std::string> GetTablesName(const std::vector<ForeignTable>& tables) {
  std::vector<std::string> names;
  for (const ForeignTable& table : tables)
    if (!table.name.starts_with("MSys")) names.push_back(table.name);
  return names;
}

std::vector<LiveField> GetFieldsName(const std::vector<ForeignTable>& tables, const std::string& table) {
  std::vector<LiveField> fields;
  for (const ForeignTable& candidate : tables) {
    if (candidate.name != table) continue;
    for (const LiveField& field : candidate.fields)
      if (IsOffered(field.Type)) fields.push_back(field);
  }
  return fields;
}

}  // namespace velk
