#pragma once

#include "i18n/translation.h"
#include "platform/windows/cell_model.h"
#include "platform/windows/cell_roles.h"
#include "settings/parameter_table.h"

namespace velk {

/// The table of parameters as the toolkit shows it.
class ParameterTableModel : public CellModel {
 public:
  /// Both outlive the model.
  ParameterTableModel(const ParameterTable& table, const Translation& words, EnterText enter);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& cell, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  /// Colours and formats are chosen, not typed, and a tag stays as it is.
  Qt::ItemFlags flags(const QModelIndex& cell) const override;

  /// The table has changed.
  void ShowAnew() { emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1)); }
  QString RemarkOn(const QModelIndex& cell) const override;

 protected:
  QString TextOf(const QModelIndex& cell) const override;
  bool IsFault(const QModelIndex& cell) const override;
  bool IsRemarkable(const QModelIndex& cell) const override;

 private:
  QString Text(const OperatorText& text) const;

  const ParameterTable& table_;
  const Translation& words_;
};

}  // namespace velk
