#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/grid_text.h"
#include "base/operator_text.h"
#include "model/session.h"
#include "settings/table_cells.h"

namespace velk {

/// The table in which the parameters are edited: a row each, all cells texts. It holds what was typed, sound or not,
/// and tells what is wrong where. Rows and columns are counted from 0, columns over those that the table has.
class ParameterTable {
 public:
  /// CurrentParameters 1 to TotalParameters. Alarms have their columns while AcquisitionMode is set.
  /// `tags` says where channels 1 and further come from; without any there is no column of them.
  explicit ParameterTable(const Session& session, const std::vector<std::string>& tags = {});

  int RowCount() const { return static_cast<int>(cells_.size()); }
  int ColumnCount() const { return static_cast<int>(columns_.size()); }
  TableColumn Column(int column) const { return columns_[static_cast<std::size_t>(column)]; }
  /// The place of a column; -1 where the table hasn't it.
  int PlaceOf(TableColumn column) const;
  bool HasAlarms() const { return PlaceOf(TableColumn::LowerAlarm) >= 0; }

  const std::string& Cell(int row, int column) const;
  const std::string& Cell(int row, TableColumn column) const { return Cell(row, PlaceOf(column)); }
  /// Whether a cell was changed and not changed back.
  bool IsChanged(int row, TableColumn column) const;

  struct Edit {
    int row;
    int column;
    std::string text;
  };
  /// One step, which Undo takes back as one. Cells outside the table are left out.
  void Change(const std::vector<Edit>& edits);
  bool CanUndo() const { return !steps_.empty(); }
  void Undo();

  /// The cells as text for the clipboard.
  std::string Copy(const CellRange& range) const;
  struct Pasted {
    CellRange cells;       ///< those that were filled
    bool isWhole = false;  ///< nothing reached beyond the table
  };
  /// Puts cells in from the upper left corner of `at` on; a single one into all of `at`. What reaches beyond the table
  /// is left out.
  Pasted Paste(const CellRange& at, std::string_view text);

  /// What keeps the table from being closed; nothing for a sound cell.
  std::optional<MessageText> FaultOf(int row, int column) const;
  /// Whether the maximum is above the minimum, both as they are read.
  bool ScaleIsSound(int row) const;
  /// Another row above has the same name: said where it stands, and no more.
  bool RepeatsName(int row) const;

  struct Place {
    int row;
    int column;
  };
  /// The first cell with a fault, row by row; nothing where the table may be closed.
  std::optional<Place> FirstFault() const;

 private:
  using Row = std::vector<std::string>;
  std::string& At(int row, int column);

  std::vector<TableColumn> columns_;
  std::vector<Row> cells_;
  std::vector<Row> before_;               ///< as the table was opened
  std::vector<std::vector<Edit>> steps_;  ///< each with the texts that it has replaced
};

/// Puts the table's rows into CurrentParameters; a cell that nobody has changed, or whose text can't be read, leaves
/// its field as it is. A maximum that is not above its minimum becomes minimum + 100. Gives whether there was one.
bool StoreTable(Session& session, const ParameterTable& table);

/// Takes edited CurrentParameters over into what they came from. While AcquisitionMode is set that is the unit's
/// configuration: who has a name is shown, but of the computed channels those that were included. Else it is what
/// plays, and of computed channels the unit's configuration, but for whether and where they are shown.
void CarryTableBack(Session& session);

}  // namespace velk
