#pragma once

#include <QAbstractTableModel>
#include <functional>

#include "i18n/translation.h"
#include "instruments/unit/unit_grid.h"

namespace velk {

/// The table of a unit as the toolkit shows it.
class UnitModel : public QAbstractTableModel {
 public:
  /// Both outlive the model. `enter` is called with what was typed into a cell.
  UnitModel(const UnitGrid& grid, const Translation& words,
            std::function<void(const QModelIndex& cell, const QString& typed)> enter)
      : grid_(grid), words_(words), enter_(std::move(enter)) {}

  int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : grid_.RowCount(); }
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& cell, int role) const override;
  bool setData(const QModelIndex& cell, const QVariant& value, int role) override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& cell) const override;

  /// The table has changed.
  void ShowAnew() { emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1)); }
  /// What is wrong with a cell; empty where nothing is.
  QString RemarkOn(const QModelIndex& cell) const;

 private:
  const UnitGrid& grid_;
  const Translation& words_;
  const std::function<void(const QModelIndex&, const QString&)> enter_;
};

}  // namespace velk
