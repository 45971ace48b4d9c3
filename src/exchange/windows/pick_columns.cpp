#include "exchange/windows/pick_columns.h"

#include <QListWidget>

#include "base/text_qt.h"
#include "exchange/texts.h"
#include "i18n/windows/translate_form.h"
#include "model/help_topics.h"
#include "ui_pick_columns.h"

namespace velk {

PickColumns::PickColumns(WindowHost& host, const std::vector<std::string>& names, int most)
    : QDialog(host.Parent()), host_(host), ui_(std::make_unique<Ui::PickColumns>()), most_(most) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Exchange);
  for (const std::string& name : names) {
    auto* entry = new QListWidgetItem(ToQt(name), ui_->List1);
    entry->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
    entry->setCheckState(ui_->List1->count() <= most ? Qt::Checked : Qt::Unchecked);
  }
  ui_->List1->setCurrentRow(0);
  connect(ui_->List1, &QListWidget::itemChanged, this, [this] { ShowChosen(); });
  connect(ui_->cmdOK, &QPushButton::clicked, this, &QDialog::accept);
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  TranslateForm(*this, host.Words());
  ui_->List1->setAccessibleName(ui_->Label1->text());
  ShowChosen();
}

PickColumns::~PickColumns() = default;

std::vector<int> PickColumns::Answer() const {
  std::vector<int> chosen;
  for (int i = 0; i < ui_->List1->count(); ++i)
    if (ui_->List1->item(i)->checkState() == Qt::Checked) chosen.push_back(i);
  return chosen;
}

void PickColumns::ShowChosen() {
  const auto count = static_cast<int>(Answer().size());
  ui_->cmdOK->setEnabled(count >= 1 && count <= most_);
  const OperatorText text = text::ChosenBefore + std::to_string(count) + (text::ChosenOf + std::to_string(most_));
  ui_->lblChosen->setText(ToQt(host_.Words().Translator.In(text)));
}

}  // namespace velk
