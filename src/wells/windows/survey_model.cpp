#include "wells/windows/survey_model.h"

#include "base/text_qt.h"
#include "platform/windows/cell_roles.h"
#include "wells/texts.h"

namespace velk {

SurveyModel::SurveyModel(const SurveyGrid& grid, const WellUnits& units, const Translation& words,
                         std::function<void(const QModelIndex&, const QString&)> enter)
    : grid_(grid), units_(units), words_(words), enter_(std::move(enter)), rows_(grid.RowCount()) {
}

int SurveyModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_;
}

int SurveyModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kSurveyColumns;
}

QString SurveyModel::Text(const OperatorText& text) const {
  return ToQt(words_.Translator.In(text));
}

QVariant SurveyModel::data(const QModelIndex& cell, int role) const {
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
      return cell.column() == 0 && grid_.IsFault(cell.row());
    case HintRole:
      return grid_.RemarkOn(cell.row(), cell.column()).has_value();
    default:
      return {};
  }
}

QString SurveyModel::RemarkOn(const QModelIndex& cell) const {
  if (!cell.isValid()) return {};
  const auto remark = grid_.RemarkOn(cell.row(), cell.column());
  return remark ? Text(*remark) : QString();
}

bool SurveyModel::setData(const QModelIndex& cell, const QVariant& value, int role) {
  if (role != Qt::EditRole) return false;
  enter_(cell, value.toString());
  return true;
}

QVariant SurveyModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole) return {};
  if (orientation == Qt::Vertical) return section + 1;
  constexpr MessageText kHeadings[] = {text::HeadingDepth, text::HeadingInclination, text::HeadingAzimuth};
  const OperatorText unit =
      section == 0 ? DepthUnitLabel(units_, grid_.Units()) : AngleUnitLabel(units_, grid_.Units());
  return Text(kHeadings[section]) + "\n" + Text(unit);
}

Qt::ItemFlags SurveyModel::flags(const QModelIndex& /*cell*/) const {
  return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable;
}

void SurveyModel::ShowAnew() {
  const int rows = grid_.RowCount();
  if (rows > rows_) {
    beginInsertRows({}, rows_, rows - 1);
    rows_ = rows;
    endInsertRows();
  } else if (rows < rows_) {
    beginRemoveRows({}, rows, rows_ - 1);
    rows_ = rows;
    endRemoveRows();
  }
  emit dataChanged(index(0, 0), index(rows_ - 1, kSurveyColumns - 1));
  emit headerDataChanged(Qt::Horizontal, 0, kSurveyColumns - 1);
}

}  // namespace velk
