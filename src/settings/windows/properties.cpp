#include "settings/windows/properties.h"

#include <QPainter>
#include <QPixmap>
#include <QPointer>
#include <utility>

#include "base/colour.h"
#include "base/one_line.h"
#include "base/text_qt.h"
#include "i18n/windows/translate_form.h"
#include "model/help_topics.h"
#include "model/number_formats.h"
#include "model/parameter_questions.h"
#include "model/texts.h"
#include "settings/texts.h"
#include "ui_properties.h"

namespace velk {

namespace {

constexpr int kLettersOfName = 30;

}  // namespace

Properties::Properties(WindowHost& host, CurveProperties properties, std::function<void()> calibrate)
    : Properties(host, std::move(properties), "Properties", std::move(calibrate)) {
}

Properties::Properties(WindowHost& host, CurveProperties properties, const char* name, std::function<void()> calibrate)
    : QDialog(host.Parent()),
      host_(host),
      ui_(std::make_unique<Ui::Properties>()),
      properties_(std::move(properties)),
      calibrate_(std::move(calibrate)) {
  ui_->setupUi(this);
  if (calibrate_)
    connect(ui_->Command3, &QPushButton::clicked, this, &Properties::Command3_Click);
  else
    delete std::exchange(ui_->Command3, nullptr);
  setObjectName(QLatin1String(name));
  setProperty("helpTopic", topic::Parameters);
  TranslateForm(*this, host.Words());
  ui_->txtName->setMinimumWidth(kLettersOfName * fontMetrics().horizontalAdvance(QLatin1Char('0')));
  Fill();
  connect(ui_->cmdColor, &QPushButton::clicked, this, &Properties::cmdColor_Click);
  connect(ui_->optWrapping, &QCheckBox::toggled, this, &Properties::ShowWrapping);
  connect(ui_->cmdOK, &QPushButton::clicked, this, &Properties::cmdOK_Click);
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

Properties::~Properties() = default;

void Properties::Fill() {
  const PropertyTexts texts = TextsOf(properties_);
  ui_->txtName->setText(ToQt(properties_.name));
  ui_->txtName->selectAll();
  ui_->txtUnits->setText(ToQt(properties_.units));
  ui_->txtMinimum->setText(ToQt(texts.minimum));
  ui_->txtMaximum->setText(ToQt(texts.maximum));
  for (const std::string& sample : NumberFormatSamples()) ui_->cboFormat->addItem(ToQt(sample));
  ui_->cboFormat->setCurrentIndex(ui_->cboFormat->findText(ToQt(SampleOfFormat(properties_.format))));
  ui_->optWrapping->setChecked(properties_.Wrapping);
  ui_->UpDown1->setValue(properties_.smoothing);
  ui_->txtLowerAlarm->setText(ToQt(texts.loweralarm));
  ui_->txtUpperAlarm->setText(ToQt(texts.upperalarm));
  for (QWidget* const field :
       std::initializer_list<QWidget*>{ui_->lblLowerAlarm, ui_->txtLowerAlarm, ui_->lblUpperAlarm, ui_->txtUpperAlarm})
    field->setVisible(properties_.hasAlarms);
  for (QWidget* const field : std::initializer_list<QWidget*>{ui_->lblSmoothing, ui_->UpDown1})
    field->setVisible(properties_.hasSmoothing);
  ui_->lblFault->hide();
  ShowColour();
  ShowWrapping();
}

/// A picture in the colour, which every desktop shows as it is; its frame shows one that is like the button's.
void Properties::ShowColour() {
  QPixmap picture(96, 16);
  picture.fill(QColor(128, 128, 128));
  const QColor colour(Red(properties_.color), Green(properties_.color), Blue(properties_.color));
  QPainter(&picture).fillRect(picture.rect().adjusted(1, 1, -1, -1), colour);
  ui_->cmdColor->setIcon(QIcon(picture));
  ui_->cmdColor->setIconSize(picture.size());
  ui_->cmdColor->setAccessibleName(ui_->lblColor->text().remove('&'));
}

void Properties::ShowWrapping() {
  const MessageText& shown = ui_->optWrapping->isChecked() ? text::WrappingOn : text::WrappingOff;
  ui_->optWrapping->setText(ToQt(host_.Words().Translator.In(shown)));
}

void Properties::cmdColor_Click() {
  const QPointer<Properties> alive(this);
  const auto colour = AskColour(host_.Boxes(), FromQt(ui_->txtName->text()), properties_.color);
  if (!colour || !alive) return;
  properties_.color = *colour;
  ShowColour();
}

void Properties::done(int result) {
  if (!calibrating_) return QDialog::done(result);
  closing_ = result;
}

void Properties::Command3_Click() {
  const QPointer<Properties> alive(this);
  calibrating_ = true;
  setEnabled(false);
  calibrate_();
  if (!alive) return;
  calibrating_ = false;
  setEnabled(true);
  ui_->Command3->setFocus();
  if (closing_) QDialog::done(*closing_);
}

void Properties::cmdOK_Click() {
  CurveProperties entered = properties_;
  entered.name = OnOneLine(FromQt(ui_->txtName->text()));
  entered.units = OnOneLine(FromQt(ui_->txtUnits->text()));
  if (ui_->cboFormat->currentIndex() >= 0) entered.format = FormatOfSample(FromQt(ui_->cboFormat->currentText()));
  entered.Wrapping = ui_->optWrapping->isChecked();
  entered.smoothing = ui_->UpDown1->value();
  const auto checked = WithTexts(entered, {FromQt(ui_->txtMinimum->text()), FromQt(ui_->txtMaximum->text()),
                                           FromQt(ui_->txtLowerAlarm->text()), FromQt(ui_->txtUpperAlarm->text())});
  if (const auto* const fault = std::get_if<PropertyFault>(&checked)) return ShowFault(*fault);
  properties_ = std::get<CurveProperties>(checked);
  accept();
}

QLineEdit& Properties::FieldOf(std::string PropertyTexts::*field) const {
  if (field == &PropertyTexts::minimum) return *ui_->txtMinimum;
  if (field == &PropertyTexts::maximum) return *ui_->txtMaximum;
  return field == &PropertyTexts::loweralarm ? *ui_->txtLowerAlarm : *ui_->txtUpperAlarm;
}

void Properties::ShowFault(const PropertyFault& fault) {
  QLineEdit& field = FieldOf(fault.field);
  field.setFocus();
  field.selectAll();
  const bool isDark = palette().color(QPalette::Window).lightness() < 128;
  const QString colour = isDark ? QStringLiteral("#FF8A8E") : QStringLiteral("#B00020");
  ui_->lblFault->setStyleSheet(QStringLiteral("QLabel { color: %1; }").arg(colour));
  ui_->lblFault->setText(ToQt(host_.Words().Translator.In(fault.text)));
  ui_->lblFault->show();
  if (fault.text == text::MinimumNotBelow) host_.Boxes().Message({fault.text, {}, Buttons::Ok, BoxIcon::Critical});
}

}  // namespace velk
