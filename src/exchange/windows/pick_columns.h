#pragma once

#include <QDialog>
#include <memory>
#include <string>
#include <vector>

#include "i18n/windows/window_host.h"

namespace Ui {
class PickColumns;
}

namespace velk {

/// Which columns of a file go into a log, where there are more than it has room for.
class PickColumns : public QDialog {
  Q_OBJECT

 public:
  /// The first `most` of them are chosen at first.
  PickColumns(WindowHost& host, const std::vector<std::string>& names, int most);
  ~PickColumns() override;

  /// Places among the names, ascending.
  std::vector<int> Answer() const;

 private:
  void ShowChosen();

  WindowHost& host_;
  std::unique_ptr<Ui::PickColumns> ui_;
  const int most_;
};

}  // namespace velk
