#include "store/windows/frm_file_exist.h"

#include <QGuiApplication>
#include <QLayout>
#include <QPushButton>
#include <QScreen>
#include <algorithm>

#include "i18n/windows/translate_form.h"
#include "model/help_topics.h"
#include "ui_frm_file_exist.h"

namespace velk {

frmFileExist::frmFileExist(const clstranslation& translator, const clsLanguages& languages, const std::string& oldName,
                           bool compatible, bool sameOrder, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmFileExist>()) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Recording);
  const auto around = [&](MessageId before, MessageId after) {
    return QString::fromStdString(translator.Translate(before) + oldName + translator.Translate(after));
  };
  ui_->lblFile->setText(compatible ? QString::fromStdString(oldName)
                                   : around(MessageId::NotCompatibleBefore, MessageId::NotCompatibleAfter));
  ui_->lblNote->setVisible(compatible && !sameOrder);
  ui_->lblNote->setText(around(MessageId::OrderDiffersBefore, MessageId::OrderDiffersAfter));
  ui_->cmdAppend->setEnabled(compatible);
  // Enter must not write values into the wrong columns, nor press a button that is off.
  QPushButton* first = compatible && sameOrder ? ui_->cmdAppend : ui_->cmdCreate;
  first->setDefault(true);
  first->setFocus();
  connect(ui_->cmdAppend, &QPushButton::clicked, this, [this] { Choose(FileChoice::Append); });
  connect(ui_->cmdCreate, &QPushButton::clicked, this, [this] { Choose(FileChoice::CreateNew); });
  TranslateForm(*this, languages);
  FitToScreen();
}

frmFileExist::~frmFileExist() = default;

/// As tall as its wrapped texts are at the width that the screen has for them; left alone, the window takes the height
/// of the wider one that it would like to be.
void frmFileExist::FitToScreen() {
  const QScreen* screen = QGuiApplication::primaryScreen();
  const int room = screen == nullptr ? 800 : screen->availableSize().width();
  const int wanted = std::min(sizeHint().width(), room * 2 / 3);
  resize(wanted, layout()->totalHeightForWidth(wanted));
}

void frmFileExist::Choose(FileChoice choice) {
  choice_ = choice;
  accept();
}

}  // namespace velk
