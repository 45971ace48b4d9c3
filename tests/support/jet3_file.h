#pragma once

#include <string>
#include <vector>

#include "platform/database/command.h"

namespace velk::test {

/// A database of version 3 of the Jet format, put together byte by byte. Names and texts are bytes of any code page:
/// the format doesn't tell of which.
class Jet3File {
 public:
  /// Types as the format numbers them.
  enum Type { Int = 3, LongInt = 4, Double = 7, DateTime = 8, Text = 10, Memo = 12 };
  struct Column {
    std::string name;
    Type type;
  };
  using Row = std::vector<FieldValue>;

  /// A table of so few columns that its definition has room in one page of 2,048 bytes, as each row has.
  void AddTable(const std::string& name, const std::vector<Column>& columns, const std::vector<Row>& rows);
  /// The whole file.
  std::string Bytes() const;

 private:
  struct Table {
    std::string name;
    std::vector<Column> columns;
    std::vector<Row> rows;
  };
  std::vector<Table> tables_;
};

}  // namespace velk::test
