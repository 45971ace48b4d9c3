#pragma once

#include <QAbstractTableModel>
#include <functional>
#include <optional>

#include "base/language.h"
#include "log/summary_rows.h"

namespace velk {

/// The lines of a summary report as a grid shows them. Additional fields can be written to.
class SummaryModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  /// `picture` is how values of channels are shown.
  SummaryModel(const Language& language, QObject* parent, const char* picture = kSummaryPicture)
      : QAbstractTableModel(parent), language_(language), picture_(picture) {}

  /// Writes an additional field of a line; false where it could not be written.
  std::function<bool(std::int64_t key, const std::string& column, std::optional<double> value)> onEntered;

  /// Shows a report. Lines that have come behind those that are shown leave these, and what is being entered, in place.
  void Show(SummaryLines report);
  const SummaryLines& Report() const { return report_; }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  /// Takes the text of an additional field: a number, or nothing. False for anything else.
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;

 private:
  bool GoesOnWith(const SummaryLines& report) const;
  const SummaryColumn& ColumnOf(const QModelIndex& index) const;
  QString TextOf(const QModelIndex& index) const;

  const Language& language_;
  const char* picture_;
  SummaryLines report_;
};

}  // namespace velk
