#pragma once

#include <QDialog>
#include <memory>
#include <string>

#include "i18n/windows/window_host.h"

namespace Ui {
class ConvertDataFiles;
}

namespace velk {

/// The first screen of an import: which text file becomes a log.
class ConvertDataFiles : public QDialog {
  Q_OBJECT

 public:
  /// The choice begins in `directory`; `path` was chosen before.
  ConvertDataFiles(WindowHost& host, std::string directory, const std::string& path);
  ~ConvertDataFiles() override;

  std::string Answer() const;

 private:
  void Command1_Click();
  void Text1_Change();

  WindowHost& host_;
  std::unique_ptr<Ui::ConvertDataFiles> ui_;
  std::string directory_;
};

}  // namespace velk
