#include "settings/windows/parameter_table_model.h"

#include <QColor>

#include "base/colour.h"
#include "base/text_qt.h"
#include "model/texts.h"

namespace velk {

ParameterTableModel::ParameterTableModel(const ParameterTable& table, const Translation& words, EnterText enter)
    : CellModel(std::move(enter)), table_(table), words_(words) {
}

int ParameterTableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : table_.RowCount();
}

int ParameterTableModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : table_.ColumnCount();
}

QString ParameterTableModel::Text(const OperatorText& text) const {
  return ToQt(words_.Translator.In(text));
}

QString ParameterTableModel::TextOf(const QModelIndex& cell) const {
  return ToQt(table_.Cell(cell.row(), cell.column()));
}

bool ParameterTableModel::IsFault(const QModelIndex& cell) const {
  return table_.FaultOf(cell.row(), cell.column()).has_value();
}

bool ParameterTableModel::IsRemarkable(const QModelIndex& cell) const {
  return table_.Column(cell.column()) == TableColumn::Name && table_.RepeatsName(cell.row());
}

/// A colour fills its cell, and a text that is cut can be read in the tool tip.
QVariant ParameterTableModel::data(const QModelIndex& cell, int role) const {
  const TableColumn column = table_.Column(cell.column());
  const auto colour = column == TableColumn::Color ? ColourOfCell(FromQt(TextOf(cell))) : std::nullopt;
  switch (role) {
    case Qt::DisplayRole:
      return colour ? QString() : TextOf(cell);
    case Qt::ToolTipRole: {
      const QString remark = RemarkOn(cell);
      return remark.isEmpty() ? TextOf(cell) : remark;
    }
    case Qt::TextAlignmentRole:
      return QVariant((IsNumberColumn(column) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    case ColourRole:
      return colour ? QColor(Red(*colour), Green(*colour), Blue(*colour)) : QColor();
    default:
      return CellModel::data(cell, role);
  }
}

QString ParameterTableModel::RemarkOn(const QModelIndex& cell) const {
  if (!cell.isValid()) return {};
  if (const auto fault = table_.FaultOf(cell.row(), cell.column())) return Text(*fault);
  if (!IsRemarkable(cell)) return {};
  return Text(text::SameNameBefore + table_.Cell(cell.row(), cell.column()) + text::SameNameAfter);
}

QVariant ParameterTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole) return {};
  if (orientation == Qt::Vertical) return section + 1;
  return Text(HeadingOf(table_.Column(section)));
}

Qt::ItemFlags ParameterTableModel::flags(const QModelIndex& cell) const {
  const Qt::ItemFlags shown = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
  const TableColumn column = table_.Column(cell.column());
  const bool isTyped = column != TableColumn::Tag && column != TableColumn::Color && column != TableColumn::Format;
  return isTyped ? shown | Qt::ItemIsEditable : shown;
}

}  // namespace velk
