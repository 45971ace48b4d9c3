// From bytes of a serial port to checked lines, for a KESTA unit of 18 channels.

#include <benchmark/benchmark.h>

#include "instruments/decoders/own_unit.h"
#include "instruments/reading/get_field.h"
#include "instruments/reading/line_framing.h"

namespace velk {
namespace {

std::string Frame() {
  std::string frame = "10:20:30";
  for (int channel = 1; channel <= 18; ++channel) frame += " 00048.502";
  return frame + "\r\n";
}

Session SessionOf18Channels() {
  Session session;
  session.NumberOfParameters = 18;
  session.Delimiter = ' ';
  session.Terminator = "\r\n";
  return session;
}

void BM_OrbenVer3(benchmark::State& state) {
  const Session session = SessionOf18Channels();
  OwnUnitDecoder decoder;
  std::string line = Frame();
  decoder.LastLineLength = static_cast<std::int32_t>(line.size());
  for (auto round : state) {
    decoder.Orben_ver_3(line, session);
    benchmark::DoNotOptimize(line.data());
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_OrbenVer3);

void BM_OrbenVer3AndSplit(benchmark::State& state) {
  const Session session = SessionOf18Channels();
  OwnUnitDecoder decoder;
  std::string line = Frame();
  decoder.LastLineLength = static_cast<std::int32_t>(line.size());
  for (auto round : state) {
    decoder.Orben_ver_3(line, session);
    std::size_t position = 0;
    for (int field = 0; field <= 18; ++field) benchmark::DoNotOptimize(GetField(line, session.Delimiter, position));
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_OrbenVer3AndSplit);

void BM_Framing(benchmark::State& state) {
  LineFraming framing;
  framing.Reset("\r\n");
  const std::string frame = Frame();
  for (auto round : state) {
    framing.Append(frame);
    while (framing.HasLine()) benchmark::DoNotOptimize(framing.TakeLine());
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_Framing);

}  // namespace
}  // namespace velk

BENCHMARK_MAIN();
