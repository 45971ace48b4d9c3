#include <QApplication>

#include "instruments/windows/protocol_dialogs_qt.h"
#include "platform/gate.h"
#include "platform/settings.h"
#include "platform/system_clock.h"
#include "platform/windows/qt_dialogs.h"
#include "shell/application.h"
#include "shell/toolbar_style.h"
#include "store/windows/job_questions_qt.h"
#include "store/windows/settings_questions_qt.h"

int main(int argc, char** argv) {
  QApplication qt(argc, argv);
  QApplication::setStyle(new velk::ToolbarStyle(QApplication::style()));
  QApplication::setApplicationName(QStringLiteral("VELK"));
  QApplication::setApplicationVersion(QStringLiteral(VELK_VERSION));

  velk::Gate gate;
  velk::SystemClock clock(gate);
  velk::QtDialogs dialogs(gate);
  velk::SettingsStore settings(velk::SettingsStore::DefaultDirectory());
  velk::JobQuestionsQt questions(dialogs);
  velk::SettingsQuestionsQt settingsQuestions(dialogs);
  velk::ProtocolDialogsQt protocolDialogs(dialogs);

  velk::Services services{
      {clock, gate, dialogs, settings}, questions, settingsQuestions, protocolDialogs, velk::MakeSerialPort};
  services.onLanguage = [&](const velk::Session& session) {
    questions.SetLanguage(session.Translator, session.Languages);
    settingsQuestions.SetLanguages(session.Languages);
    protocolDialogs.SetLanguage(session.Translator, session.Languages);
  };
  velk::Application application(services);
  dialogs.SetParent(&application.Window());
  questions.SetParent(&application.Window());
  settingsQuestions.SetParent(&application.Window());
  protocolDialogs.SetParent(&application.Window());
  application.MDIForm_Load();
  return QApplication::exec();
}
