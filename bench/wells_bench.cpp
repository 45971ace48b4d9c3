// The path of a long well: its integration along stations that are there, and the merge of a survey with the grid.

#include <benchmark/benchmark.h>

#include <random>

#include "wells/trajectory.h"

using namespace velk;

namespace {

/// A hole that builds and turns all the way, so that no segment is straight.
std::vector<SurveyStation> Survey(int rows, double apart) {
  std::mt19937 random(8);
  std::uniform_real_distribution<double> change(-0.5, 0.5);
  std::vector<SurveyStation> survey{{0, 0, 0}};
  double inclination = 30, azimuth = 180;
  for (int i = 1; i < rows; ++i) {
    inclination += change(random);
    azimuth += change(random);
    survey.push_back({i * apart, inclination, azimuth});
  }
  return survey;
}

void Compute(benchmark::State& state, const std::vector<SurveyStation>& survey, std::int16_t interval) {
  std::size_t stations = 0;
  for (auto step : state) {
    const WellPath path = CalculateTrajectory(survey, interval);
    benchmark::DoNotOptimize(path.maxTvd);
    stations += path.stations.size();
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(stations));
}

/// 10,000 surveyed stations and no depth of the grid between them.
void Path10000(benchmark::State& state) {
  Compute(state, Survey(10'000, 3), 30'000);
}
BENCHMARK(Path10000);

/// As many as can be counted, half of them of the grid: should a merge move what is behind each, it takes longest here.
void Merge32000(benchmark::State& state) {
  Compute(state, Survey(16'000, 2), 2);
}
BENCHMARK(Merge32000);

void MergeFine(benchmark::State& state) {
  Compute(state, Survey(16'000, 1.001), 1);
}
BENCHMARK(MergeFine);

}  // namespace

BENCHMARK_MAIN();
