#include "log/windows/frm_file_exist.h"

#include <QGuiApplication>
#include <QLayout>
#include <QPushButton>
#include <QScreen>
#include <algorithm>

#include "base/text_qt.h"
#include "i18n/windows/translate_form.h"
#include "log/texts.h"
#include "model/help_topics.h"
#include "ui_frm_file_exist.h"

namespace velk {

frmFileExist::frmFileExist(WindowHost& host, const ExistingLog& log)
    : QDialog(host.Parent()), ui_(std::make_unique<Ui::frmFileExist>()) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Recording);
  const auto around = [&](const MessageText& before, const MessageText& after) {
    return ToQt(host.Words().Translator.In(before + log.oldName + after));
  };
  const bool compatible = log.compatible;
  const bool sameOrder = log.sameOrder;
  ui_->lblFile->setText(compatible ? QString::fromStdString(log.oldName)
                                   : around(text::NotCompatibleBefore, text::NotCompatibleAfter));
  const QString note = compatible ? around(text::OrderDiffersBefore, text::OrderDiffersAfter)
                                  : ToQt(host.Words().Translator.In(log.whyNot));
  ui_->lblNote->setVisible(!sameOrder && !note.isEmpty());
  ui_->lblNote->setText(note);
  ui_->lblNewFile->setText(ToQt(host.Words().Translator.In(text::NewFileWillBe + log.newName)));
  ui_->lblNewFile->setVisible(!log.newName.empty());
  ui_->cmdAppend->setEnabled(compatible);
  // Enter must not write values into the wrong columns, nor press a button that is off.
  QPushButton* first = compatible && sameOrder ? ui_->cmdAppend : ui_->cmdCreate;
  first->setDefault(true);
  first->setFocus();
  connect(ui_->cmdAppend, &QPushButton::clicked, this, [this] { Choose(FileChoice::Append); });
  connect(ui_->cmdCreate, &QPushButton::clicked, this, [this] { Choose(FileChoice::CreateNew); });
  TranslateForm(*this, host.Words());
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
