#pragma once

#include "i18n/translation.h"
#include "instruments/unit/unit_grid.h"
#include "platform/windows/cell_model.h"

namespace velk {

/// The table of a unit as the toolkit shows it.
class UnitModel : public CellModel {
 public:
  /// Both outlive the model.
  UnitModel(const UnitGrid& grid, const Translation& words, EnterText enter)
      : CellModel(std::move(enter)), grid_(grid), words_(words) {}

  int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : grid_.RowCount(); }
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& cell) const override;

  /// The table has changed.
  void ShowAnew() { emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1)); }
  QString RemarkOn(const QModelIndex& cell) const override;

 protected:
  QString TextOf(const QModelIndex& cell) const override;
  bool IsFault(const QModelIndex& cell) const override;
  bool IsRemarkable(const QModelIndex& /*cell*/) const override { return false; }

 private:
  const UnitGrid& grid_;
  const Translation& words_;
};

}  // namespace velk
