#include "windows/sample_program.h"

#include <QMdiArea>
#include <QScrollBar>
#include <cmath>

namespace velk::test {

SampleProgram::SampleProgram(const std::string& language, State state) : russian_(language == "Russian") {
  rig.settings->Save("VELK2", "General", "Current_language", language);
  NameChannels();
  rig.settings->Flush();
  rig.Start();
  if (state == State::LookingBack) LookBack();
  if (state == State::Recording || state == State::PlayingBack) StartRecording();
  if (state == State::PlayingBack) StartPlayback();
}

void SampleProgram::NameChannels() {
  const auto describe = [this](const char* section, const char* name, const char* units, const char* colour) {
    rig.settings->Save("VELK2", section, "name", name);
    rig.settings->Save("VELK2", section, "units", units);
    rig.settings->Save("VELK2", section, "color", colour);
    rig.settings->Save("VELK2", section, "format", "#0.00");
  };
  describe("Parameter1", russian_ ? "Давление на входе насоса" : "Pump Pressure", russian_ ? "бар" : "bar", "255");
  describe("Parameter2", russian_ ? "Расход" : "Flow Rate", russian_ ? "л/мин" : "l/min", "16711680");
  describe("Parameter3", russian_ ? "Температура" : "Temperature", "°C", "32768");
  rig.settings->Save("VELK2", "Parameter2", "FormIndex", "1");
  rig.settings->Save("VELK2", "Parameter1", "upperalarm", "60");
}

void SampleProgram::StartJob() {
  rig.Connect();
  rig.dialogs.ExpectSaveFile(rig.folder.File("job"));
  rig.Press("Record");
  rig.Press("Pause");
}

void SampleProgram::Comment(const char* english, const char* russian) {
  rig.application->Log().AddSummaryRow(russian_ ? russian : english);
}

void SampleProgram::LookBack() {
  rig.State().SensitivityCriterion = 0;
  StartJob();
  for (int second = 0; second < 400; ++second) {
    const double stage = second % 240;
    rig.Frame(20 + stage / 8 + 3 * std::sin(second * 0.9), 60 + 25 * std::sin(second * 0.05),
              70 + 12 * std::sin(second * 0.02));
    if (second == 130) Comment("Second pump on line", "Второй насос в линии");
    if (second == 230) Comment("Pressure bled off", "Давление сброшено");
    if (second == 380) Comment("Third stage", "Третья стадия");
  }
  rig.Window().GraphArea().findChild<QScrollBar*>("VScroll1")->setValue(1);
  rig.clock.Advance(1000);
}

void SampleProgram::StartRecording() {
  StartJob();
  for (int i = 0; i < 200; ++i) rig.Frame(40 + i % 30, 20 + i % 60, 90 - i % 7);
  for (int i = 0; i < 2; ++i) rig.Frame(75, 50, 60);
  rig.clock.Advance(1000);
}

void SampleProgram::StartPlayback() {
  rig.Press("Stop");
  rig.dialogs.ExpectOpenFile(rig.State().LogFileInUse);
  rig.Press("PlayBack");
  rig.Press("Pause");
  rig.Window().onSpeedChange(100);
  rig.clock.Advance(1800);
}

}  // namespace velk::test
