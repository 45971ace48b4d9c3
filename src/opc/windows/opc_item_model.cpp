#include "opc/windows/opc_item_model.h"

#include "base/text_qt.h"
#include "opc/opc_texts.h"
#include "opc/texts.h"

namespace velk {

void OpcItemModel::ShowGroup(bool shows, std::size_t server, std::size_t group) {
  beginResetModel();
  shows_ = shows;
  server_ = server;
  group_ = group;
  rows_.clear();
  const std::size_t count = shows ? manager_.Servers().at(server).groups.at(group).items.size() : 0;
  for (std::size_t item = 0; item < count; ++item) rows_.push_back(RowOf(item, true));
  endResetModel();
}

void OpcItemModel::ShowAdded() {
  if (!shows_) return;
  const auto first = static_cast<int>(rows_.size());
  const auto count = static_cast<int>(manager_.Servers().at(server_).groups.at(group_).items.size());
  if (count <= first) return;
  beginInsertRows({}, first, count - 1);
  const OperatorText bad = text::OpcBad;
  rows_.resize(static_cast<std::size_t>(count), {{}, bad, bad.English()});
  endInsertRows();
}

OpcItemModel::Row OpcItemModel::RowOf(std::size_t item, bool isFirst) const {
  const OPCItemClass* const found = manager_.ItemOf(server_, group_, item);
  Row row;
  if (found != nullptr) {
    row.value = OpcDisplayText(found->GetItemValue());
    row.status = isFirst ? OpcStatusTextAtFirst(found->GetItemQuality()) : OpcStatusText(found->GetItemQuality());
  } else if (manager_.Servers()[server_].server) {
    row.status = text::OpcNotAtServer;
  }
  row.statusEnglish = row.status.English();
  return row;
}

void OpcItemModel::Refresh() {
  int first = -1;
  int last = -1;
  for (std::size_t item = 0; item < rows_.size(); ++item) {
    Row row = RowOf(item, false);
    if (row.value == rows_[item].value && row.statusEnglish == rows_[item].statusEnglish) continue;
    rows_[item] = std::move(row);
    last = static_cast<int>(item);
    if (first < 0) first = last;
  }
  if (first >= 0) emit dataChanged(index(first, OpcValueColumn), index(last, OpcStatusColumn));
}

int OpcItemModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int OpcItemModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : OpcColumnCount;
}

QVariant OpcItemModel::data(const QModelIndex& cell, int role) const {
  if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
  const auto item = static_cast<std::size_t>(cell.row());
  switch (cell.column()) {
    case OpcIdColumn:
      return ToQt(manager_.Servers()[server_].groups[group_].items.at(item).id);
    case OpcValueColumn:
      return ToQt(rows_.at(item).value);
    default:
      return ToQt(words_.Translator.In(rows_.at(item).status));
  }
}

QVariant OpcItemModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  constexpr MessageText kHeadings[] = {text::OpcItemIdHeading, text::OpcValueHeading, text::OpcStatusHeading};
  return ToQt(words_.Translator.In(kHeadings[section]));
}

}  // namespace velk
