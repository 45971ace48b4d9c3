#include <QApplication>

#include "instruments/windows/protocol_dialogs_qt.h"
#include "log/windows/job_questions_qt.h"
#include "platform/loop/gate.h"
#include "platform/loop/system_clock.h"
#include "platform/settings/settings.h"
#include "platform/windows/qt_dialogs.h"
#include "settings/windows/settings_questions_qt.h"
#include "shell/application.h"
#include "shell/toolbar_style.h"

int main(int argc, char** argv) {
  QApplication qt(argc, argv);
  QApplication::setStyle(new velk::ToolbarStyle(QApplication::style()));
  QApplication::setApplicationName(QStringLiteral("VELK"));
  QApplication::setApplicationVersion(QStringLiteral(VELK_VERSION));

  velk::Translation translation;
  velk::Gate gate;
  velk::SystemClock clock(gate);
  velk::QtDialogs dialogs(gate, translation.Translator);
  velk::SettingsStore settings(velk::SettingsStore::DefaultDirectory());
  velk::JobQuestionsQt questions(dialogs, translation);
  velk::SettingsQuestionsQt settingsQuestions(dialogs, translation);
  velk::ProtocolDialogsQt protocolDialogs(dialogs, translation);

  const velk::Services services{{clock, gate, dialogs, settings, translation.Translator},
                                translation,
                                questions,
                                settingsQuestions,
                                protocolDialogs,
                                velk::MakeSerialPort};
  velk::Application application(services);
  dialogs.SetParent(&application.Window());
  questions.SetParent(&application.Window());
  settingsQuestions.SetParent(&application.Window());
  protocolDialogs.SetParent(&application.Window());
  application.MDIForm_Load();
  return QApplication::exec();
}
