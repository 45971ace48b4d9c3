#include "wells/survey_grid.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/errors.h"
#include "base/number_entry.h"
#include "base/numbers.h"
#include "base/text.h"
#include "wells/texts.h"

namespace velk {

namespace {

constexpr std::size_t kFewestRows = 20;
constexpr std::size_t kMostRows = 32767;
constexpr std::size_t kMostUndone = 100;
constexpr std::string_view kDepthFormat = "#####0";
constexpr std::string_view kAngleFormat = "###0.00";
constexpr std::string_view kConvertedFormat = "#0.000";

double Number(const std::string& text) {
  return Val(WithDecimalPoint(text));
}

}  // namespace

SurveyGrid::SurveyGrid(std::span<const SurveyStation> rows, std::int16_t units) : units_(units) {
  rows_.reserve(rows.size());
  for (const SurveyStation& row : rows) rows_.push_back(RowOf(row));
  Grow();
}

SurveyGrid::Row SurveyGrid::RowOf(const SurveyStation& station) {
  return {{Format(station.depth, kDepthFormat), Format(station.inclination, kAngleFormat),
           Format(station.azimuth, kAngleFormat)},
          station.depth};
}

bool SurveyGrid::IsEmpty(const std::string& text) {
  return text.find_first_not_of(" \t") == std::string::npos;
}

double SurveyGrid::DepthOf(const Row& row) {
  return row.depth.value_or(Number(row.texts[0]));
}

int SurveyGrid::RowCount() const {
  return static_cast<int>(rows_.size());
}

const std::string& SurveyGrid::Cell(int row, int column) const {
  return rows_.at(static_cast<std::size_t>(row)).texts.at(static_cast<std::size_t>(column));
}

bool SurveyGrid::IsUsed(const Row& row) const {
  return std::any_of(row.texts.begin(), row.texts.end(), [](const std::string& text) { return !text.empty(); });
}

void SurveyGrid::Grow() {
  if (rows_.size() < kFewestRows) rows_.resize(kFewestRows);
  if (IsUsed(rows_.back()) && rows_.size() < kMostRows + 1) rows_.emplace_back();
}

// --- Changes ---

void SurveyGrid::Replace(std::size_t at, std::size_t count, std::vector<Row> rows) {
  Change change{at, rows.size(), {}, units_, ++last_};
  const auto first = rows_.begin() + static_cast<std::ptrdiff_t>(at);
  const auto last = first + static_cast<std::ptrdiff_t>(count);
  change.before.assign(std::make_move_iterator(first), std::make_move_iterator(last));
  const auto place = rows_.erase(first, last);
  rows_.insert(place, std::make_move_iterator(rows.begin()), std::make_move_iterator(rows.end()));
  undo_.push_back(std::move(change));
  if (undo_.size() > kMostUndone) {
    oldest_ = undo_.front().version;
    undo_.erase(undo_.begin());
  }
  Grow();
}

void SurveyGrid::Undo() {
  if (undo_.empty()) return;
  Change change = std::move(undo_.back());
  undo_.pop_back();
  const auto first = rows_.begin() + static_cast<std::ptrdiff_t>(change.at);
  const auto place = rows_.erase(first, first + static_cast<std::ptrdiff_t>(change.count));
  rows_.insert(place, std::make_move_iterator(change.before.begin()), std::make_move_iterator(change.before.end()));
  units_ = change.units;
  Grow();
}

void SurveyGrid::SetUnits(std::int16_t units) {
  if (units == units_) return;
  Replace(0, 0, {});
  units_ = units;
}

void SurveyGrid::Fill(std::span<const SurveyStation> rows, std::int16_t units) {
  SurveyGrid other(rows, units);
  Replace(0, rows_.size(), std::move(other.rows_));
  units_ = units;
}

void SurveyGrid::Enter(int row, int column, std::string text) {
  const auto at = static_cast<std::size_t>(row);
  Row changed = rows_.at(at);
  std::string& cell = changed.texts.at(static_cast<std::size_t>(column));
  // What was not changed keeps the value behind it.
  if (cell == text) return;
  cell = std::move(text);
  if (column == 0) changed.depth.reset();
  Replace(at, 1, {std::move(changed)});
}

void SurveyGrid::Clear(const CellRange& cells) {
  std::vector<Row> cleared(rows_.begin() + cells.top, rows_.begin() + cells.bottom + 1);
  for (Row& row : cleared) {
    for (int column = cells.left; column <= cells.right; ++column) row.texts[static_cast<std::size_t>(column)].clear();
    if (cells.left == 0) row.depth.reset();
  }
  const std::size_t count = cleared.size();
  Replace(static_cast<std::size_t>(cells.top), count, std::move(cleared));
}

bool SurveyGrid::NeedsSurface() const {
  return UsedRows() > 0 && DepthOf(rows_[0]) != 0;
}

void SurveyGrid::AddSurface() {
  if (NeedsSurface()) Replace(0, 0, {RowOf({})});
}

void SurveyGrid::InsertRow(int row) {
  Replace(static_cast<std::size_t>(row), 0, {Row{}});
}

void SurveyGrid::DeleteRows(int first, int last) {
  Replace(static_cast<std::size_t>(first), static_cast<std::size_t>(last - first) + 1, {});
}

std::string SurveyGrid::Copy(const CellRange& cells) const {
  CellTexts texts;
  for (int row = cells.top; row <= cells.bottom; ++row) {
    texts.emplace_back();
    for (int column = cells.left; column <= cells.right; ++column) texts.back().push_back(Cell(row, column));
  }
  return JoinCells(texts);
}

CellRange SurveyGrid::Paste(const CellRange& into, std::string_view text) {
  CellTexts texts = SplitCells(text);
  CellRange written = into;
  if (texts.empty()) return written;
  if (texts.size() == 1 && texts[0].size() == 1) {
    const std::vector<std::string> row(static_cast<std::size_t>(into.right - into.left) + 1, texts[0][0]);
    texts.assign(static_cast<std::size_t>(into.bottom - into.top) + 1, row);
  }
  const auto top = static_cast<std::size_t>(into.top);
  const std::size_t there = std::min(texts.size(), rows_.size() - top);
  std::vector<Row> rows(rows_.begin() + into.top, rows_.begin() + into.top + static_cast<std::ptrdiff_t>(there));
  rows.resize(std::min(texts.size(), kMostRows + 1 - top));
  written.right = into.left;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    for (std::size_t k = 0; k < texts[i].size() && into.left + static_cast<int>(k) < kSurveyColumns; ++k) {
      const int column = into.left + static_cast<int>(k);
      rows[i].texts[static_cast<std::size_t>(column)] = texts[i][k];
      if (column == 0) rows[i].depth.reset();
      written.right = std::max(written.right, column);
    }
  }
  written.bottom = into.top + static_cast<int>(rows.size()) - 1;
  Replace(top, there, std::move(rows));
  return written;
}

void SurveyGrid::Convert(double factor, std::int16_t units) {
  std::vector<Row> rows = rows_;
  for (Row& row : rows) {
    if (IsEmpty(row.texts[0])) continue;
    row.depth = Divide(DepthOf(row), factor);
    row.texts[0] = Format(*row.depth, kConvertedFormat);
  }
  Replace(0, rows_.size(), std::move(rows));
  units_ = units;
}

// --- What it holds ---

std::size_t SurveyGrid::UsedRows() const {
  const auto end = std::find_if(rows_.begin(), rows_.end(), [](const Row& row) { return IsEmpty(row.texts[0]); });
  return static_cast<std::size_t>(end - rows_.begin());
}

bool SurveyGrid::IsFault(int row) const {
  const auto at = static_cast<std::size_t>(row);
  if (at >= rows_.size() || IsEmpty(rows_[at].texts[0])) return false;
  if (at == 0) return DepthOf(rows_[0]) < 0;
  return !IsEmpty(rows_[at - 1].texts[0]) && DepthOf(rows_[at]) <= DepthOf(rows_[at - 1]);
}

std::optional<int> SurveyGrid::FirstFault() const {
  const int count = static_cast<int>(UsedRows());
  for (int row = 0; row < count; ++row)
    if (IsFault(row)) return row;
  return std::nullopt;
}

std::optional<MessageText> SurveyGrid::RemarkOn(int row, int column) const {
  const std::string& text = Cell(row, column);
  if (IsEmpty(text)) return std::nullopt;
  if (IsUnclearNumber(text) || !IsNumeric(WithDecimalPoint(text))) return text::CellIsNoNumber;
  if (column == 0 && IsFault(row)) return text::DepthNotBelow;
  if (static_cast<std::size_t>(row) >= UsedRows()) return text::RowIsLeftOut;
  return std::nullopt;
}

bool SurveyGrid::LeavesRowsOut() const {
  const auto isEmpty = [](const Row& row) { return std::all_of(row.texts.begin(), row.texts.end(), IsEmpty); };
  return !std::all_of(rows_.begin() + static_cast<std::ptrdiff_t>(UsedRows()), rows_.end(), isEmpty);
}

std::vector<SurveyStation> SurveyGrid::ReadBack() const {
  const std::size_t count = UsedRows();
  std::vector<SurveyStation> survey;
  survey.reserve(count + 1);
  if (NeedsSurface()) survey.emplace_back();
  ToInt16(static_cast<double>(count + survey.size()));
  SurveyStation above;
  for (std::size_t i = 0; i < count; ++i) {
    const auto& texts = rows_[i].texts;
    above = {DepthOf(rows_[i]), IsEmpty(texts[1]) ? above.inclination : Number(texts[1]),
             IsEmpty(texts[2]) ? above.azimuth : Number(texts[2])};
    for (const double number : {above.depth, above.inclination, above.azimuth})
      if (!std::isfinite(number)) throw RuntimeError(ErrorNumber::Overflow);
    survey.push_back(above);
  }
  return survey;
}

}  // namespace velk
