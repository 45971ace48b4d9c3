#pragma once

#include <QAbstractItemView>
#include <QLineEdit>
#include <QPointer>
#include <QStyledItemDelegate>

namespace velk {

/// The entry of an additional field in the grid of a report. What is no number is refused where it stands: it gets a
/// mark, and neither a key nor the mouse takes it away; only Esc gives it up.
class EntryDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  /// Becomes the delegate of a grid, which leaves the cell of an entry for no other while the entry is no number.
  void Guard(QAbstractItemView& grid);
  /// An entry stands open that is refused.
  bool Refuses() const;

  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;

 signals:
  /// What stands in the entry is refused, or no longer is.
  void Refused(bool refused) const;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Refuse() const;

  mutable QPointer<QLineEdit> entry_;  ///< the one that was opened last
};

}  // namespace velk
