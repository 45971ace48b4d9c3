#include "settings/windows/frm_user_options.h"

#include <variant>

#include "base/text_qt.h"
#include "i18n/windows/translate_form.h"
#include "model/help_topics.h"
#include "ui_frm_user_options.h"

namespace velk {

frmUserOptions::frmUserOptions(WindowHost& host, const UserOptionTexts& shown)
    : QDialog(host.Parent()), host_(host), ui_(std::make_unique<Ui::frmUserOptions>()) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::StripChart);
  text1_ = {ui_->Text1_0, ui_->Text1_1, ui_->Text1_2, ui_->Text1_3, ui_->Text1_4};
  for (std::size_t i = 0; i < text1_.size(); ++i) text1_[i]->setText(ToQt(shown[i]));
  text1_.front()->selectAll();
  connect(ui_->cmdOK, &QPushButton::clicked, this, &frmUserOptions::cmdOK_Click);
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  TranslateForm(*this, host.Words());
}

frmUserOptions::~frmUserOptions() = default;

void frmUserOptions::cmdOK_Click() {
  UserOptionTexts texts;
  for (std::size_t i = 0; i < texts.size(); ++i) texts[i] = FromQt(text1_[i]->text());
  const std::variant<UserOptions, MessageText> checked = CheckUserOptions(texts);
  if (const MessageText* const fault = std::get_if<MessageText>(&checked)) {
    // Lets events run: the program may end meanwhile and take this window along.
    host_.Boxes().Message({*fault, "", Buttons::Ok, BoxIcon::Critical});
    return;
  }
  options_ = std::get<UserOptions>(checked);
  accept();
}

}  // namespace velk
