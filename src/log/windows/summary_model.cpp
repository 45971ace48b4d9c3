#include "log/windows/summary_model.h"

#include <algorithm>
#include <utility>

#include "base/dates.h"
#include "base/numbers.h"
#include "base/text_qt.h"
#include "log/row_time.h"
#include "log/texts.h"

namespace velk {

namespace {

using Kind = SummaryColumn::Kind;

std::optional<double> NumberOf(const FieldValue& field) {
  if (const auto* whole = std::get_if<std::int64_t>(&field)) return static_cast<double>(*whole);
  const auto* number = std::get_if<double>(&field);
  return number == nullptr ? std::nullopt : std::optional(*number);
}

std::string NumberAs(const FieldValue& field, Kind kind, const char* picture) {
  const auto number = NumberOf(field);
  if (!number) return {};
  return kind == Kind::Value ? Format(*number, picture) : NumberText(*number);
}

/// A date of one field, a time of day of another: whichever it is, it stands for both.
std::string MomentAs(const FieldValue& field, const char* picture) {
  const double moment = RowTime(field, field);
  return IsDateTime(moment) ? FormatDate(moment, picture) : std::string();
}

}  // namespace

void SummaryModel::Show(SummaryLines report) {
  if (!GoesOnWith(report)) {
    beginResetModel();
    report_ = std::move(report);
    endResetModel();
    return;
  }
  const int before = rowCount();
  const int after = static_cast<int>(report.lines.size());
  if (after > before) beginInsertRows({}, before, after - 1);
  const SummaryLines shown = std::exchange(report_, std::move(report));
  if (after > before) endInsertRows();
  // A line that is told to have changed would take away what is being entered in it.
  for (int row = 0; row < before; ++row) {
    const auto line = static_cast<std::size_t>(row);
    if (shown.lines[line] != report_.lines[line]) emit dataChanged(index(row, 0), index(row, columnCount() - 1));
  }
}

bool SummaryModel::GoesOnWith(const SummaryLines& report) const {
  const auto sameColumn = [](const SummaryColumn& a, const SummaryColumn& b) { return a.name == b.name; };
  const auto sameKey = [](const SummaryLine& a, const SummaryLine& b) { return a.key == b.key; };
  return report.lines.size() >= report_.lines.size() &&
         std::equal(report_.columns.begin(), report_.columns.end(), report.columns.begin(), report.columns.end(),
                    sameColumn) &&
         std::equal(report_.lines.begin(), report_.lines.end(), report.lines.begin(), sameKey);
}

int SummaryModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(report_.lines.size());
}

int SummaryModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(report_.columns.size());
}

const SummaryColumn& SummaryModel::ColumnOf(const QModelIndex& index) const {
  return report_.columns[static_cast<std::size_t>(index.column())];
}

QString SummaryModel::TextOf(const QModelIndex& index) const {
  const FieldValue& field =
      report_.lines[static_cast<std::size_t>(index.row())].fields[static_cast<std::size_t>(index.column())];
  const Kind kind = ColumnOf(index).kind;
  if (kind == Kind::Date) return ToQt(MomentAs(field, "dd-mmm-yyyy"));
  if (kind == Kind::Time) return ToQt(MomentAs(field, "hh:mm:ss"));
  if (const auto* text = std::get_if<std::string>(&field)) return ToQt(*text);
  return ToQt(NumberAs(field, kind, picture_));
}

QVariant SummaryModel::data(const QModelIndex& index, int role) const {
  if (role == Qt::DisplayRole || role == Qt::EditRole || role == Qt::ToolTipRole) return TextOf(index);
  const Kind kind = ColumnOf(index).kind;
  if (role == Qt::TextAlignmentRole && (kind == Kind::Value || kind == Kind::Entry))
    return QVariant(Qt::AlignRight | Qt::AlignVCenter);
  return {};
}

QVariant SummaryModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole) return {};
  if (orientation == Qt::Vertical) return section + 1;
  const SummaryColumn& column = report_.columns[static_cast<std::size_t>(section)];
  if (column.kind == Kind::Date) return ToQt(language_.In(text::ReportDate));
  if (column.kind == Kind::Time) return ToQt(language_.In(text::ReportTime));
  return ToQt(column.name);
}

Qt::ItemFlags SummaryModel::flags(const QModelIndex& index) const {
  const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
  return ColumnOf(index).kind == Kind::Entry ? flags | Qt::ItemIsEditable : flags;
}

bool SummaryModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::EditRole || ColumnOf(index).kind != Kind::Entry) return false;
  const SummaryEntry entry = ReadSummaryEntry(FromQt(value.toString()));
  if (!entry.isSound) return false;
  const std::size_t row = static_cast<std::size_t>(index.row()), column = static_cast<std::size_t>(index.column());
  if (NumberOf(report_.lines[row].fields[column]) == entry.value) return true;
  if (!onEntered || !onEntered(report_.lines[row].key, ColumnOf(index).name, entry.value)) return false;
  // A box may have stood meanwhile, and the grid may show another report by now.
  if (!checkIndex(index)) return false;
  FieldValue& field = report_.lines[row].fields[column];
  if (entry.value)
    field = *entry.value;
  else
    field = std::monostate{};
  emit dataChanged(index, index);
  return true;
}

}  // namespace velk
