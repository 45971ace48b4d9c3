#include "exchange/windows/frm_imprt_live_data.h"

#include <QMenu>
#include <QSignalBlocker>
#include <algorithm>

#include "base/text_qt.h"
#include "exchange/live_properties.h"
#include "exchange/log_tables.h"
#include "exchange/texts.h"
#include "i18n/windows/translate_form.h"
#include "model/help_topics.h"
#include "model/parameter.h"
#include "platform/dialogs/long_task.h"
#include "platform/dialogs/procedure.h"
#include "platform/files/file_errors.h"
#include "settings/windows/frm_properties.h"
#include "ui_frm_imprt_live_data.h"

namespace velk {

namespace {

void ShowNames(QListWidget& list, const std::vector<LiveField>& fields) {
  const int present = list.currentRow();
  list.clear();
  for (const LiveField& field : fields) list.addItem(ToQt(field.Name));
  list.setCurrentRow(std::clamp(present, 0, std::max(list.count() - 1, 0)));
}

}  // namespace

frmImprtLiveData::frmImprtLiveData(WindowHost& host, LiveChoiceAccess access, const LiveImport& stored)
    : QDialog(host.Parent()),
      host_(host),
      ui_(std::make_unique<Ui::frmImprtLiveData>()),
      access_(std::move(access)),
      live_(stored) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Exchange);
  Bind();
  TranslateForm(*this, host.Words());
  ui_->lstAvailableFields->setAccessibleName(ui_->lblAvailable->text().remove(QLatin1Char('&')));
  ui_->lstSelected->setAccessibleName(ui_->lblSelected->text().remove(QLatin1Char('&')));
  (live_.Import || live_.DBaseName.empty() ? ui_->optOn : ui_->optOff)->setChecked(true);
  if (!live_.DBaseName.empty()) ReadTables("Form_Load", live_.DBaseName);
  ShowTables();
  (live_.DBaseName.empty() ? static_cast<QWidget*>(ui_->cmdGetFileName) : ui_->lstAvailableFields)->setFocus();
}

frmImprtLiveData::~frmImprtLiveData() = default;

void frmImprtLiveData::Bind() {
  connect(ui_->cmdGetFileName, &QPushButton::clicked, this, &frmImprtLiveData::cmdGetFileName_Click);
  connect(ui_->cmbAvilableTables, &QComboBox::activated, this, &frmImprtLiveData::cmbAvilableTables_Click);
  connect(ui_->cmdSelect, &QPushButton::clicked, this, &frmImprtLiveData::cmdSelect_Click);
  connect(ui_->cmdRemove, &QPushButton::clicked, this, &frmImprtLiveData::cmdRemove_Click);
  connect(ui_->lstAvailableFields, &QListWidget::itemDoubleClicked, this, &frmImprtLiveData::cmdSelect_Click);
  connect(ui_->lstSelected, &QListWidget::itemDoubleClicked, this, &frmImprtLiveData::lstSelected_Properties);
  connect(ui_->cmdProperties, &QPushButton::clicked, this, &frmImprtLiveData::lstSelected_Properties);
  connect(ui_->cmdDate, &QPushButton::clicked, this, [this] { MoveTo(live_.DateField); });
  connect(ui_->cmdTime, &QPushButton::clicked, this, [this] { MoveTo(live_.TimeField); });
  connect(ui_->cmdOK1, &QPushButton::clicked, this, &frmImprtLiveData::cmdOK1_Click);
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  ui_->lblDate->installEventFilter(this);
  ui_->lblTime->installEventFilter(this);
  auto* properties = new QAction(ToQt(host_.Words().Translator.In(text::FieldProperties)), ui_->lstSelected);
  properties->setObjectName("mnuProperties");
  connect(properties, &QAction::triggered, this, &frmImprtLiveData::lstSelected_Properties);
  ui_->lstSelected->addAction(properties);
  ui_->lstSelected->setContextMenuPolicy(Qt::ActionsContextMenu);
}

/// A double click on a label clears it.
bool frmImprtLiveData::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonDblClick) {
    (watched == ui_->lblDate ? live_.DateField : live_.TimeField).clear();
    ShowFields();
  }
  return QDialog::eventFilter(watched, event);
}

void frmImprtLiveData::cmdGetFileName_Click() {
  const QPointer<frmImprtLiveData> alive(this);
  const std::string directory = live_.DBaseName.empty() ? access_.directory : FolderOf(live_.DBaseName);
  const auto file = host_.Boxes().OpenFile({text::LiveDatabaseTitle, text::DataFilesToOpen, directory});
  if (!alive || !file || file->empty() || !ReadTables("cmdGetFileName_Click", *file)) return;
  if (live_.DBaseName != *file) {
    live_.DBaseName = *file;
    live_.TableName.clear();
  }
  ShowTables();
}

bool frmImprtLiveData::ReadTables(const char* procedure, const std::string& file) {
  const QPointer<frmImprtLiveData> alive(this);
  const LiveChoiceAccess access = access_;
  std::vector<ForeignTable> tables;
  const bool isRead = RunProcedure({host_.Boxes(), procedure}, [&](const Statements& run) {
    tables = run([&] {
      LongTask task(access.platform.dialogs, access.platform.clock, text::LiveDatabaseTitle);
      task.Doing(text::ReadingTables);
      return ReadForeignTables(file, access.tools, [&](double bytes) { task.Step(bytes, 0); });
    });
  });
  if (!alive || !isRead) return false;
  tables_ = std::move(tables);
  return true;
}

void frmImprtLiveData::ShowTables() {
  ui_->txtDatabaseName->setText(ToQt(live_.DBaseName));
  ui_->cmbAvilableTables->clear();
  for (const std::string& name : GetTablesName(tables_)) ui_->cmbAvilableTables->addItem(ToQt(name));
  const int stored = ui_->cmbAvilableTables->findText(ToQt(live_.TableName));
  ui_->cmbAvilableTables->setCurrentIndex(std::max(stored, 0));
  if (stored < 0 && !tables_.empty()) return cmbAvilableTables_Click();
  ShowFields();
}

void frmImprtLiveData::cmbAvilableTables_Click() {
  const std::string table = FromQt(ui_->cmbAvilableTables->currentText());
  if (table != live_.TableName) {
    live_.TableName = table;
    live_.DateField.clear();
    live_.TimeField.clear();
    live_.Fields.clear();
  }
  ShowFields();
}

/// Each field of the table stands in one place.
void frmImprtLiveData::ShowFields() {
  available_ = GetFieldsName(tables_, live_.TableName);
  std::erase_if(available_, [this](const LiveField& field) {
    return field.Name == live_.DateField || field.Name == live_.TimeField ||
           std::any_of(live_.Fields.begin(), live_.Fields.end(),
                       [&](const LiveField& chosen) { return chosen.Name == field.Name; });
  });
  ShowNames(*ui_->lstAvailableFields, available_);
  ShowNames(*ui_->lstSelected, live_.Fields);
  ui_->lblDate->setText(ToQt(live_.DateField));
  ui_->lblTime->setText(ToQt(live_.TimeField));
  UpdateKeys();
}

void frmImprtLiveData::UpdateKeys() {
  const bool hasField = !available_.empty();
  ui_->cmdSelect->setEnabled(hasField && live_.Fields.size() < kMaxParameters);
  ui_->cmdDate->setEnabled(hasField);
  ui_->cmdTime->setEnabled(hasField);
  ui_->cmdRemove->setEnabled(!live_.Fields.empty());
  ui_->cmdProperties->setEnabled(!live_.Fields.empty());
  ui_->cmbAvilableTables->setEnabled(!tables_.empty());
  ui_->cmdOK1->setEnabled(!live_.DBaseName.empty());
}

void frmImprtLiveData::cmdSelect_Click() {
  const auto row = static_cast<std::size_t>(ui_->lstAvailableFields->currentRow());
  if (row >= available_.size() || live_.Fields.size() >= kMaxParameters) return;
  LiveField field = available_[row];
  field.DisplayName = field.Name;
  field.Unit = host_.Words().Translator.In(text::FieldUnit);
  field.Colour = CurveColour(live_.Fields.size());
  live_.Fields.push_back(std::move(field));
  ShowFields();
  ui_->lstSelected->setCurrentRow(ui_->lstSelected->count() - 1);
}

void frmImprtLiveData::cmdRemove_Click() {
  const int row = ui_->lstSelected->currentRow();
  if (row < 0 || static_cast<std::size_t>(row) >= live_.Fields.size()) return;
  live_.Fields.erase(live_.Fields.begin() + row);
  ShowFields();
}

void frmImprtLiveData::MoveTo(std::string& field) {
  const auto row = static_cast<std::size_t>(ui_->lstAvailableFields->currentRow());
  if (row >= available_.size()) return;
  field = available_[row].Name;
  ShowFields();
}

void frmImprtLiveData::lstSelected_Properties() {
  const QPointer<frmImprtLiveData> alive(this);
  const auto row = static_cast<std::size_t>(ui_->lstSelected->currentRow());
  const bool isThere = row < live_.Fields.size();
  const auto entered =
      AskProperties(host_, isThere ? std::optional<CurveProperties>(PropertiesOf(live_.Fields[row])) : std::nullopt);
  if (alive && entered && row < live_.Fields.size()) StoreProperties(live_.Fields[row], *entered);
}

int frmImprtLiveData::TypeOf(const std::string& name) const {
  for (const LiveField& field : GetFieldsName(tables_, live_.TableName))
    if (field.Name == name) return field.Type;
  return 0;
}

OperatorText frmImprtLiveData::Fault() const {
  if (live_.DateField.empty() || live_.TimeField.empty()) return text::SelectDateAndTime;
  // Where the database can't be read just now, all is as it was stored.
  const bool hasTypes = !tables_.empty();
  if (hasTypes && !CanBeDate(TypeOf(live_.DateField)))
    return text::FieldNotValid + live_.DateField + text::NotValidDate;
  if (hasTypes && !CanBeTime(TypeOf(live_.TimeField)))
    return text::FieldNotValid + live_.TimeField + text::NotValidTime;
  if (live_.Fields.empty()) return text::NoFieldsSelected;
  return {};
}

void frmImprtLiveData::cmdOK1_Click() {
  const QPointer<frmImprtLiveData> alive(this);
  live_.Import = ui_->optOn->isChecked();
  if (live_.Import) {
    if (const OperatorText fault = Fault(); !fault.IsEmpty()) {
      host_.Boxes().Message({fault, {}, Buttons::Ok, BoxIcon::Exclamation});
      return;
    }
  }
  const LiveChoiceAccess access = access_;
  const LiveImport live = live_;
  const bool stored =
      RunProcedure({host_.Boxes(), "cmdOK1_Click"}, [&](const Statements& run) { run([&] { access.store(live); }); });
  if (alive && stored) accept();
}

}  // namespace velk
