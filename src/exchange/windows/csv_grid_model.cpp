#include "exchange/windows/csv_grid_model.h"

#include "base/errors.h"
#include "base/text_qt.h"
#include "log/texts.h"

namespace velk {

CsvGridModel::CsvGridModel(CsvTable& table, const Language& language, QObject* parent)
    : QAbstractTableModel(parent), table_(table), language_(language), rows_(table.Rows()) {
}

void CsvGridModel::Grow() {
  const int rows = table_.Rows();
  if (rows <= rows_) return;
  beginInsertRows({}, rows_, rows - 1);
  rows_ = rows;
  endInsertRows();
}

void CsvGridModel::ShowAnew() {
  beginResetModel();
  rows_ = table_.Rows();
  endResetModel();
}

int CsvGridModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_;
}

int CsvGridModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : table_.Columns();
}

/// A grid can't take an error: what can't be read stays empty, and is told beside it.
QVariant CsvGridModel::data(const QModelIndex& index, int role) const {
  if (role == Qt::TextAlignmentRole && HoldsNumbers(index.column())) return QVariant(Qt::AlignRight | Qt::AlignVCenter);
  if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
  try {
    return ToQt(table_.Cell(index.row(), index.column()));
  } catch (const RuntimeError& error) {
    emit Unreadable(ToQt(language_.In(error.Text())));
    return {};
  }
}

bool CsvGridModel::HoldsNumbers(int column) const {
  const bool isLast = column + 1 == table_.Columns();
  return column >= table_.File().Shape().ColumnsAhead() && !(isLast && table_.Heading(column) == kCommentColumn);
}

QVariant CsvGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
  if (orientation == Qt::Vertical) return role == Qt::DisplayRole ? QVariant(section + 1) : QVariant();
  return Heading(section);
}

/// As the file has it, but date and time in the operator's language: these two are words of the format.
QString CsvGridModel::Heading(int column) const {
  const int ahead = table_.File().Shape().ColumnsAhead();
  const MessageText& word = ahead == 2 && column == 0 ? text::ReportDate : text::ReportTime;
  const std::string own = table_.Heading(column), translated = language_.In(word);
  return ToQt(column >= ahead || translated == word.english ? own : translated);
}

}  // namespace velk
