#include "exchange/windows/rename_fields.h"

#include <QLineEdit>
#include <QScrollBar>

#include "base/text_qt.h"
#include "i18n/windows/translate_form.h"
#include "model/help_topics.h"
#include "ui_rename_fields.h"

namespace velk {

RenameFields::RenameFields(WindowHost& host, const std::vector<std::string>& names)
    : QDialog(host.Parent()), ui_(std::make_unique<Ui::RenameFields>()) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Exchange);
  QWidget* before = nullptr;
  for (const std::string& name : names) {
    auto* box = new QLineEdit(ToQt(name), ui_->fieldsArea);
    const QString number = QString::number(boxes_.size() + 1);
    box->setObjectName(QStringLiteral("Text1_") + number);
    box->setAccessibleName(number);
    ui_->rows->addRow(number, box);
    if (before) setTabOrder(before, box);
    before = box;
    boxes_.push_back(box);
  }
  if (before) setTabOrder(before, ui_->Command1);
  connect(ui_->Command1, &QPushButton::clicked, this, &QDialog::accept);
  TranslateForm(*this, host.Words());
  if (!boxes_.empty()) boxes_.front()->setFocus();
}

RenameFields::~RenameFields() = default;

std::vector<std::string> RenameFields::Answer() const {
  std::vector<std::string> names;
  for (const QLineEdit* box : boxes_) names.push_back(FromQt(box->text()));
  return names;
}

}  // namespace velk
