#include "exchange/windows/frm_export.h"

#include <QListWidget>
#include <filesystem>

#include "base/text_qt.h"
#include "exchange/texts.h"
#include "exchange/write_csv.h"
#include "exchange/write_xml.h"
#include "i18n/windows/translate_form.h"
#include "model/help_topics.h"
#include "platform/dialogs/long_task.h"
#include "platform/files/file_errors.h"
#include "platform/files/file_lock.h"
#include "ui_frm_export.h"

namespace velk {

namespace {

const MessageText& TitleOf(ExportMode mode) {
  switch (mode) {
    case ExportMode::LogToXml:
      return text::ExportLogToXml;
    case ExportMode::SummaryToCsv:
      return text::ExportSummaryToCsv;
    case ExportMode::LogToCsv:
      break;
  }
  return text::ExportLogToCsv;
}

std::string NameIn(const std::string& path) {
  return path.substr(path.rfind('/') + 1);
}

}  // namespace

frmExport::frmExport(WindowHost& host, ExportAccess access)
    : QDialog(host.Parent()), host_(host), ui_(std::make_unique<Ui::frmExport>()), access_(std::move(access)) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Exchange);
  QListWidget &available = *ui_->List1, &output = *ui_->List2;
  connect(ui_->Command1, &QPushButton::clicked, this, [&] { Move(available, output, false); });
  connect(ui_->Command2, &QPushButton::clicked, this, [&] { Move(available, output, true); });
  connect(ui_->Command3, &QPushButton::clicked, this, [&] { Move(output, available, false); });
  connect(ui_->Command4, &QPushButton::clicked, this, [&] { Move(output, available, true); });
  connect(&available, &QListWidget::itemDoubleClicked, this, [&] { Move(available, output, false); });
  connect(&output, &QListWidget::itemDoubleClicked, this, [&] { Move(output, available, false); });
  connect(ui_->Command5, &QPushButton::clicked, this, &frmExport::Command5_Click);
  connect(ui_->Command6, &QPushButton::clicked, this, &frmExport::Command6_Click);
  connect(ui_->cmdOK, &QPushButton::clicked, this, &frmExport::cmdOK_Click);
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  TranslateForm(*this, host.Words());
  setWindowTitle(ToQt(host.Words().Translator.In(TitleOf(access_.mode))));
  ui_->List1->setAccessibleName(ui_->Label2->text().remove(QLatin1Char('&')));
  ui_->List2->setAccessibleName(ui_->Label3->text().remove(QLatin1Char('&')));
  if (!access_.log.empty() && FileExists(access_.log)) OpenExportSource(access_.log);
  UpdateKeys();
  (source_ ? static_cast<QWidget*>(ui_->List1) : ui_->Command5)->setFocus();
}

frmExport::~frmExport() = default;

void frmExport::OpenExportSource(const std::string& path) {
  const QPointer<frmExport> alive(this);
  std::unique_ptr<ExportSource> source;
  RunProcedure({host_.Boxes(), "OpenExportSource"}, [&](const Statements& run) {
    const ExportAccess access = access_;
    source = run([&] {
      if (access.prepare) access.prepare(path);
      return std::make_unique<ExportSource>(path, access.mode);
    });
  });
  if (!alive || !source) return;
  source_ = std::move(source);
  DatabaseFile = path;
  ui_->Label1->setText(ToQt(path));
  FillLists();
}

void frmExport::FillLists() {
  ui_->List1->clear();
  ui_->List2->clear();
  int number = 0;
  for (const Column& column : source_->Fields()) {
    auto* entry = new QListWidgetItem(ToQt(column.name), IsXml() ? ui_->List2 : ui_->List1);
    entry->setData(Qt::UserRole, number++);
  }
  ui_->List1->setCurrentRow(0);
  ui_->List2->setCurrentRow(0);
  UpdateKeys();
}

void frmExport::Move(QListWidget& from, QListWidget& to, bool all) {
  if (IsXml()) return;
  const int present = from.currentRow();
  if (all) {
    while (from.count() > 0) to.addItem(from.takeItem(0));
  } else if (present >= 0) {
    to.addItem(from.takeItem(present));
    from.setCurrentRow(std::min(present, from.count() - 1));
  }
  to.setCurrentRow(to.count() - 1);
  UpdateKeys();
}

void frmExport::UpdateKeys() {
  ui_->Command1->setEnabled(!IsXml() && ui_->List1->count() > 0);
  ui_->Command2->setEnabled(!IsXml() && ui_->List1->count() > 0);
  ui_->Command3->setEnabled(!IsXml() && ui_->List2->count() > 0);
  ui_->Command4->setEnabled(!IsXml() && ui_->List2->count() > 0);
}

void frmExport::Command5_Click() {
  const QPointer<frmExport> alive(this);
  const std::string directory = DatabaseFile.empty() ? access_.directory : FolderOf(DatabaseFile);
  const auto path = host_.Boxes().OpenFile({text::ExportSourceTitle, text::DataFilesToOpen, directory});
  if (alive && path && FileExists(*path)) OpenExportSource(*path);
}

void frmExport::Command6_Click() {
  const QPointer<frmExport> alive(this);
  const std::string extension = IsXml() ? ".xml" : ".csv";
  const std::string from = DatabaseFile.empty() ? access_.directory + "/" : DatabaseFile;
  const std::string name = NameIn(from);
  const auto path =
      host_.Boxes().SaveFile({text::ExportOutputTitle, IsXml() ? text::XmlFilesToSave : text::TextFilesToSave,
                              FolderOf(from), name.empty() ? "" : name.substr(0, name.rfind('.')) + extension});
  if (!alive || !path || path->empty()) return;
  OutputFile = NameIn(*path).find('.') == std::string::npos ? *path + extension : *path;
  ui_->Label4->setText(ToQt(OutputFile));
}

void frmExport::cmdOK_Click() {
  const QPointer<frmExport> alive(this);
  if (OutputFile.empty()) return Tell(text::SupplyOutputName);
  if (ui_->List2->count() == 0) return Tell(text::NothingToExport);
  std::error_code error;
  if (std::filesystem::equivalent(DatabaseFile, OutputFile, error)) return Tell(text::OutputIsTheSource);
  if (FileLock::HolderOf(OutputFile)) return Tell(text::LogIsOpenBefore + OutputFile + text::LogIsOpenAfter);
  if (!MayWrite()) {
    if (alive && IsXml()) reject();
    return;
  }
  const bool written = RunProcedure({host_.Boxes(), "cmdOK_Click"}, [&](const Statements& run) { Write(run); });
  if (alive && written) accept();
}

void frmExport::Write(const Statements& run) {
  const std::vector<int> fields = ChosenFields();
  // The window may go while events run.
  const ExportSource source = *source_;
  const ExportAccess access = access_;
  const std::string output = OutputFile;
  run([&] {
    LongTask task(access.platform.dialogs, access.platform.clock, TitleOf(access.mode));
    if (access.mode == ExportMode::LogToXml)
      WriteXml(source, output, task);
    else
      WriteCsv(source, fields, output, task);
  });
}

bool frmExport::MayWrite() {
  if (!FileExists(OutputFile)) return true;
  return host_.Boxes().Message({text::FileExistsOverwrite, {}, Buttons::YesNo, BoxIcon::Question, {}, {}, true}) ==
         velk::Answer::Yes;
}

std::vector<int> frmExport::ChosenFields() const {
  std::vector<int> fields;
  fields.reserve(static_cast<std::size_t>(ui_->List2->count()));
  for (int i = 0; i < ui_->List2->count(); ++i) fields.push_back(ui_->List2->item(i)->data(Qt::UserRole).toInt());
  return fields;
}

void frmExport::Tell(const OperatorText& text) {
  host_.Boxes().Message({text, {}, Buttons::Ok, BoxIcon::Exclamation});
}

void mnuFileExport_Click(WindowHost& host, const ExportAccess& access) {
  host.Show<frmExport>(access);
}

}  // namespace velk
