#include "wells/windows/survey_model.h"

#include "base/text_qt.h"
#include "wells/texts.h"

namespace velk {

SurveyModel::SurveyModel(const SurveyGrid& grid, const WellUnits& units, const Translation& words, EnterText enter)
    : CellModel(std::move(enter)), grid_(grid), units_(units), words_(words), rows_(grid.RowCount()) {
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

QString SurveyModel::TextOf(const QModelIndex& cell) const {
  return ToQt(grid_.Cell(cell.row(), cell.column()));
}

bool SurveyModel::IsFault(const QModelIndex& cell) const {
  return cell.column() == 0 && grid_.IsFault(cell.row());
}

bool SurveyModel::IsRemarkable(const QModelIndex& cell) const {
  return grid_.RemarkOn(cell.row(), cell.column()).has_value();
}

QString SurveyModel::RemarkOn(const QModelIndex& cell) const {
  if (!cell.isValid()) return {};
  const auto remark = grid_.RemarkOn(cell.row(), cell.column());
  return remark ? Text(*remark) : QString();
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
