#include "platform/windows/cell_model.h"

#include "platform/windows/cell_roles.h"

namespace velk {

QVariant CellModel::data(const QModelIndex& cell, int role) const {
  switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
    case Qt::AccessibleTextRole:
      return TextOf(cell);
    case Qt::ToolTipRole:
      return RemarkOn(cell);
    case Qt::TextAlignmentRole:
      return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    case FaultRole:
      return IsFault(cell);
    case HintRole:
      return IsRemarkable(cell);
    default:
      return {};
  }
}

bool CellModel::setData(const QModelIndex& cell, const QVariant& value, int role) {
  if (role != Qt::EditRole) return false;
  enter_(cell, value.toString());
  return true;
}

}  // namespace velk
