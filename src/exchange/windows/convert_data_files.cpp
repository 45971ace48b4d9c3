#include "exchange/windows/convert_data_files.h"

#include <filesystem>

#include "base/text_qt.h"
#include "exchange/texts.h"
#include "i18n/windows/translate_form.h"
#include "model/help_topics.h"
#include "ui_convert_data_files.h"

namespace velk {

ConvertDataFiles::ConvertDataFiles(WindowHost& host, std::string directory, const std::string& path)
    : QDialog(host.Parent()),
      host_(host),
      ui_(std::make_unique<Ui::ConvertDataFiles>()),
      directory_(std::move(directory)) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Exchange);
  connect(ui_->Command1, &QPushButton::clicked, this, &ConvertDataFiles::Command1_Click);
  connect(ui_->Text1, &QLineEdit::textChanged, this, &ConvertDataFiles::Text1_Change);
  connect(ui_->cmdNext, &QPushButton::clicked, this, &QDialog::accept);
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  TranslateForm(*this, host.Words());
  ui_->Text1->setText(ToQt(path));
  Text1_Change();
}

ConvertDataFiles::~ConvertDataFiles() = default;

std::string ConvertDataFiles::Answer() const {
  return FromQt(ui_->Text1->text());
}

void ConvertDataFiles::Command1_Click() {
  const QPointer<ConvertDataFiles> alive(this);
  const auto path = host_.Boxes().OpenFile({text::ImportCsv, text::TextFilesFilter, directory_});
  if (alive && path) ui_->Text1->setText(ToQt(*path));
}

/// What can't be gone on with is told beside the field while it is typed.
void ConvertDataFiles::Text1_Change() {
  std::error_code error;
  const bool isThere = std::filesystem::is_regular_file(Answer(), error);
  ui_->cmdNext->setEnabled(isThere);
  const bool isMissing = !isThere && !Answer().empty();
  ui_->lblHint->setText(isMissing ? ToQt(host_.Words().Translator.In(text::NoSuchTextFile)) : QString());
}

}  // namespace velk
