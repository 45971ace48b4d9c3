#include "instruments/windows/unit_model.h"

#include <tuple>

#include "base/text_qt.h"
#include "platform/windows/cell_roles.h"

namespace velk {

int UnitModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(std::tuple_size_v<UnitRows::value_type>);
}

QString UnitModel::RemarkOn(const QModelIndex& cell) const {
  if (!cell.isValid()) return {};
  return ToQt(words_.Translator.In(grid_.FaultOf(cell.row(), cell.column())));
}

QVariant UnitModel::data(const QModelIndex& cell, int role) const {
  switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
    case Qt::AccessibleTextRole:
      return ToQt(grid_.Cell(cell.row(), cell.column()));
    case Qt::ToolTipRole:
      return RemarkOn(cell);
    case Qt::TextAlignmentRole:
      return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    case FaultRole:
      return !grid_.FaultOf(cell.row(), cell.column()).IsEmpty();
    case HintRole:
      return false;
    default:
      return {};
  }
}

bool UnitModel::setData(const QModelIndex& cell, const QVariant& value, int role) {
  if (role != Qt::EditRole) return false;
  enter_(cell, value.toString());
  return true;
}

QVariant UnitModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole || orientation == Qt::Vertical) return {};
  return ToQt(words_.Translator.In(UnitHeading(section)));
}

Qt::ItemFlags UnitModel::flags(const QModelIndex& cell) const {
  const Qt::ItemFlags shown = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
  return cell.column() == unit_column::Channel ? shown : shown | Qt::ItemIsEditable;
}

}  // namespace velk
