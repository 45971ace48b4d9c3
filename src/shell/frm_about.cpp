#include "shell/frm_about.h"

#include "base/text_qt.h"
#include "i18n/windows/translate_form.h"
#include "model/help_topics.h"
#include "platform/windows/letter_size.h"
#include "shell/icons.h"
#include "shell/texts.h"
#include "shell/ui_frm_about.h"

namespace velk {

namespace {

/// What the program is linked with. A library that is added to the build belongs in here.
constexpr MessageText kLibraries[] = {text::LicenceQt, text::LicenceSqlite, text::LicenceCppRuntime, text::LicenceC};

constexpr int kLetters = 80, kLines = 24;

}  // namespace

frmAbout::frmAbout(WindowHost& host, const Session& session, const std::string& settingsFolder)
    : QDialog(host.Parent()), ui_(std::make_unique<Ui::frmAbout>()) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Files);
  TranslateForm(*this, host.Words());
  ui_->lblIcon->setPixmap(Icon("velk").pixmap(QSize(48, 48), devicePixelRatioF()));
  ui_->lblVersion->setText(ToQt(host.Words().Translator.In(text::BaseTitle + " " VELK_VERSION)));
  QStringList libraries;
  for (const MessageText& library : kLibraries) libraries += ToQt(host.Words().Translator.In(library));
  ui_->txtLibraries->setPlainText(libraries.join('\n'));
  ui_->txtSettings->setText(ToQt(settingsFolder));
  ui_->txtLogs->setText(ToQt(session.DefaultDirectory));
  for (QLineEdit* path : {ui_->txtSettings, ui_->txtLogs}) path->setCursorPosition(0);
  resize(LetterSize(*this, kLetters, kLines));
  connect(ui_->cmdClose, &QPushButton::clicked, this, &QDialog::accept);
}

frmAbout::~frmAbout() = default;

}  // namespace velk
