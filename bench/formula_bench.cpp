// A formula of three channels, whose values change at every call: what each sample, each row of a playback and each
// line of a drawn page pays for a computed channel. muParser is what it is measured against, and is made to parse the
// same text each time, since that is what working a formula off anew means.

#include <benchmark/benchmark.h>
#include <muParser.h>

#include <memory>

#include "base/numbers.h"
#include "bench/allocations.h"
#include "formula/additional_parameters.h"
#include "formula/formula_value.h"
#include "formula/substitute.h"

using namespace velk;
using velk::bench::Allocations;

namespace {

constexpr const char* kFormula = "({a}-{b})*2.5+log({c})";
constexpr int kRows = 1024;

std::string Numbered(std::string name, int i) {
  return name.append(std::to_string(i));
}

/// Three channels and their values over time, as they come through a 32-bit float.
class Channels {
 public:
  Channels() {
    session->NumberOfParameters = 3;
    session->TotalParameters = 4;
    session->NumberOfFormulae = 1;
    for (int i = 1; i <= kMaxParameters; ++i) session->CurrentParameters[i].name = Numbered("Channel ", i);
    for (int i = 1; i <= 3; ++i) session->CurrentParameters[i].name.assign(1, static_cast<char>('A' + i - 1));
    session->AdditionalParameters.resize(2);
    session->Formula = {"", kFormula};
  }

  void Next() {
    row_ = (row_ + 1) % kRows;
    session->CurrentValue[1] = static_cast<float>(row_ * 7919 % 99'991) / 100.0F;
    session->CurrentValue[2] = static_cast<float>(row_ * 104'729 % 9'973) / 10.0F;
    session->CurrentValue[3] = static_cast<float>(row_ + 1) / 8.0F;
  }

  std::unique_ptr<Session> session = std::make_unique<Session>();

 private:
  int row_ = 0;
};

void CountAllocations(benchmark::State& state, std::size_t before) {
  state.counters["allocations"] = benchmark::Counter(static_cast<double>(Allocations() - before));
  state.SetItemsProcessed(state.iterations());
}

void SubstituteAndEvaluate(benchmark::State& state) {
  Channels channels;
  std::string text;
  const auto evaluate = [&] {
    channels.Next();
    const int brackets = SubstituteParameters(*channels.session, kFormula, text);
    benchmark::DoNotOptimize(FormulaValue(text, brackets, channels.session->AdditionalParameters, 1));
  };
  for (int i = 0; i < kRows; ++i) evaluate();
  const std::size_t before = Allocations();
  for (auto step : state) evaluate();
  CountAllocations(state, before);
}
BENCHMARK(SubstituteAndEvaluate);

void MuParserParsesTheSameText(benchmark::State& state) {
  Channels channels;
  std::vector<std::string> texts(kRows);
  for (std::string& text : texts) {
    channels.Next();
    SubstituteParameters(*channels.session, kFormula, text);
  }
  mu::Parser parser;
  std::size_t at = 0;
  const std::size_t before = Allocations();
  for (auto step : state) {
    parser.SetExpr(texts[at]);
    benchmark::DoNotOptimize(parser.Eval());
    at = (at + 1) % kRows;
  }
  CountAllocations(state, before);
}
BENCHMARK(MuParserParsesTheSameText);

void Substitute(benchmark::State& state) {
  Channels channels;
  std::string text;
  for (auto step : state) {
    channels.Next();
    benchmark::DoNotOptimize(SubstituteParameters(*channels.session, kFormula, text));
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(Substitute);

/// As the sample has it: the formula out of the session, the value as a 32-bit float.
void ValueOfAChannel(benchmark::State& state) {
  Channels channels;
  for (int i = 0; i < kRows; ++i) {
    channels.Next();
    ValueOf(*channels.session, 1);
  }
  const std::size_t before = Allocations();
  for (auto step : state) {
    channels.Next();
    benchmark::DoNotOptimize(ValueOf(*channels.session, 1));
  }
  CountAllocations(state, before);
}
BENCHMARK(ValueOfAChannel);

/// Names in Russian, in the last slots: each reference is compared with 64 names.
void ReferencesToTheLastChannels(benchmark::State& state) {
  Channels channels;
  for (int i = 1; i <= kMaxParameters; ++i) {
    channels.session->CurrentParameters[i].name = Numbered("Глубина ", i);
  }
  std::string text;
  for (int i = 0; i < 10; ++i) SubstituteParameters(*channels.session, "{глубина 62}-{глубина 63}*{глубина 64}", text);
  const std::size_t before = Allocations();
  for (auto step : state) {
    channels.Next();
    benchmark::DoNotOptimize(SubstituteParameters(*channels.session, "{глубина 62}-{глубина 63}*{глубина 64}", text));
  }
  CountAllocations(state, before);
}
BENCHMARK(ReferencesToTheLastChannels);

}  // namespace

BENCHMARK_MAIN();
