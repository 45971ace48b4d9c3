#include "settings/windows/frm_user_options.h"

#include <QPointer>
#include <utility>

#include "base/text_qt.h"
#include "i18n/windows/translate_form.h"
#include "model/help_topics.h"
#include "ui_frm_user_options.h"

namespace velk {

frmUserOptions::frmUserOptions(const Translation& translation, const UserOptionTexts& shown, Accept accept,
                               QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmUserOptions>()), accept_(std::move(accept)) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::StripChart);
  text1_ = {ui_->Text1_0, ui_->Text1_1, ui_->Text1_2, ui_->Text1_3, ui_->Text1_4};
  for (std::size_t i = 0; i < text1_.size(); ++i) text1_[i]->setText(ToQt(shown[i]));
  text1_.front()->selectAll();
  connect(ui_->cmdOK, &QPushButton::clicked, this, &frmUserOptions::cmdOK_Click);
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  TranslateForm(*this, translation);
}

frmUserOptions::~frmUserOptions() = default;

void frmUserOptions::cmdOK_Click() {
  UserOptionTexts texts;
  for (std::size_t i = 0; i < texts.size(); ++i) texts[i] = FromQt(text1_[i]->text());
  // The message that it may show lets events run; the program may end meanwhile and take this window along.
  const QPointer<frmUserOptions> self(this);
  const Accept mayGo = accept_;
  if (mayGo(texts) && self) accept();
}

}  // namespace velk
