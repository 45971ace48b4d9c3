#include <QApplication>
#include <QProcess>

#include "platform/loop/gate.h"
#include "platform/loop/system_clock.h"
#include "platform/settings/settings.h"
#include "platform/windows/qt_dialogs.h"
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

  int code = 0;
  bool startsAnew = false;
  {
    velk::Application application(
        {{clock, gate, dialogs, settings, translation.Translator}, translation, velk::MakeSerialPort});
    dialogs.SetParent(&application.Window());
    application.MDIForm_Load();
    code = QApplication::exec();
    startsAnew = application.StartsAnew();
  }
  // Once the ports are free.
  if (startsAnew) QProcess::startDetached(QApplication::applicationFilePath(), {});
  return code;
}
