#pragma once

#include <QAbstractTableModel>
#include <functional>
#include <utility>

namespace velk {

/// A grid of cells that hold texts and are edited in place, as the toolkit shows it. What the grid holds, the class
/// above tells.
class CellModel : public QAbstractTableModel {
 public:
  /// Is called with what was typed into a cell.
  using EnterText = std::function<void(const QModelIndex& cell, const QString& typed)>;

  explicit CellModel(EnterText enter) : enter_(std::move(enter)) {}

  /// Texts stand at the right, since most are numbers; the tool tip is the remark on the cell.
  QVariant data(const QModelIndex& cell, int role) const override;
  bool setData(const QModelIndex& cell, const QVariant& value, int role) override;

  /// What is wrong with a cell, or remarkable; empty else.
  virtual QString RemarkOn(const QModelIndex& cell) const = 0;

 protected:
  virtual QString TextOf(const QModelIndex& cell) const = 0;
  /// It keeps the grid from being taken.
  virtual bool IsFault(const QModelIndex& cell) const = 0;
  /// Something is remarkable about it, and it may stand.
  virtual bool IsRemarkable(const QModelIndex& cell) const = 0;

 private:
  const EnterText enter_;
};

}  // namespace velk
