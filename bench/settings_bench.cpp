#include <benchmark/benchmark.h>

#include <QTemporaryDir>
#include <stdexcept>
#include <string>

#include "platform/settings.h"
#include "store/settings_io.h"

namespace {

/// A full store on the disk that holds the working folder: 64 parameters, 64 playback parameters, 32 formulas.
class FullStore {
 public:
  FullStore() {
    velk::Session session;
    velk::SettingsStore store(Path());
    velk::LoadSettings(session, store);
    session.NumberOfFormulae = 32;
    session.AdditionalParameters.resize(33);
    session.Formula.assign(33, "{Parameter 1} * 2 + avg({Parameter 2})");
    velk::SaveSettings(session, store);
    store.Save("VELK2", "Parameters", "NumberOfParameters", "32");
    store.Flush();
  }

  std::string Path() const { return folder_.path().toStdString(); }

 private:
  QTemporaryDir folder_{"velk-bench-XXXXXX"};
};

/// Reading and taking apart the file included: a start of the program.
void LoadSettings(benchmark::State& state) {
  const FullStore full;
  for (auto _ : state) {
    velk::SettingsStore store(full.Path());
    velk::Session session;
    if (!velk::LoadSettings(session, store).empty() || session.NumberOfFormulae != 32) {
      throw std::logic_error("the store was not read");
    }
  }
}
BENCHMARK(LoadSettings)->Unit(benchmark::kMillisecond);

/// With one changed value, so that the file is written and safe on the disk.
void SaveSettings(benchmark::State& state) {
  const FullStore full;
  velk::SettingsStore store(full.Path());
  velk::Session session;
  velk::LoadSettings(session, store);
  for (auto _ : state) {
    session.Parameters[64].max += 1;
    velk::SaveSettings(session, store);
  }
}
BENCHMARK(SaveSettings)->Unit(benchmark::kMillisecond)->UseRealTime();

/// The bytes alone, written the same way: what the disk asks for.
void SaveSettingsDiskOnly(benchmark::State& state) {
  const FullStore full;
  velk::SettingsStore store(full.Path());
  int round = 0;
  for (auto _ : state) {
    store.Save("VELK2", "Parameter64", "max", std::to_string(++round));
    store.Flush();
  }
}
BENCHMARK(SaveSettingsDiskOnly)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

BENCHMARK_MAIN();
