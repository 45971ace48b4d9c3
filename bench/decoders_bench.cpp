// What a sample costs ahead of its values: the check on a delivered line, a line read from the plain port, a page.

#include <benchmark/benchmark.h>

#include "instruments/decoders/any_serial_data.h"
#include "instruments/decoders/data_taker.h"
#include "instruments/decoders/intermittent.h"
#include "instruments/decoders/national_oil_well.h"
#include "instruments/decoders/own_unit.h"
#include "instruments/decoders/page_readers.h"
#include "instruments/decoders/requested_data.h"
#include "instruments/decoders/stewart_stevenson.h"
#include "tests/support/byte_port.h"
#include "tests/support/quick_clock.h"

using namespace velk;

namespace {

constexpr int kChannels = 18;
constexpr int kCells = 64;

Session EighteenChannels() {
  Session session;
  session.NumberOfParameters = kChannels;
  session.Delimiter = " ";
  session.Terminator = "\n";
  session.SampleTime = 46095.5;
  for (int i = 1; i <= kChannels; ++i) {
    session.Parameters[i].Gain = 1;
    session.Parameters[i].CommandString = "R1\r";
  }
  return session;
}

std::string Fields(std::string line) {
  for (int i = 1; i <= kChannels; ++i) line += " 01234.5";
  return line;
}

const std::string kLine = Fields("09:30:15") + "\r\n";

void CountRounds(benchmark::State& state) {
  state.counters["lines"] = benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
}

/// A rejected line has its end ahead of its values: to measure how fast lines are refused would prove nothing.
void CountLines(benchmark::State& state, const std::string& line, int values = kChannels) {
  int found = 0;
  for (std::size_t at = line.find("1234.5"); at != std::string::npos; at = line.find("1234.5", at + 1)) ++found;
  if (line.find_first_of("\r\n") < 9 || found != values) state.SkipWithError("the line was rejected");
  CountRounds(state);
}

// --- Checks on a delivered line ---

template <class Check>
void Delivered(benchmark::State& state, const std::string& sent, Check check) {
  std::string line;
  for (auto step : state) {
    line = sent;
    check(line);
    benchmark::DoNotOptimize(line.data());
  }
  CountLines(state, line);
}

void CheckNationalOilWell(benchmark::State& state) {
  Session session = EighteenChannels();
  session.FormattedLineLength = static_cast<std::int16_t>(kLine.size());
  Delivered(state, kLine, [&](std::string& line) { NationalOilWell(line, session); });
}
BENCHMARK(CheckNationalOilWell);

void CheckNowPlc(benchmark::State& state) {
  Session session = EighteenChannels();
  // It puts the end ahead of every line.
  std::string line;
  for (auto step : state) {
    line = kLine;
    NOWPLC(line, session);
    benchmark::DoNotOptimize(line.data());
  }
  CountRounds(state);
}
BENCHMARK(CheckNowPlc);

void CheckOwnUnit(benchmark::State& state) {
  const Session session = EighteenChannels();
  OwnUnitDecoder decoder;
  decoder.LastLineLength = static_cast<std::int32_t>(kLine.size());
  Delivered(state, kLine, [&](std::string& line) { decoder.Orben_ver_3(line, session); });
}
BENCHMARK(CheckOwnUnit);

void CheckAnySerialData(benchmark::State& state) {
  Delivered(state, kLine, [](std::string& line) { AnySerialData(line); });
}
BENCHMARK(CheckAnySerialData);

// --- Reading the plain port ---

template <class Read>
void FromPort(benchmark::State& state, const std::string& bytes, Read read) {
  Session session = EighteenChannels();
  test::QuickClock clock;
  test::BytePort port;
  PortReader reader(port, clock, session);
  std::string line;
  for (auto step : state) {
    port.Restart(bytes);
    line = read(reader, session);
    benchmark::DoNotOptimize(line.data());
  }
  CountLines(state, line);
}

void PortNationalOilWell(benchmark::State& state) {
  FromPort(state, kLine, [](PortReader& reader, Session& session) { return ReadNationalOilWell(reader, session); });
}
BENCHMARK(PortNationalOilWell);

void PortDataTakerLine(benchmark::State& state) {
  FromPort(state, kLine, [](PortReader& reader, Session& session) { return DataTaker_a(reader, session); });
}
BENCHMARK(PortDataTakerLine);

void PortDataTakerBlock(benchmark::State& state) {
  std::string block = "Program 001  run\nTime 09:30:15\r\n";
  for (int i = 1; i <= kChannels; ++i) block += std::to_string(i) + " 1234.5\r\n";
  FromPort(state, block + "\r\n", [](PortReader& reader, Session& session) { return DataTaker_b(reader, session); });
}
BENCHMARK(PortDataTakerBlock);

void PortDas104(benchmark::State& state) {
  FromPort(state, "\r" + Fields("09:30:15") + "\r",
           [](PortReader& reader, Session&) { return Stewart_stevenson(reader); });
}
BENCHMARK(PortDas104);

void PortRequested(benchmark::State& state) {
  Session session = EighteenChannels();
  test::QuickClock clock;
  test::BytePort port;
  port.onWrite = [&] { port.Restart("1234.5\r\n"); };
  std::string line;
  for (auto step : state) {
    line = Requested_data(port, clock, session).line;
    benchmark::DoNotOptimize(line.data());
    port.written.clear();
  }
  CountLines(state, line);
}
BENCHMARK(PortRequested);

void BufferedLine(benchmark::State& state) {
  Session session = EighteenChannels();
  session.Delimiter = ",";
  std::string line = "14-Mar-2026 09:30:15";
  for (int i = 1; i <= kChannels; ++i) line += ",01234.5";
  line += "\n";
  for (auto step : state)
    if (!ReadBufferedLine(session, line).IsAccepted()) return state.SkipWithError("the line was rejected");
  CountLines(state, line);
}
BENCHMARK(BufferedLine);

// --- Pages ---

template <class Row>
std::string Page(std::string head, Row row) {
  for (int i = 1; i <= kCells; ++i) head += row(std::to_string(i)) + "\r\n";
  return head + "</table></body></html>";
}

template <class Read>
void ReadPages(benchmark::State& state, Read read) {
  std::string line;
  for (auto step : state) {
    line = read();
    benchmark::DoNotOptimize(line.data());
  }
  CountLines(state, line, kCells);
}

void PageOfNamedCells(benchmark::State& state) {
  const std::string page = Page("<html><body><table>", [](const std::string& i) {
    return "<tr><td>" + i + "Var</td><td><b>01234.5&nbsp;psi</b></td></tr>";
  });
  ReadPages(state, [&] { return LineFromNamedCells(page, "09:30:15", kCells); });
}
BENCHMARK(PageOfNamedCells);

void PageOfPanel(benchmark::State& state) {
  const std::string page = Page("<html><body><table><tr><th>Channel</th></tr>", [](const std::string& i) {
    return "<tr><td>Channel " + i + "</td><td class=v><b>01234.5&nbsp;</b></td></tr>";
  });
  ReadPages(state, [&] { return LineFromPanelPage(page, "09:30:15", kCells); });
}
BENCHMARK(PageOfPanel);

void PageOfTable(benchmark::State& state) {
  const std::string page = Page("<html><body>Time&nbsp;09:30:15<table>", [](const std::string& i) {
    return "<tr><td>" + i + "</td><td>Pen</td><td>psi</td><td align=right><b>01234.5</b></td></tr>";
  });
  ReadPages(state, [&] { return LineFromTable(page, " "); });
}
BENCHMARK(PageOfTable);

}  // namespace

BENCHMARK_MAIN();
