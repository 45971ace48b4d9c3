#include "instruments/windows/unit_model.h"

#include <tuple>

#include "base/text_qt.h"

namespace velk {

int UnitModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(std::tuple_size_v<UnitRows::value_type>);
}

QString UnitModel::TextOf(const QModelIndex& cell) const {
  return ToQt(grid_.Cell(cell.row(), cell.column()));
}

bool UnitModel::IsFault(const QModelIndex& cell) const {
  return !grid_.FaultOf(cell.row(), cell.column()).IsEmpty();
}

QString UnitModel::RemarkOn(const QModelIndex& cell) const {
  if (!cell.isValid()) return {};
  return ToQt(words_.Translator.In(grid_.FaultOf(cell.row(), cell.column())));
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
