#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "platform/database/command.h"
#include "platform/database/connection.h"
#include "platform/database/page_file.h"

namespace velk {

/// Numbers of a table's rows, taken from the pages of its file where they lie: of a wide table that is ten times as
/// fast as statements are. The engine's lock is held meanwhile, and it is the engine that reads the file; only what
/// stands in the pages is understood here. Whatever is out of the ordinary is left to statements.
///
/// A page: its kind, at byte 3 how many cells it has, then where each begins, two bytes each. Numbers have the highest
/// byte first; those of any length have seven bits a byte, the eighth telling of more to come.
class TablePages {
 public:
  /// Takes a row: its key, and the fields in the order of the columns; NaN for Null and what is no number.
  using Take = std::function<void(std::int64_t key, std::span<const double> fields)>;

  /// Texts in the first `numbers` of the columns are left to statements. The connection outlives this, and reads only.
  TablePages(const Connection& connection, const std::string& table, const std::vector<std::string>& columns,
             std::size_t numbers);

  /// All rows whose keys lie between two, both included, in their order. False where a statement has to do it: rows may
  /// have been taken then. Raises as told at Connection.
  bool Read(std::int64_t first, std::int64_t last, const Take& take);

 private:
  using Bytes = std::span<const unsigned char>;
  /// A field in the present row.
  struct Field {
    std::size_t column;
    std::uint64_t type = 0;
    std::size_t at = 0;  ///< behind the header
  };
  struct Span {
    std::int64_t first, last;
  };

  bool ReadLocked(std::uint32_t root, const Span& keys, const Take& take);
  std::optional<int> DepthOfLeaves(std::uint32_t page) const;
  bool FindLeaves(std::uint32_t page, const Span& keys, int above);
  bool ReadLeaves(const Span& keys, const Take& take);
  bool TakeRows(Bytes page, const Span& keys, const Take& take);
  bool TakeRow(Bytes page, std::size_t cell, const Span& keys, const Take& take);
  bool LayOut(Bytes header, std::size_t at);

  PageFile file_;
  Command root_;
  std::vector<Field> fields_;
  std::size_t numbers_;
  bool isPlain_ = true;  ///< the table has all its columns in each row, in order

  std::vector<std::uint32_t> leaves_;
  std::vector<unsigned char> pages_;
  std::vector<unsigned char> header_;  ///< of the row that fields_ were laid out for
  std::size_t end_ = 0;                ///< of that row
  std::vector<std::pair<std::uint64_t, std::size_t>> types_;
  std::vector<double> values_;
};

}  // namespace velk
