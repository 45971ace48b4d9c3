#include "exchange/windows/file_options.h"

#include "base/text_qt.h"
#include "i18n/windows/translate_form.h"
#include "model/help_topics.h"
#include "platform/windows/fit_to_title.h"
#include "ui_file_options.h"

namespace velk {

FileOptions::FileOptions(WindowHost& host, const std::string& path)
    : QDialog(host.Parent()), ui_(std::make_unique<Ui::FileOptions>()) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Exchange);
  ui_->lblFile->setText(ToQt(path));
  connect(ui_->cmdAppend, &QPushButton::clicked, this, [this] { Choose(FileOption::Append); });
  connect(ui_->cmdOverWrite, &QPushButton::clicked, this, [this] { Choose(FileOption::OverWrite); });
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  TranslateForm(*this, host.Words());
  FitToTitle(*this);
  ui_->cmdAppend->setFocus();
}

FileOptions::~FileOptions() = default;

void FileOptions::Choose(FileOption option) {
  option_ = option;
  accept();
}

}  // namespace velk
