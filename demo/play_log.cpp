#include "demo/play_log.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <cstdio>

#include "base/text_qt.h"
#include "demo/demo_job.h"
#include "demo/unattended.h"
#include "model/status.h"
#include "model/texts.h"
#include "platform/loop/system_clock.h"
#include "shell/application.h"

namespace velk::demo {

namespace {

/// Chooses the log, and keeps what stands in the status bar while a box comes up: the box of the end takes it away.
class PlayDialogs : public UnattendedDialogs {
 public:
  PlayDialogs(Gate& gate, const Language& language, std::string log)
      : UnattendedDialogs(gate, language), log_(std::move(log)) {}
  const MainForm* window = nullptr;
  QString place;

 protected:
  Answer ShowMessage(const ShownMessage& box) override {
    if (window != nullptr) place = window->Panel(6);
    return UnattendedDialogs::ShowMessage(box);
  }
  std::optional<std::string> ShowOpenFile(const ShownFileQuestion&) override { return log_; }

 private:
  std::string log_;
};

}  // namespace

int PlayLog(const std::string& log, const std::string& language) {
  const QTemporaryDir configuration;
  Translation translation;
  Gate gate;
  SystemClock clock(gate);
  PlayDialogs dialogs(gate, translation.Translator, log);
  SettingsStore settings(FromQt(configuration.path()));
  SetUpStore(settings, "", false);
  settings.Save("VELK2", "General", "Current_language", language);
  settings.Save("VELK2", "Playback", "PlaybackSpeed", "1000");
  UnattendedQuestions questions;
  Application application(
      {{clock, gate, dialogs, settings, translation.Translator}, translation, MakeSerialPort, &questions});
  application.MDIForm_Load();
  dialogs.window = &application.Window();
  application.Window().MenuItem("mnuFilePlayback")->trigger();
  if (!StatusIs(application.State(), text::StatusReadyToPlayback)) return 1;
  application.Window().Button("Pause")->trigger();
  while (!StatusIs(application.State(), text::StatusReady))
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  std::printf("played: %s\n", qPrintable(dialogs.place));
  return 0;
}

}  // namespace velk::demo
