#include <benchmark/benchmark.h>

#include <stdexcept>
#include <string>

#include "bench/full_store.h"

namespace {

using velk::bench::FullStore;

/// Reading and taking apart the file included: a start of the program.
void LoadSettings(benchmark::State& state) {
  const FullStore full;
  for (auto _ : state) {
    velk::SettingsStore store(full.Path());
    velk::Session session;
    if (!velk::LoadSettings(session, store, velk::Language()).empty() || session.NumberOfFormulae != 32) {
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
  velk::LoadSettings(session, store, velk::Language());
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
