#pragma once

#include <QAbstractTableModel>
#include <string>
#include <vector>

#include "i18n/translation.h"
#include "opc/opc_manager.h"

namespace velk {

/// The items of a group with their last values, as the list shows them.
class OpcItemModel : public QAbstractTableModel {
 public:
  enum Column { OpcIdColumn, OpcValueColumn, OpcStatusColumn, OpcColumnCount };

  /// Both outlive the model.
  OpcItemModel(const OpcManager& manager, const Translation& words) : manager_(manager), words_(words) {}

  /// The group whose items are shown, counted from 0; none where `shows` is false.
  void ShowGroup(bool shows, std::size_t server, std::size_t group);
  /// Items were removed.
  void ShowAnew() { ShowGroup(shows_, server_, group_); }
  /// Items were added behind the others: each is bad until the next look.
  void ShowAdded();
  /// Reads the values anew; only what has changed is drawn.
  void Refresh();

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& cell, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  struct Row {
    std::string value;
    OperatorText status;
    std::string statusEnglish;
  };

  Row RowOf(std::size_t item, bool isFirst) const;

  const OpcManager& manager_;
  const Translation& words_;
  bool shows_ = false;
  std::size_t server_ = 0;
  std::size_t group_ = 0;
  std::vector<Row> rows_;
};

}  // namespace velk
