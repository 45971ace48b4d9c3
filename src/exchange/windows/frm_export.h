#pragma once

#include <QDialog>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "exchange/export_source.h"
#include "i18n/windows/window_host.h"
#include "platform/dialogs/procedure.h"
#include "platform/platform.h"

class QListWidget;

namespace Ui {
class frmExport;
}

namespace velk {

/// What an export begins with.
struct ExportAccess {
  Platform platform;
  ExportMode mode = ExportMode::LogToCsv;
  std::string log;        ///< the log of the session; empty without one
  std::string directory;  ///< where the choice of a file begins
  /// Called with a file ahead of its opening; it may raise what keeps it from being read.
  std::function<void(const std::string& path)> prepare = {};
};

/// Writes a log out: which fields in which order, and where to. XML has all of them as they stand.
class frmExport : public QDialog {
  Q_OBJECT

 public:
  frmExport(WindowHost& host, ExportAccess access);
  ~frmExport() override;

 private:
  void OpenExportSource(const std::string& path);
  void FillLists();
  void Move(QListWidget& from, QListWidget& to, bool all);
  void Command5_Click();
  void Command6_Click();
  void cmdOK_Click();
  void Write(const Statements& run);
  bool MayWrite();
  void UpdateKeys();
  bool IsXml() const { return access_.mode == ExportMode::LogToXml; }
  std::vector<int> ChosenFields() const;
  void Tell(const OperatorText& text);

  WindowHost& host_;
  std::unique_ptr<Ui::frmExport> ui_;
  const ExportAccess access_;
  std::unique_ptr<ExportSource> source_;  ///< null where the file isn't there
  std::string DatabaseFile;
  std::string OutputFile;
};

/// The menu commands.
void mnuFileExport_Click(WindowHost& host, const ExportAccess& access);

}  // namespace velk
