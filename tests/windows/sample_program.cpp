#include "windows/sample_program.h"

namespace velk::test {

SampleProgram::SampleProgram(const std::string& language, State state) {
  rig.settings->Save("VELK2", "General", "Current_language", language);
  NameChannels(language == "Russian");
  rig.settings->Flush();
  rig.Start();
  if (state != State::Ready) StartRecording();
  if (state == State::PlayingBack) StartPlayback();
}

void SampleProgram::NameChannels(bool russian) {
  const auto describe = [this](const char* section, const char* name, const char* units, const char* colour) {
    rig.settings->Save("VELK2", section, "name", name);
    rig.settings->Save("VELK2", section, "units", units);
    rig.settings->Save("VELK2", section, "color", colour);
    rig.settings->Save("VELK2", section, "format", "#0.00");
  };
  describe("Parameter1", russian ? "Давление на входе насоса" : "Pump Pressure", russian ? "бар" : "bar", "255");
  describe("Parameter2", russian ? "Расход" : "Flow Rate", russian ? "л/мин" : "l/min", "16711680");
  describe("Parameter3", russian ? "Температура" : "Temperature", "°C", "32768");
  rig.settings->Save("VELK2", "Parameter2", "FormIndex", "1");
  rig.settings->Save("VELK2", "Parameter1", "upperalarm", "60");
}

void SampleProgram::StartRecording() {
  rig.Connect();
  rig.dialogs.ExpectSaveFile(rig.folder.File("job"));
  rig.Press("Record");
  rig.Press("Pause");
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
