#include "wells/windows/units_convert.h"

#include <QLineEdit>
#include <cmath>

#include "base/number_entry.h"
#include "base/numbers.h"
#include "base/text_qt.h"
#include "i18n/windows/translate_form.h"
#include "model/help_topics.h"
#include "ui_units_convert.h"
#include "wells/texts.h"

namespace velk {

namespace {

/// Letters of a unit's name.
constexpr int kShownOfUnit = 12;

}  // namespace

UnitsConvert::UnitsConvert(WindowHost& host, std::int16_t from, const UserUnits& user)
    : QDialog(host.Parent()), host_(host), ui_(std::make_unique<Ui::UnitsConvert>()) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Wells);
  const auto text = [&](const OperatorText& words) { return ToQt(host.Words().Translator.In(words)); };
  for (std::int16_t system : {kApiEnglish, kMetric, kUserDefined})
    if (system != from) ui_->List1->addItem(text(UnitSystemName(system)), system);
  ui_->List1->setCurrentIndex(0);
  ui_->UserLength->setText(ToQt(NumberText(user.length)));
  ui_->UserDepthLabel->setText(ToQt(user.depthLabel));
  ui_->UserAngleLabel->setText(ToQt(user.angleLabel));
  connect(ui_->cmdOK, &QPushButton::clicked, this, &UnitsConvert::cmdOK_Click);
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  for (QLineEdit* box : {ui_->UserLength, ui_->UserDepthLabel, ui_->UserAngleLabel}) {
    box->setMinimumWidth(kShownOfUnit * box->fontMetrics().averageCharWidth());
    box->setCursorPosition(0);
  }
  TranslateForm(*this, host.Words());
  setWindowTitle(text(text::ConvertUnitsFrom + UnitSystemName(from) + text::ConvertUnitsTo));
}

UnitsConvert::~UnitsConvert() = default;

void UnitsConvert::cmdOK_Click() {
  const auto length = EnteredNumber(FromQt(ui_->UserLength->text()));
  if (!length || !std::isfinite(*length) || *length <= 0) {
    ui_->UserLength->setFocus();
    ui_->UserLength->selectAll();
    // Lets events run: the program may end meanwhile and take this window along.
    host_.Boxes().Message({text::UserLengthNotAbove, {}, Buttons::Ok, BoxIcon::Critical});
    return;
  }
  choice_.to = static_cast<std::int16_t>(ui_->List1->currentData().toInt());
  choice_.user = {*length, FromQt(ui_->UserDepthLabel->text()), FromQt(ui_->UserAngleLabel->text())};
  accept();
}

}  // namespace velk
