#include "shell/frm_about.h"

#include "i18n/windows/translate_form.h"
#include "platform/text_qt.h"
#include "shell/icons.h"
#include "shell/ui_frm_about.h"

namespace velk {

namespace {

/// What the program is linked with. A library that is added to the build belongs in here.
constexpr MessageId kLibraries[] = {MessageId::LicenceQt, MessageId::LicenceSqlite, MessageId::LicenceCppRuntime,
                                    MessageId::LicenceC};

}  // namespace

frmAbout::frmAbout(const Session& session, const std::string& settingsFolder, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmAbout>()) {
  ui_->setupUi(this);
  TranslateForm(*this, session.Languages);
  const auto& translator = session.Translator;
  ui_->lblIcon->setPixmap(Icon("velk").pixmap(QSize(48, 48), devicePixelRatioF()));
  ui_->lblVersion->setText(ToQt(translator.Translate(MessageId::BaseTitle) + " " VELK_VERSION));
  QStringList libraries;
  for (const MessageId library : kLibraries) libraries += ToQt(translator.Translate(library));
  ui_->txtLibraries->setPlainText(libraries.join('\n'));
  ui_->txtSettings->setText(ToQt(settingsFolder));
  ui_->txtLogs->setText(ToQt(session.DefaultDirectory));
  for (QLineEdit* path : {ui_->txtSettings, ui_->txtLogs}) path->setCursorPosition(0);
  connect(ui_->cmdClose, &QPushButton::clicked, this, &QDialog::accept);
}

frmAbout::~frmAbout() = default;

}  // namespace velk
