#pragma once

#include <string>
#include <vector>

#include "base/grid_text.h"
#include "instruments/unit/unit_table.h"

namespace velk {

/// The table of a unit while it is edited. The numbers of the channels stand fast.
class UnitGrid {
 public:
  explicit UnitGrid(UnitRows table) : table_(std::move(table)), kept_(table_) {}

  const UnitRows& Table() const { return table_; }
  int RowCount() const { return static_cast<int>(table_.size()); }
  const std::string& Cell(int row, int column) const {
    return table_[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
  }
  /// What keeps a cell from being sent, as far as it is shown.
  OperatorText FaultOf(int row, int column) const;
  /// Whether cells in which nothing stands are shown as faults: not in a table that nobody has filled yet.
  void ShowEmpty(bool shown) { showsEmpty_ = shown; }

  void Enter(int row, int column, const std::string& text);
  void Clear(const CellRange& cells);
  std::string Copy(const CellRange& cells) const;
  /// From the corner of these cells on; a single one that was copied fills all of them. Gives the cells that it went
  /// to.
  CellRange Paste(const CellRange& cells, const std::string& text);
  /// Another table in place of this one; taken back as any change.
  void Load(UnitRows table);
  void Undo();
  bool CanUndo() const { return !before_.empty(); }

  /// The unit or a file has the table as it is.
  void Kept() { kept_ = table_; }
  /// It isn't as it was begun with, nor as it was kept last.
  bool IsChanged() const { return table_ != kept_; }

 private:
  void Write(int row, int column, const std::string& text);
  void Keep();

  UnitRows table_;
  UnitRows kept_;
  bool showsEmpty_ = true;
  std::vector<UnitRows> before_;
};

}  // namespace velk
