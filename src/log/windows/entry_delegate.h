#pragma once

#include <QStyledItemDelegate>

namespace velk {

/// The entry of an additional field in the grid of a report. What is no number is refused where it stands: it gets a
/// mark, and Enter and Tab don't leave it.
class EntryDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;

 signals:
  /// What stands in the entry is refused, or no longer is.
  void Refused(bool refused) const;

 protected:
  bool eventFilter(QObject* editor, QEvent* event) override;
};

}  // namespace velk
