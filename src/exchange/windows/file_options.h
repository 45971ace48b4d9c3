#pragma once

#include <QDialog>
#include <memory>
#include <string>

#include "i18n/windows/window_host.h"

namespace Ui {
class FileOptions;
}

namespace velk {

enum class FileOption { Append, OverWrite, Cancel };

/// What to do with a log that is there already. Closing it is Cancel.
class FileOptions : public QDialog {
  Q_OBJECT

 public:
  FileOptions(WindowHost& host, const std::string& path);
  ~FileOptions() override;

  FileOption Answer() const { return option_; }

 private:
  void Choose(FileOption option);

  std::unique_ptr<Ui::FileOptions> ui_;
  FileOption option_ = FileOption::Cancel;
};

}  // namespace velk
