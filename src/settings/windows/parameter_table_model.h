#pragma once

#include <QAbstractTableModel>
#include <functional>

#include "i18n/translation.h"
#include "platform/windows/cell_roles.h"
#include "settings/parameter_table.h"

namespace velk {

/// The table of parameters as the toolkit shows it.
class ParameterTableModel : public QAbstractTableModel {
 public:
  /// Both outlive the model. `enter` is called with what was typed into a cell.
  ParameterTableModel(const ParameterTable& table, const Translation& words,
                      std::function<void(const QModelIndex& cell, const QString& typed)> enter);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& cell, int role) const override;
  bool setData(const QModelIndex& cell, const QVariant& value, int role) override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  /// Colours and formats are chosen, not typed, and a tag stays as it is.
  Qt::ItemFlags flags(const QModelIndex& cell) const override;

  /// The table has changed.
  void ShowAnew() { emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1)); }
  /// What is wrong with a cell, or remarkable; empty else.
  QString RemarkOn(const QModelIndex& cell) const;

 private:
  QString Text(const OperatorText& text) const;

  const ParameterTable& table_;
  const Translation& words_;
  const std::function<void(const QModelIndex&, const QString&)> enter_;
};

}  // namespace velk
