#include "exchange/windows/data_file_info.h"

#include "base/numbers.h"
#include "base/text_qt.h"
#include "exchange/texts.h"
#include "i18n/windows/translate_form.h"
#include "model/help_topics.h"
#include "platform/windows/fit_to_title.h"
#include "ui_data_file_info.h"

namespace velk {

namespace {

constexpr std::size_t kNamesShown = 12;

/// The names of the first columns, so that a wrong file is seen at once.
std::string SomeNames(const std::vector<std::string>& names) {
  std::string text;
  for (std::size_t i = 0; i < names.size() && i < kNamesShown; ++i) (text += i == 0 ? "" : ", ") += names[i];
  return names.size() > kNamesShown ? text + ", ..." : text;
}

OperatorText WarningOf(const CsvFile& file) {
  if (file.Bytes().Size() == 0) return text::FileIsEmpty;
  if (file.Shape().hasSemicolons) return text::DividedBySemicolons;
  return file.Shape().hasStrayNames ? OperatorText(text::NamesWithoutDate) : OperatorText();
}

}  // namespace

DataFileInfo::DataFileInfo(WindowHost& host, const CsvFile& file)
    : QDialog(host.Parent()), ui_(std::make_unique<Ui::DataFileInfo>()) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Exchange);
  connect(ui_->cmdBack, &QPushButton::clicked, this, [this] { Leave(WizardStep::Back); });
  connect(ui_->cmdNext, &QPushButton::clicked, this, [this] { Leave(WizardStep::Next); });
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  TranslateForm(*this, host.Words());
  const auto say = [&](const OperatorText& text) { return ToQt(host.Words().Translator.In(text)); };
  const CsvShape& shape = file.Shape();
  setWindowTitle(say(text::CurrentFileBefore + file.Path() + text::CurrentFileAfter));
  FitToTitle(*this);
  ui_->lblColumns->setText(say(text::NumberOfColumns + std::to_string(shape.ColumnCount)));
  ui_->lblRows->setText(say(text::EstimatedRows + Format(shape.EstimatedRows, "#,##0")));
  ui_->lblNames->setText(ToQt(SomeNames(shape.ColumnNames)));
  const OperatorText warning = WarningOf(file);
  ui_->lblNote->setText(say(warning));
  ui_->lblNote->setVisible(!warning.IsEmpty());
  ui_->cmdNext->setFocus();
}

DataFileInfo::~DataFileInfo() = default;

void DataFileInfo::Leave(WizardStep step) {
  step_ = step;
  accept();
}

}  // namespace velk
