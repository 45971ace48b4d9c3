#pragma once

#include <QAbstractTableModel>
#include <QDialog>
#include <QImage>
#include <memory>
#include <optional>
#include <string>

#include "i18n/windows/window_host.h"
#include "platform/dialogs/procedure.h"
#include "wells/profile_report.h"
#include "wells/profile_table.h"
#include "wells/windows/well_access.h"

class QAbstractButton;

namespace Ui {
class ReportForm;
}

namespace velk {

class PagesView;

/// The rows of the table below its names and units.
class ProfileModel : public QAbstractTableModel {
 public:
  /// Both outlive the model.
  ProfileModel(const ProfileTable& table, const Language& language);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& cell, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  /// The stations or the units have changed.
  void ShowAnew();

 private:
  const ProfileTable& table_;
  const Language& language_;
  int rows_;
};

/// The computed stations as a table: in three systems of units, previewed, printed, written to a file.
class ReportForm : public QDialog {
  Q_OBJECT

 public:
  ReportForm(WindowHost& host, const WellAccess& access);
  ~ReportForm() override;

  /// Shows the stations as they are now, where the window is shown; a hidden one does when it comes back.
  void Refresh();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  using Run = const Statements&;
  void Bind(QAbstractButton* key, const char* procedure, void (ReportForm::*work)(Run));
  void Option_Click(std::int16_t system);
  void Command1_Click(Run run);
  void Command3_Click(Run run);
  void cmdPrintPreview_Click(Run run);
  void ShowAnew();
  void ShowPreview(bool shown);
  void ReadLogo();
  void FitColumns();
  void FitToScreen();

  ProfileHead Head() const;
  ProfileReport::Content Content() const;
  ProfileReport MakeReport() const;
  QImage DrawSheet(int page, QSize dots) const;
  std::optional<std::string> AskForFile(const MessageText& filter, std::string_view extension);

  WindowHost& host_;
  const WellAccess access_;
  std::unique_ptr<Ui::ReportForm> ui_;
  ProfileTable table_;
  ProfileModel model_;
  PagesView* pages_;
  QImage logo_;
  std::optional<ProfileReport> report_;  ///< while it is previewed
};

}  // namespace velk
