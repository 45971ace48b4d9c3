#include "shell/shell_rig.h"

#include <QCheckBox>
#include <cstdio>

#include "model/status.h"
#include "model/texts.h"

namespace velk::test {

ShellRig::ShellRig() {
  settings = std::make_unique<SettingsStore>(folder.File("settings"));
  settings->Save("VELK2", "Protocol", "SerialData", "KESTA version 3");
  settings->Save("VELK2", "Parameters", "NumberOfParameters", "3");
  settings->Save("VELKTemplates", "General", "NumberOfTemplates", "0");  // this machine has been used before
  settings->Flush();
}

void ShellRig::Start() {
  application.reset();
  plainPort = {};
  linePort = {};
  settings = std::make_unique<SettingsStore>(folder.File("settings"));
  const SerialPortFactory twoPorts = [this]() -> std::unique_ptr<SerialPort> {
    return std::make_unique<FakeSerialPort>(plainPort.port ? linePort : plainPort);
  };
  Services services{{clock, gate, dialogs, *settings, translation.Translator}, translation, twoPorts, &questions};
  services.makePageFetch = [this](Clock& programClock) {
    auto made = std::make_unique<ScriptedPages>(programClock);
    pages = made.get();
    return made;
  };
  services.makeOpc = [this](Clock&, OpcQuestions&) {
    auto made = std::make_unique<FakeOpc>();
    opc = made.get();
    return made;
  };
  services.programFolder = programFolder;
  application = std::make_unique<Application>(services);
  application->MDIForm_Load();
  if (staysOnItsScreen) return;
  // The screen of the offscreen platform has 800 x 800 pixels, which no desktop has.
  Window().setWindowState(Qt::WindowNoState);
  Window().setGeometry(0, 0, 1280, 800);
}

void ShellRig::ClearSettings(std::initializer_list<int> groups) {
  windows.Then("ClearSettings", [groups = std::vector<int>(groups)](QDialog& window) {
    for (const int group : groups)
      FindControl<QCheckBox>(window, ("Check1_" + std::to_string(group)).c_str())->setChecked(true);
    Click(window, "cmdOK");
  });
  dialogs.Expect("\n    ", Answer::Yes);  // names the groups, in any language
  Choose("mnuEditClear");
}

void ShellRig::OnConnect(const std::function<void()>& press) {
  clock.onYield = [this, come = false]() mutable {
    const bool checking = StatusIs(State(), text::StatusCheckingHardware);
    if (checking && linePort.open && !std::exchange(come, true)) Receive(0, 0, 0);
  };
  press();
  clock.onYield = nullptr;
}

void ShellRig::Frame(double a, double b, double c) {
  clock.Advance(1000);
  Receive(a, b, c);
  clock.RunPosted();
}

void ShellRig::RecordFiveRows(const std::string& file) {
  Connect();
  dialogs.ExpectSaveFile(file);
  Press("Record");
  Press("Pause");
  for (int row = 1; row <= 5; ++row) Frame(row, 2 * row, 3 * row);
  Press("Stop");
}

void ShellRig::Receive(double a, double b, double c) {
  char values[64];
  std::snprintf(values, sizeof values, " %09.3f %09.3f %09.3f\r\n", a, b, c);
  linePort.Receive(FormatDate(clock.Now(), "hh:mm:ss") + values);
}

}  // namespace velk::test
