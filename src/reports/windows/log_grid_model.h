#pragma once

#include <QAbstractTableModel>

#include "base/language.h"
#include "reports/log_view.h"

namespace velk {

/// The rows of a log as a grid shows them.
class LogGridModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  /// Both outlive it.
  LogGridModel(LogView& view, const Language& language, QObject* parent);

  /// Other rows are shown, or in another order.
  void ShowAnew();

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 signals:
  /// Rows can't be read, for this reason.
  void Unreadable(const QString& reason) const;

 private:
  QString TextAt(const QModelIndex& index) const;

  LogView& view_;
  const Language& language_;
  int rows_ = 0;  ///< as the grid knows them
};

}  // namespace velk
