#include "wells/windows/frm_import_survey.h"

#include <QLineEdit>
#include <algorithm>
#include <cmath>
#include <limits>

#include "base/number_entry.h"
#include "base/text_qt.h"
#include "i18n/windows/translate_form.h"
#include "model/help_topics.h"
#include "ui_frm_import_survey.h"
#include "wells/texts.h"

namespace velk {

namespace {

/// Of a field's name.
constexpr int kShownLetters = 20;

}  // namespace

frmImportSurvey::frmImportSurvey(WindowHost& host, const std::vector<std::string>& fields,
                                 const LiveSurveyChoice& choice, bool isRunning)
    : QDialog(host.Parent()), host_(host), ui_(std::make_unique<Ui::frmImportSurvey>()) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Wells);
  boxes_ = {ui_->txtField_0, ui_->txtField_1, ui_->txtField_2, ui_->txtField_3,
            ui_->txtField_4, ui_->txtField_5, ui_->txtField_6};
  const std::array<QPushButton*, kSurveyQuantities> assign = {ui_->cmdAssign_0, ui_->cmdAssign_1, ui_->cmdAssign_2,
                                                              ui_->cmdAssign_3, ui_->cmdAssign_4, ui_->cmdAssign_5,
                                                              ui_->cmdAssign_6};
  for (std::size_t i = 0; i < kSurveyQuantities; ++i)
    connect(assign[i], &QPushButton::clicked, this, [this, i] { cmdAssign_Click(i); });
  for (const std::string& field : fields) ui_->List1->addItem(ToQt(field));
  ui_->List1->setCurrentRow(0);
  Match(fields, choice.fields);
  const std::array<QRadioButton*, 3> filters = {ui_->optSpeed_0, ui_->optSpeed_1, ui_->optSpeed_2};
  filters[static_cast<std::size_t>(choice.filter)]->setChecked(true);
  ui_->Text1->setText(QString::number(choice.interval));
  ui_->Command1->setEnabled(isRunning);
  // A new survey would take the place of the one that runs.
  if (isRunning) ui_->cmdCancel->setDefault(true);
  connect(ui_->cmdOK, &QPushButton::clicked, this, &frmImportSurvey::cmdOK_Click);
  connect(ui_->Command1, &QPushButton::clicked, this, &frmImportSurvey::Command1_Click);
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  TranslateForm(*this, host.Words());
  for (QLineEdit* box : boxes_) box->setMinimumWidth(kShownLetters * box->fontMetrics().averageCharWidth());
  ui_->List1->setAccessibleName(ui_->Label1->text().remove(QLatin1Char('&')));
}

frmImportSurvey::~frmImportSurvey() = default;

void frmImportSurvey::Match(const std::vector<std::string>& fields, const SurveyFields& chosen) {
  const std::array<std::vector<MessageText>, kSurveyQuantities> words = {
      {{text::QuantitySpeed},
       {text::QuantityDate},
       {text::QuantityTime},
       {text::HeadingDepth},
       {text::HeadingInclination, text::QuantityDeviation},
       {text::HeadingAzimuth},
       {text::QuantityRpm}}};
  const auto isThere = [&](const std::string& field) {
    return std::find(fields.begin(), fields.end(), field) != fields.end();
  };
  for (std::size_t i = 0; i < kSurveyQuantities; ++i) {
    std::string field = isThere(chosen[i]) ? chosen[i] : std::string();
    // The columns of date and time have English names in any language.
    for (const MessageText& word : words[i])
      for (const std::string& name : {host_.Words().Translator.In(word), std::string(word.english)})
        if (field.empty() && isThere(name)) field = name;
    boxes_[i]->setText(ToQt(field));
    boxes_[i]->setCursorPosition(0);
  }
}

/// A field that stands in a box already goes in no other one.
void frmImportSurvey::cmdAssign_Click(std::size_t quantity) {
  const auto* entry = ui_->List1->currentItem();
  const bool isTaken = entry && std::any_of(boxes_.begin(), boxes_.end(),
                                            [&](const QLineEdit* box) { return box->text() == entry->text(); });
  if (!entry || isTaken) return;
  boxes_[quantity]->setText(entry->text());
  boxes_[quantity]->setCursorPosition(0);
}

void frmImportSurvey::cmdOK_Click() {
  LiveSurveyChoice choice;
  for (std::size_t i = 0; i < kSurveyQuantities; ++i) choice.fields[i] = FromQt(boxes_[i]->text());
  // Boxes let events run: the program may end meanwhile and take this window along.
  if (std::any_of(choice.fields.begin(), choice.fields.end(), [](const std::string& field) { return field.empty(); })) {
    host_.Boxes().Message({text::NothingToImport, {}, Buttons::Ok, BoxIcon::Exclamation});
    return;
  }
  const double interval = std::floor(EnteredNumber(FromQt(ui_->Text1->text())).value_or(0));
  if (!(interval >= 1 && interval <= std::numeric_limits<std::int16_t>::max())) {
    ui_->Text1->setFocus();
    ui_->Text1->selectAll();
    host_.Boxes().Message({text::IntervalOutOfRange, {}, Buttons::Ok, BoxIcon::Critical});
    return;
  }
  choice.interval = static_cast<std::int16_t>(interval);
  if (ui_->optSpeed_1->isChecked()) choice.filter = SpeedFilter::PullingOut;
  if (ui_->optSpeed_2->isChecked()) choice.filter = SpeedFilter::All;
  answer_ = {false, choice};
  accept();
}

void frmImportSurvey::Command1_Click() {
  answer_.stops = true;
  accept();
}

}  // namespace velk
