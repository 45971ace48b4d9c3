#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/grid_text.h"
#include "base/operator_text.h"
#include "wells/trajectory.h"

namespace velk {

enum class SurveyColumn { Depth, Inclination, Azimuth };
inline constexpr int kSurveyColumns = 3;

/// The rows of a survey while they are edited: what the editor shows, and what it makes of it. Each change can be taken
/// back. There is always an empty row behind the last one that is used.
class SurveyGrid {
 public:
  SurveyGrid() = default;
  SurveyGrid(std::span<const SurveyStation> rows, std::int16_t units);

  int RowCount() const;
  const std::string& Cell(int row, int column) const;
  /// The unit code of its depths.
  std::int16_t Units() const { return units_; }
  void SetUnits(std::int16_t units);

  /// Other rows in the place of all.
  void Fill(std::span<const SurveyStation> rows, std::int16_t units);
  void Enter(int row, int column, std::string text);
  void Clear(const CellRange& cells);
  /// The surface ahead of the rows, where ReadBack puts it there.
  void AddSurface();
  /// An empty row ahead of this one.
  void InsertRow(int row);
  void DeleteRows(int first, int last);
  std::string Copy(const CellRange& cells) const;
  /// Puts a clipboard's text where a selection begins, a single value into each of its cells; the rows that it needs
  /// are added. Gives the cells that were written; what is right of the last column is left out.
  CellRange Paste(const CellRange& into, std::string_view text);
  /// Divides each depth that is there.
  void Convert(double factor, std::int16_t units);

  bool CanUndo() const { return !undo_.empty(); }
  void Undo();
  /// The number of the change that has made the rows what they are: no other rows have it. 0 for those that the grid
  /// was made with.
  std::int64_t Version() const { return undo_.empty() ? oldest_ : undo_.back().version; }
  /// Whether it differs from what it was made with, or from what was last kept.
  bool IsChanged() const { return Version() != kept_; }
  void Kept() { kept_ = Version(); }

  /// What keeps the survey from being taken: a depth that is not below the one above it, in the first such row.
  std::optional<int> FirstFault() const;
  /// What is wrong with a cell, or remarkable.
  std::optional<MessageText> RemarkOn(int row, int column) const;
  bool IsFault(int row) const;
  /// Whether there are rows below the one that ends the survey, or angles in that one.
  bool LeavesRowsOut() const;

  /// The survey: rows down to the first one without a depth. An empty angle is that of the row above. Where the first
  /// depth is not 0, the surface stands ahead of it. Raises Overflow for more rows than can be counted, and for a
  /// number beyond the 64-bit range.
  std::vector<SurveyStation> ReadBack() const;

 private:
  struct Row {
    std::array<std::string, kSurveyColumns> texts;
    std::optional<double> depth;  ///< what the text stands for, as long as nobody has edited it
  };
  /// So many rows stand in the place of others.
  struct Change {
    std::size_t at, count;
    std::vector<Row> before;
    std::int16_t units;
    std::int64_t version;  ///< of what it made
  };

  static Row RowOf(const SurveyStation& station);
  static bool IsEmpty(const std::string& text);
  static double DepthOf(const Row& row);
  void Replace(std::size_t at, std::size_t count, std::vector<Row> rows);
  void Grow();
  /// Rows down to the first one without a depth.
  std::size_t UsedRows() const;
  bool IsUsed(const Row& row) const;
  bool NeedsSurface() const;

  std::vector<Row> rows_;
  std::vector<Change> undo_;
  std::int16_t units_ = 0;
  std::int64_t last_ = 0;    ///< version of the last change, taken back or not
  std::int64_t oldest_ = 0;  ///< version of the rows ahead of the changes that can be taken back
  std::int64_t kept_ = 0;
};

}  // namespace velk
