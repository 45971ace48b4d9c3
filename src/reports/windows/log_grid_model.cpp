#include "reports/windows/log_grid_model.h"

#include "base/errors.h"
#include "base/text_qt.h"
#include "reports/table_sources.h"

namespace velk {

LogGridModel::LogGridModel(LogView& view, const Language& language, QObject* parent)
    : QAbstractTableModel(parent), view_(view), language_(language), rows_(view.Count()) {
}

void LogGridModel::ShowAnew() {
  beginResetModel();
  rows_ = view_.Count();
  endResetModel();
}

int LogGridModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_;
}

int LogGridModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(view_.Columns().size());
}

/// A grid can't take an error: what can't be read stays empty, and is told beside it.
QString LogGridModel::TextAt(const QModelIndex& index) const {
  try {
    return ToQt(view_.Text(index.row(), index.column()));
  } catch (const RuntimeError& error) {
    emit Unreadable(ToQt(language_.In(error.Text())));
    return {};
  }
}

QVariant LogGridModel::data(const QModelIndex& index, int role) const {
  if (index.row() >= view_.Count()) return {};
  if (role == Qt::DisplayRole || role == Qt::ToolTipRole) return TextAt(index);
  if (role == Qt::TextAlignmentRole && view_.KindOf(index.column()) == CellKind::Number)
    return QVariant(Qt::AlignRight | Qt::AlignVCenter);
  return {};
}

QVariant LogGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation == Qt::Vertical) return role == Qt::DisplayRole ? QVariant(section + 1) : QVariant();
  if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
  return ToQt(HeadingOfColumn(view_.Columns()[static_cast<std::size_t>(section)], view_.KindOf(section), language_));
}

}  // namespace velk
