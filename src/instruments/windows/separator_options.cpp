#include "instruments/windows/separator_options.h"

#include "base/text_qt.h"
#include "instruments/texts.h"
#include "ui_separator_options.h"

namespace velk {

SeparatorOptions::SeparatorOptions(QWidget* parent) : QWidget(parent), ui_(std::make_unique<Ui::SeparatorOptions>()) {
  ui_->setupUi(this);
  optDelimiter_ = {ui_->optDelimiter_0, ui_->optDelimiter_1, ui_->optDelimiter_2, ui_->optDelimiter_3,
                   ui_->optDelimiter_4};
  optTerminator_ = {ui_->optTerminator_0, ui_->optTerminator_1, ui_->optTerminator_2, ui_->optTerminator_3};
  for (int i = 0; i < kDelimiterOptions; ++i)
    connect(optDelimiter_[static_cast<std::size_t>(i)], &QRadioButton::clicked, this,
            [this, i] { optDelimiter_Click(i); });
  for (int i = 0; i < kTerminatorOptions; ++i)
    connect(optTerminator_[static_cast<std::size_t>(i)], &QRadioButton::clicked, this,
            [this, i] { separators_.Terminator = TerminatorOf(i); });
}

SeparatorOptions::~SeparatorOptions() = default;

void SeparatorOptions::Show(const Separators& separators, Dialogs& dialogs) {
  separators_ = separators;
  dialogs_ = &dialogs;
  UpdateDelimiter();
  if (const auto option = TerminatorOption(separators_.Terminator)) {
    optTerminator_[static_cast<std::size_t>(*option)]->setChecked(true);
    // Tab leads to the one that is marked, as the toolkit sees to once its group has had the keyboard.
    for (QRadioButton* const each : optTerminator_)
      each->setFocusPolicy(each->isChecked() ? Qt::StrongFocus : Qt::ClickFocus);
  }
}

void SeparatorOptions::optDelimiter_Click(int option) {
  if (option == kTypedDelimiter)
    TypeDelimiter();
  else
    separators_.Delimiter = DelimiterOf(option);
  UpdateDelimiter();
}

void SeparatorOptions::UpdateDelimiter() {
  const int option = DelimiterOption(separators_.Delimiter);
  QRadioButton* const shown = optDelimiter_[static_cast<std::size_t>(option)];
  shown->setChecked(true);
  // Where a typed character stands elsewhere in the list, or none was given, the mark moves; the keyboard goes along.
  shown->setFocus();
  ui_->lblTyped->setText(option == kTypedDelimiter ? ToQt(separators_.Delimiter) : QString());
}

void SeparatorOptions::TypeDelimiter() {
  if (dialogs_ == nullptr) return;
  const OperatorText title = text::SerialPortProtocol;
  const auto typed = dialogs_->Input(text::TypeDelimiter, title);
  if (!typed) return;
  if (IsDelimiter(*typed))
    separators_.Delimiter = *typed;
  else
    dialogs_->Message({text::DelimiterNotValid, title, Buttons::Ok, BoxIcon::Exclamation});
}

}  // namespace velk
