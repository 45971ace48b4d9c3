// The whole program on the screen, worked as an operator's clicks would: what live_bench measures.
//
//   velk_live_program DEVICE LOG SECONDS idle|connect|pause|record        SECONDS from sample to sample

#include <QApplication>
#include <QTemporaryDir>
#include <QTimer>
#include <cstdlib>
#include <string>

#include "base/numbers.h"
#include "demo/unattended.h"
#include "model/status.h"
#include "model/texts.h"
#include "platform/loop/system_clock.h"
#include "platform/settings/settings.h"
#include "shell/application.h"

namespace velk {

namespace {

constexpr int kChannels = 64;
constexpr int kGraphs = 8;
constexpr int kPauseMs = 3000;

void SetUpStore(SettingsStore& settings, const std::string& device, double seconds) {
  for (int i = 1; i <= kChannels; ++i) {
    const std::string section = "Parameter" + std::to_string(i);
    settings.Save("VELK2", section, "name", "Channel " + std::to_string(i));
    settings.Save("VELK2", section, "FormIndex", std::to_string((i - 1) % kGraphs + 1));
    settings.Save("VELK2", section, "format", "#0.000");
    settings.Save("VELK2", section, "color", std::to_string(i * 0x1D3A57 & 0x7F7F7F));
  }
  settings.Save("VELK2", "Parameters", "NumberOfParameters", std::to_string(kChannels));
  settings.Save("VELK2", "Protocol", "SerialData", "KESTA version 5");
  settings.Save("VELK2", "Protocol", "PortDevice1", device);
  settings.Save("VELK2", "General", "SamplingRate", NumberText(seconds / 86400));
  settings.Save("VELK2", "General", "SensitivityCriterion", "0");
  settings.Save("VELK2", "General", "TheTimeOut", "0");  // Connect does not wait for a line
}

void Begin(Application& application, const std::string& log, const std::string& state) {
  MainForm& window = application.Window();
  window.Button("Acquire")->trigger();
  if (state == "connect" || !StatusIs(application.State(), text::StatusReadyToAcquire)) return;
  application.State().CurrentFile = log;
  application.State().RecordToDB = true;
  window.SetButtonImage("RecordToDB", image::RecordOn);
  window.Button("Pause")->trigger();
  if (state == "pause") QTimer::singleShot(kPauseMs, &window, [&window] { window.Button("Pause")->trigger(); });
}

int Run(const std::string& device, const std::string& log, double seconds, const std::string& state) {
  const QTemporaryDir folder;
  Translation translation;
  Gate gate;
  SystemClock clock(gate);
  demo::UnattendedDialogs dialogs(gate, translation.Translator);
  SettingsStore settings(folder.path().toStdString());
  SetUpStore(settings, device, seconds);
  demo::UnattendedQuestions questions;
  Application application(
      {{clock, gate, dialogs, settings, translation.Translator}, translation, MakeSerialPort, &questions});
  application.MDIForm_Load();
  application.Window().setGeometry(0, 0, 1280, 1400);  // all charts are in view
  if (state != "idle") QTimer::singleShot(0, &application.Window(), [&] { Begin(application, log, state); });
  return QApplication::exec();
}

}  // namespace

}  // namespace velk

int main(int argc, char** argv) {
  const QApplication qt(argc, argv);
  if (argc != 5) return 2;
  return velk::Run(argv[1], argv[2], std::atof(argv[3]), argv[4]);
}
