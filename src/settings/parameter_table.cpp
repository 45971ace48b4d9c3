#include "settings/parameter_table.h"

#include <algorithm>

#include "base/grid_text.h"
#include "base/number_entry.h"
#include "model/field_name.h"
#include "model/graph_map.h"
#include "model/number_formats.h"
#include "model/texts.h"
#include "platform/database/catalog.h"
#include "settings/texts.h"

namespace velk {

// --- Cells ---

ParameterTable::ParameterTable(const Session& session, const std::vector<std::string>& tags) {
  for (int i = 0; i < kTableColumns; ++i) {
    const auto column = static_cast<TableColumn>(i);
    const bool isAlarm = column == TableColumn::LowerAlarm || column == TableColumn::UpperAlarm;
    const bool isKnown = column == TableColumn::Tag ? !tags.empty() : !isAlarm || session.AcquisitionMode;
    if (isKnown) columns_.push_back(column);
  }
  for (int i = 1; i <= session.TotalParameters; ++i) {
    Row row;
    for (const TableColumn column : columns_) row.push_back(CellOf(session.CurrentParameters[i], column));
    const auto channel = static_cast<std::size_t>(i);
    if (i <= session.NumberOfParameters && channel <= tags.size()) row.front() = tags[channel - 1];
    cells_.push_back(std::move(row));
  }
  before_ = cells_;
}

int ParameterTable::PlaceOf(TableColumn column) const {
  const auto found = std::find(columns_.begin(), columns_.end(), column);
  return found == columns_.end() ? -1 : static_cast<int>(found - columns_.begin());
}

std::string& ParameterTable::At(int row, int column) {
  return cells_.at(static_cast<std::size_t>(row)).at(static_cast<std::size_t>(column));
}

const std::string& ParameterTable::Cell(int row, int column) const {
  return cells_.at(static_cast<std::size_t>(row)).at(static_cast<std::size_t>(column));
}

bool ParameterTable::IsChanged(int row, TableColumn column) const {
  const int place = PlaceOf(column);
  if (place < 0) return false;
  return Cell(row, place) != before_[static_cast<std::size_t>(row)][static_cast<std::size_t>(place)];
}

// --- Changes ---

void ParameterTable::Change(const std::vector<Edit>& edits) {
  std::vector<Edit> replaced;
  for (const Edit& edit : edits) {
    if (edit.column >= 0 && edit.column < ColumnCount() && Column(edit.column) == TableColumn::Tag) continue;
    if (edit.row < 0 || edit.row >= RowCount() || edit.column < 0 || edit.column >= ColumnCount()) continue;
    const std::string kept = AsKept(Column(edit.column), edit.text);
    std::string& cell = At(edit.row, edit.column);
    if (cell == kept) continue;
    replaced.push_back({edit.row, edit.column, cell});
    cell = kept;
  }
  if (!replaced.empty()) steps_.push_back(std::move(replaced));
}

void ParameterTable::Undo() {
  if (steps_.empty()) return;
  // The last first: a step may have changed a cell twice.
  std::for_each(steps_.back().rbegin(), steps_.back().rend(),
                [this](const Edit& edit) { At(edit.row, edit.column) = edit.text; });
  steps_.pop_back();
}

std::string ParameterTable::Copy(const CellRange& range) const {
  CellTexts rows;
  for (int row = range.top; row <= range.bottom; ++row) {
    auto& texts = rows.emplace_back();
    for (int column = range.left; column <= range.right; ++column) texts.push_back(Cell(row, column));
  }
  return JoinCells(rows);
}

ParameterTable::Pasted ParameterTable::Paste(const CellRange& at, std::string_view text) {
  const CellTexts rows = SplitCells(text);
  if (rows.empty()) return {at, true};
  const bool fills = rows.size() == 1 && rows[0].size() == 1;
  CellRange filled = at;
  if (!fills) filled.bottom = at.top + static_cast<int>(rows.size()) - 1;
  std::vector<Edit> edits;
  for (int row = filled.top; row <= filled.bottom; ++row) {
    const auto& cells = rows[fills ? 0 : static_cast<std::size_t>(row - at.top)];
    const int right = fills ? at.right : at.left + static_cast<int>(cells.size()) - 1;
    filled.right = std::max(filled.right, right);
    for (int column = at.left; column <= right; ++column)
      edits.push_back({row, column, cells[fills ? 0 : static_cast<std::size_t>(column - at.left)]});
  }
  Change(edits);
  const bool isWhole = filled.bottom < RowCount() && filled.right < ColumnCount();
  filled.bottom = std::min(filled.bottom, RowCount() - 1);
  filled.right = std::min(filled.right, ColumnCount() - 1);
  return {filled, isWhole};
}

// --- What is wrong ---

bool ParameterTable::ScaleIsSound(int row) const {
  const auto minimum = EnteredNumber(Cell(row, TableColumn::Minimum));
  const auto maximum = EnteredNumber(Cell(row, TableColumn::Maximum));
  return minimum && maximum && *maximum > *minimum;
}

std::optional<MessageText> ParameterTable::FaultOf(int row, int column) const {
  if (const auto fault = FaultOfCell(Column(column), Cell(row, column))) return fault;
  if (Column(column) != TableColumn::Maximum || ScaleIsSound(row)) return std::nullopt;
  // Where the minimum can't be read, that is what is wrong.
  if (FaultOfCell(TableColumn::Minimum, Cell(row, TableColumn::Minimum))) return std::nullopt;
  return text::MaximumNotAbove;
}

/// Names are told apart as columns of a log are: without case, and without what a column can't hold.
bool ParameterTable::RepeatsName(int row) const {
  const auto column = [this](int of) { return CleanFieldName(NameOfCell(Cell(of, TableColumn::Name))); };
  const std::string name = column(row);
  if (name == kBlankName) return false;
  for (int above = 0; above < row; ++above)
    if (SameName(column(above), name)) return true;
  return false;
}

std::optional<ParameterTable::Place> ParameterTable::FirstFault() const {
  for (int row = 0; row < RowCount(); ++row)
    for (int column = 0; column < ColumnCount(); ++column)
      if (FaultOf(row, column)) return Place{row, column};
  return std::nullopt;
}

// --- Back into the session ---

namespace {

/// One row on its way into a parameter.
class RowReader {
 public:
  RowReader(const ParameterTable& table, int row) : table_(table), row_(row) {}

  /// The text of a cell that was changed and can be read; null else.
  const std::string* Changed(TableColumn column) const {
    if (!table_.IsChanged(row_, column)) return nullptr;
    const std::string& cell = table_.Cell(row_, column);
    return FaultOfCell(column, cell) ? nullptr : &cell;
  }
  void Read(TableColumn column, double& field) const {
    if (const std::string* cell = Changed(column)) field = *EnteredNumber(*cell);
  }

 private:
  const ParameterTable& table_;
  const int row_;
};

/// An empty name hides the curve, one that was empty before too; a channel that gets a name is shown.
void StoreName(const RowReader& row, Parameter& parameter) {
  const std::string* const cell = row.Changed(TableColumn::Name);
  const std::string name = NameOfCell(cell != nullptr ? *cell : parameter.name);
  if (parameter.name == kBlankName && name != kBlankName) parameter.GraphVisible = true;
  parameter.name = name;
  if (name == kBlankName) parameter.GraphVisible = false;
}

bool StoreScale(const RowReader& row, Parameter& parameter) {
  if (parameter.name != kBlankName) row.Read(TableColumn::Minimum, parameter.min);
  row.Read(TableColumn::Maximum, parameter.max);
  if (parameter.max > parameter.min) return false;
  parameter.max = parameter.min + 100;
  return true;
}

bool StoreRow(const RowReader& row, Parameter& parameter) {
  StoreName(row, parameter);
  if (const std::string* cell = row.Changed(TableColumn::Units)) parameter.units = *cell;
  const bool raised = StoreScale(row, parameter);
  if (const std::string* cell = row.Changed(TableColumn::Color)) parameter.color = *ColourOfCell(*cell);
  if (const std::string* cell = row.Changed(TableColumn::Format)) parameter.format = FormatOfSample(*cell);
  if (const std::string* cell = row.Changed(TableColumn::LowerAlarm)) parameter.loweralarm = AlarmOfCell(*cell);
  if (const std::string* cell = row.Changed(TableColumn::UpperAlarm)) parameter.upperalarm = AlarmOfCell(*cell);
  if (const std::string* cell = row.Changed(TableColumn::Graph)) parameter.FormIndex = *GraphOfCell(*cell);
  row.Read(TableColumn::Gain, parameter.Gain);
  row.Read(TableColumn::Offset, parameter.Offset);
  return raised;
}

}  // namespace

bool StoreTable(Session& session, const ParameterTable& table) {
  bool raised = false;
  for (int i = 1; i <= std::min<int>(session.TotalParameters, table.RowCount()); ++i)
    raised |= StoreRow(RowReader(table, i - 1), session.CurrentParameters[i]);
  return raised;
}

namespace {

void CarryFileBack(Session& session) {
  for (int i = 1; i <= session.TotalParameters; ++i) {
    const Parameter& shown = session.CurrentParameters[i];
    const auto formula = static_cast<std::size_t>(std::max(i - session.PlaybackParameterCount, 0));
    if (formula == 0)
      session.PlaybackParameters[i] = shown;
    else if (FileHasItsPlace(session) && formula < session.AdditionalParameters.size())
      CopyDefinitionInFile(shown, session.AdditionalParameters[formula]);
  }
}

}  // namespace

void CarryTableBack(Session& session) {
  if (!session.AcquisitionMode) return CarryFileBack(session);
  ShowNonBlank(session, session.NumberOfParameters);
  for (int i = 1; i <= session.NumberOfParameters; ++i) session.Parameters[i] = session.CurrentParameters[i];
  for (int i = 1; i <= session.TotalParameters - session.NumberOfParameters; ++i) {
    Parameter& shown = session.CurrentParameters[session.NumberOfParameters + i];
    Parameter& configured = session.AdditionalParameters[static_cast<std::size_t>(i)];
    const bool included = configured.GraphVisible;
    CopyDefinition(shown, configured);
    configured.GraphVisible = included;
    shown.GraphVisible = included && shown.name != kBlankName;
  }
}

}  // namespace velk
