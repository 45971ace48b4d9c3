#pragma once

#include <QAbstractTableModel>

#include "base/language.h"
#include "exchange/csv_table.h"

namespace velk {

/// The rows of a text file as a grid shows them.
class CsvGridModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  /// Both outlive it.
  CsvGridModel(CsvTable& table, const Language& language, QObject* parent);

  /// More rows of the file are known.
  void Grow();
  /// Rows are gone, or columns are called otherwise.
  void ShowAnew();

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 signals:
  /// The file can't be read, for this reason.
  void Unreadable(const QString& reason) const;

 private:
  bool HoldsNumbers(int column) const;
  QString Heading(int column) const;

  CsvTable& table_;
  const Language& language_;
  int rows_ = 0;  ///< as the grid knows them
};

}  // namespace velk
