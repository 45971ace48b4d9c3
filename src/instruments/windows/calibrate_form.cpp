#include "instruments/windows/calibrate_form.h"

#include <QPointer>

#include "base/number_entry.h"
#include "base/numbers.h"
#include "base/text.h"
#include "base/text_qt.h"
#include "i18n/windows/translate_form.h"
#include "instruments/texts.h"
#include "model/help_topics.h"
#include "model/parameter_questions.h"
#include "model/texts.h"
#include "ui_calibrate_form.h"

namespace velk {

CalibrateForm::CalibrateForm(WindowHost& host, CalibrationWork work)
    : QDialog(host.Parent()),
      host_(host),
      ui_(std::make_unique<Ui::CalibrateForm>()),
      work_(std::move(work)),
      references_{},
      buttons_{},
      readings_{} {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Parameters);
  references_ = {ui_->Text1_0, ui_->Text1_1};
  buttons_ = {ui_->cmdRef_0, ui_->cmdRef_1};
  readings_ = {ui_->lblRead_0, ui_->lblRead_1};
  for (const std::string& name : work_.names) ui_->List1->addItem(ToQt(name));
  ui_->List1->setCurrentRow(0);
  connect(ui_->List1, &QListWidget::currentRowChanged, this, &CalibrateForm::List1_Click);
  for (int number = 0; number < 2; ++number) {
    connect(buttons_[static_cast<std::size_t>(number)], &QPushButton::clicked, this,
            [=, this] { DoReference(number); });
    references_[static_cast<std::size_t>(number)]->installEventFilter(this);
    connect(references_[static_cast<std::size_t>(number)], &QLineEdit::textEdited, this,
            [=, this] { ForgetReading(static_cast<std::size_t>(number)); });
  }
  connect(ui_->cmdStop, &QPushButton::clicked, this, [this] { work_.stop(); });
  connect(ui_->cmdClose, &QPushButton::clicked, this, &QDialog::accept);
  TranslateForm(*this, host.Words());
  for (QLineEdit* number : {ui_->Text1_0, ui_->Text1_1, ui_->Text1_2, ui_->Text1_3})
    number->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("-0000000.00000")));
  ui_->List1->setAccessibleName(ui_->lblParameter->text().remove('&'));
  ShowSampling(false);
  ShowHint();
  ui_->List1->setFocus();
}

CalibrateForm::~CalibrateForm() = default;

void CalibrateForm::done(int result) {
  if (!isSampling_) return QDialog::done(result);
  closing_ = result;
  work_.stop();
}

/// Enter in a box does what stands beside it.
bool CalibrateForm::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusIn)
    for (std::size_t i = 0; i < references_.size(); ++i)
      if (watched == references_[i]) buttons_[i]->setDefault(true);
  return QDialog::eventFilter(watched, event);
}

/// What was read belongs to another reference.
void CalibrateForm::ForgetReading(std::size_t number) {
  done_[number] = false;
  readings_[number]->clear();
  for (QLineEdit* shown : {ui_->Text1_2, ui_->Text1_3}) shown->clear();
}

/// What was read belongs to another parameter.
void CalibrateForm::List1_Click() {
  for (std::size_t i = 0; i < done_.size(); ++i) ForgetReading(i);
  ui_->lblReading->clear();
  ShowHint();
}

void CalibrateForm::DoReference(int number) {
  const std::string typed = FromQt(references_[static_cast<std::size_t>(number)]->text());
  if (Trim(typed).empty()) return ShowFault(number, text::ReferenceMissing);
  const auto reference = EnteredNumber(typed);
  if (!reference) return ShowFault(number, FaultOfNumber(typed));
  ShowHint();
  Read(number, *reference);
}

void CalibrateForm::Read(int number, double reference) {
  const QPointer<CalibrateForm> alive(this);
  const auto place = static_cast<std::size_t>(number);
  ShowSampling(true);
  const auto reading = work_.read(ui_->List1->currentRow() + 1, [alive](double value) {
    if (alive) alive->ui_->lblReading->setText(ToQt(NumberText(value)));
  });
  if (!alive) return;
  ShowSampling(false);
  if (reading) {
    points_[place] = {reference, *reading};
    done_[place] = true;
    readings_[place]->setText(QStringLiteral("\u2713 ") + ToQt(NumberText(*reading)));
    references_[1]->setFocus();
    Calibrate();
  }
  if (alive && closing_) QDialog::done(*closing_);
}

void CalibrateForm::Calibrate() {
  if (!done_[0] || !done_[1]) return;
  const auto scale = ScaleOf(points_);
  if (!scale) {
    host_.Boxes().Message({text::CalibrationDivision, {}, Buttons::Ok, BoxIcon::Critical});
    return;
  }
  ui_->Text1_2->setText(ToQt(NumberText(scale->gain)));
  ui_->Text1_3->setText(ToQt(NumberText(scale->offset)));
  work_.take(ui_->List1->currentRow() + 1, *scale);
}

void CalibrateForm::ShowSampling(bool sampling) {
  isSampling_ = sampling;
  const bool canStart = work_.canRead && !work_.names.empty() && !sampling;
  for (QPushButton* button : buttons_) button->setEnabled(canStart);
  for (QLineEdit* reference : references_) reference->setEnabled(canStart);
  ui_->List1->setEnabled(!sampling);
  ui_->cmdClose->setEnabled(!sampling);
  ui_->cmdStop->setEnabled(sampling);
}

void CalibrateForm::ShowHint() {
  const MessageText& hint = work_.canRead ? text::CalibrationHint : text::CalibratesOthers;
  ui_->lblFault->setStyleSheet({});
  ui_->lblFault->setText(ToQt(host_.Words().Translator.In(hint)));
}

void CalibrateForm::ShowFault(int number, const MessageText& fault) {
  QLineEdit& box = *references_[static_cast<std::size_t>(number)];
  box.setFocus();
  box.selectAll();
  const bool isDark = palette().color(QPalette::Window).lightness() < 128;
  const QString colour = isDark ? QStringLiteral("#FF8A8E") : QStringLiteral("#B00020");
  ui_->lblFault->setStyleSheet(QStringLiteral("QLabel { color: %1; }").arg(colour));
  ui_->lblFault->setText(ToQt(host_.Words().Translator.In(fault)));
}

}  // namespace velk
