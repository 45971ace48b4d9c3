#pragma once

#include <functional>
#include <string>
#include <vector>

#include "exchange/jet_reader.h"
#include "exchange/live_import.h"

namespace velk {

/// Types of fields, numbered as the data access layer that everyone in this field knows numbers them.
namespace field_type {
inline constexpr int SmallInteger = 2;
inline constexpr int Integer = 3;
inline constexpr int Single = 4;
inline constexpr int Double = 5;
inline constexpr int Currency = 6;
inline constexpr int Date = 7;
inline constexpr int Boolean = 11;
inline constexpr int TinyInteger = 16;
inline constexpr int Byte = 17;
inline constexpr int BigInteger = 20;
inline constexpr int Binary = 128;
inline constexpr int Numeric = 131;
inline constexpr int DayOnly = 133;
inline constexpr int TimeOnly = 134;
inline constexpr int Timestamp = 135;
inline constexpr int WideText = 202;
inline constexpr int Memo = 203;
}  // namespace field_type

/// Whether fields of a type can be followed.
bool IsOffered(int type);
/// Whether a field of a type can tell the date (time) of a row.
bool CanBeDate(int type);
bool CanBeTime(int type);

/// A table of another program's database.
struct ForeignTable {
  std::string name;
  std::vector<LiveField> fields;  ///< name and type of each
};

/// All tables of a database of the Jet format or of ours, which its header tells. `step` is called now and then; it may
/// let events run, and throw to leave it. Raises NotADatabase with the file, and what keeps it from being opened.
std::vector<ForeignTable> ReadForeignTables(const std::string& file, const JetTools& tools,
                                            const std::function<void(double bytes)>& step);

/// The names of the tables that are offered: those that don't begin with "MSys".
std::vector<std::string> GetTablesName(const std::vector<ForeignTable>& tables);
/// The fields of a table that are offered; none for a table that isn't there.
std::vector<LiveField> GetFieldsName(const std::vector<ForeignTable>& tables, const std::string& table);

}  // namespace velk
