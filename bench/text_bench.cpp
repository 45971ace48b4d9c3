// Numbers and texts on the sample's road: 18 fields a line are read, every label is formatted anew with each sample.

#include <benchmark/benchmark.h>

#include <array>

#include "base/dates.h"
#include "base/numbers.h"

using namespace velk;

namespace {

/// Values as an instrument sends them: up to four digits and two decimals, through a 32-bit float.
std::vector<double> Values() {
  std::vector<double> values;
  for (int i = 0; i < 1024; ++i) values.push_back(static_cast<double>(static_cast<float>(i * 7919 % 999'983) / 100.0F));
  return values;
}

std::vector<std::string> Texts() {
  std::vector<std::string> texts;
  for (const double value : Values()) texts.push_back(Format(value, "0.00"));
  return texts;
}

template <class Row, class Work>
void ForEach(benchmark::State& state, const std::vector<Row>& rows, Work work) {
  std::size_t at = 0;
  for (auto step : state) {
    work(rows[at]);
    at = (at + 1) % rows.size();
  }
}

void NumberText64(benchmark::State& state) {
  ForEach(state, Values(), [](double value) { benchmark::DoNotOptimize(NumberText(value)); });
}
BENCHMARK(NumberText64);

void NumberText32(benchmark::State& state) {
  ForEach(state, Values(), [](double value) { benchmark::DoNotOptimize(NumberText(static_cast<float>(value))); });
}
BENCHMARK(NumberText32);

void FormatPlain(benchmark::State& state) {
  ForEach(state, Values(), [](double value) { benchmark::DoNotOptimize(Format(value, "#0.000")); });
}
BENCHMARK(FormatPlain);

void FormatToPlain(benchmark::State& state) {
  std::string out;
  ForEach(state, Values(), [&](double value) {
    out.clear();
    FormatTo(out, value, "#0.000");
    benchmark::DoNotOptimize(out.data());
  });
}
BENCHMARK(FormatToPlain);

void FormatToThousands(benchmark::State& state) {
  std::string out;
  ForEach(state, Values(), [&](double value) {
    out.clear();
    FormatTo(out, value, "#,##0.00");
    benchmark::DoNotOptimize(out.data());
  });
}
BENCHMARK(FormatToThousands);

void ValOfField(benchmark::State& state) {
  ForEach(state, Texts(), [](const std::string& text) { benchmark::DoNotOptimize(Val(text)); });
}
BENCHMARK(ValOfField);

void ValOf18Fields(benchmark::State& state) {
  const std::vector<std::string> texts = Texts();
  std::size_t at = 0;
  for (auto step : state) {
    for (int field = 0; field < 18; ++field) benchmark::DoNotOptimize(Val(texts[at++ % texts.size()]));
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(ValOf18Fields);

void FormatDateTime(benchmark::State& state) {
  const double value = DateSerial(2026, 3, 14) + TimeOfDay(9, 30, 15);
  for (auto step : state) benchmark::DoNotOptimize(FormatDate(value, "dd-mmm-yyyy hh:mm:ss"));
}
BENCHMARK(FormatDateTime);

void CDateOfQuery(benchmark::State& state) {
  for (auto step : state) benchmark::DoNotOptimize(CDate("14/03/2026 09:30:15"));
}
BENCHMARK(CDateOfQuery);

}  // namespace

BENCHMARK_MAIN();
