#pragma once

#include <QDialog>
#include <memory>
#include <string>
#include <vector>

#include "i18n/windows/window_host.h"

class QLineEdit;

namespace Ui {
class RenameFields;
}

namespace velk {

/// A box for the name of each column.
class RenameFields : public QDialog {
  Q_OBJECT

 public:
  RenameFields(WindowHost& host, const std::vector<std::string>& names);
  ~RenameFields() override;

  std::vector<std::string> Answer() const;

 private:
  std::unique_ptr<Ui::RenameFields> ui_;
  std::vector<QLineEdit*> boxes_;
};

}  // namespace velk
