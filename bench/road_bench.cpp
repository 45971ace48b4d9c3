// What a sample costs: the whole road through the real main window, offscreen, 64 channels on 8 graphs of 900x240, each
// sample significant; with and without a log; behind a gap of a week; and the part from the line to the values alone.
// Beside it what the panel of the data costs each time that it tells something else.
//
//   bench/road_bench          the folder of the log is the present one, or VELK_BENCH_FOLDER

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTemporaryDir>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <string>
#include <vector>

#include "base/dates.h"
#include "bench/long_log.h"
#include "core/panel/data_words.h"
#include "core/sample_values.h"
#include "demo/unattended.h"
#include "instruments/decoders/own_unit.h"
#include "instruments/table/protocols.h"
#include "model/texts.h"
#include "platform/loop/system_clock.h"
#include "platform/settings/settings.h"
#include "shell/application.h"

namespace velk {

namespace {

using bench::kChannels;
constexpr int kGraphs = 8;
constexpr int kRowsAPage = 240;

/// The real event loop, on a wall clock that goes on by a second a sample.
class SecondsClock : public SystemClock {
 public:
  using SystemClock::SystemClock;
  double Now() const override { return start_ + static_cast<double>(seconds) / 86400; }
  std::int64_t Ticks() const override { return SystemClock::Ticks() + (goesOnByTicks ? 1000 * seconds : 0); }
  long long seconds = 0;
  bool goesOnByTicks = false;  ///< so that each sample is behind the time at which the screen may follow again

 private:
  double start_ = DateSerial(2026, 3, 14);
};

/// Hands over what the benchmark puts in.
class BenchPort : public SerialPort {
 public:
  void Open(const SerialSettings&) override { open_ = true; }
  void Close() override { open_ = false; }
  bool IsOpen() const override { return open_; }
  std::size_t BytesWaiting() const override { return waiting_.size(); }
  std::string Read(std::size_t) override { return std::exchange(waiting_, {}); }
  std::string Peek() const override { return waiting_; }
  void Write(std::string_view) override {}
  void ClearInput() override { waiting_.clear(); }
  void Receive(const std::string& line) {
    waiting_ += line;
    if (onBytes) onBytes();
  }

 private:
  bool open_ = false;
  std::string waiting_;
};

/// Lines of equal length whose values wander, so that every curve moves.
std::vector<std::string> Lines(int channels) {
  std::vector<std::string> lines;
  for (int line = 0; line < 600; ++line) {
    char text[32];
    std::snprintf(text, sizeof text, "%02d:%02d:%02d", line / 3600, line / 60 % 60, line % 60);
    lines.emplace_back(text);
    for (int channel = 0; channel < channels; ++channel) {
      std::snprintf(text, sizeof text, " %08.3f", 50 + 45 * std::sin(line / 95.0 + channel));
      lines.back() += text;
    }
    lines.back() += "\r\n";
  }
  return lines;
}

class Job {
 public:
  /// The last `formulas` of the 64 channels are computed. The log holds `rows` already, one a second.
  explicit Job(const std::string& log, int formulas = 0, long long rows = 0) : lines_(Lines(kChannels - formulas)) {
    const int inputs = kChannels - formulas;
    clock_.seconds = rows;
    for (int i = 1; i <= formulas; ++i) {
      const std::string section = "Formula" + std::to_string(i);
      settings_.Save("VELK2", section, "Formula", "({parameter 1}-{parameter 2})*2.5+log({parameter 3})");
      settings_.Save("VELK2", section, "FormIndex", std::to_string((i - 1) % kGraphs + 1));
    }
    settings_.Save("VELK2", "Formulae", "NumberOfFormulae", std::to_string(formulas));
    for (int i = 1; i <= inputs; ++i) {
      const std::string section = "Parameter" + std::to_string(i);
      settings_.Save("VELK2", section, "FormIndex", std::to_string((i - 1) % kGraphs + 1));
      settings_.Save("VELK2", section, "format", "#0.000");
    }
    settings_.Save("VELK2", "Parameters", "NumberOfParameters", std::to_string(inputs));
    settings_.Save("VELK2", "Protocol", "SerialData", "KESTA version 5");
    settings_.Save("VELK2", "General", "SensitivityCriterion", "0");
    settings_.Save("VELK2", "General", "TheTimeOut", "0");  // Connect does not wait for a line
    const SerialPortFactory ports = [this] {
      auto port = std::make_unique<BenchPort>();
      port_ = port.get();  // the last one made is the line driver's
      return port;
    };
    application_ = std::make_unique<Application>(
        Services{{clock_, gate_, dialogs_, settings_, translation_.Translator}, translation_, ports, &questions_});
    application_->MDIForm_Load();
    MainForm& window = application_->Window();
    window.Button("Acquire")->trigger();
    for (QMdiSubWindow* graph : window.GraphArea().subWindowList()) graph->resize(900, 240);
    if (!log.empty()) {
      application_->State().CurrentFile = log;
      application_->State().RecordToDB = true;
      application_->State().PageCount = static_cast<std::int16_t>(rows / kRowsAPage);
    }
    window.Button("Pause")->trigger();
  }

  void Sample() {
    ++clock_.seconds;
    port_->Receive(lines_[static_cast<std::size_t>(clock_.seconds) % lines_.size()]);
    QCoreApplication::processEvents();
  }

  /// From now on each sample is shown and painted within its own time.
  void ShowEachSample() { clock_.goesOnByTicks = true; }
  void Rest(long long seconds) { clock_.seconds += seconds; }
  MainForm& Window() { return application_->Window(); }

  long long Rows() const { return application_->RowsRecorded(); }
  const Session& State() const { return application_->State(); }

 private:
  QTemporaryDir folder_;
  std::vector<std::string> lines_;
  Translation translation_;
  Gate gate_;
  SecondsClock clock_{gate_};
  demo::UnattendedDialogs dialogs_{gate_, translation_.Translator};
  SettingsStore settings_{folder_.path().toStdString()};
  demo::UnattendedQuestions questions_;
  BenchPort* port_ = nullptr;
  std::unique_ptr<Application> application_;
};

void RunWholeSample(benchmark::State& state, int formulas) {
  Job job("", formulas);
  job.Sample();
  const double before = job.State().Times.LastPlotTime;
  for (auto _ : state) job.Sample();
  if (job.State().Times.LastPlotTime - before < static_cast<double>(state.iterations()) / 86400 - 1e-6)
    state.SkipWithError("not every sample was drawn");
  state.SetItemsProcessed(state.iterations());
}

void WholeSample(benchmark::State& state) {
  RunWholeSample(state, 0);
}
BENCHMARK(WholeSample)->UseRealTime();

void WholeSampleHalfOfItComputed(benchmark::State& state) {
  RunWholeSample(state, kChannels / 2);
}
BENCHMARK(WholeSampleHalfOfItComputed)->UseRealTime();

void RunRecorded(benchmark::State& state, Job& job) {
  job.Sample();
  const long long before = job.Rows();
  for (auto _ : state) job.Sample();
  if (job.Rows() - before != state.iterations()) state.SkipWithError("not every sample was recorded");
  state.SetItemsProcessed(state.iterations());
}

void WholeSampleRecorded(benchmark::State& state) {
  const bench::Folder folder;
  Job job(folder.File("bench.mdb"));
  RunRecorded(state, job);
}
BENCHMARK(WholeSampleRecorded)->UseRealTime();

/// What samples took, in microseconds: each by the clock, all of them of the processor, turns of pages among them.
struct Took {
  void Sample(Job& job) {
    const auto start = std::chrono::steady_clock::now();
    const double processor = ProcessorSeconds();
    job.Sample();
    ofProcessor += (ProcessorSeconds() - processor) * 1e6;
    each.push_back(std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start).count());
  }

  static double ProcessorSeconds() {
    timespec time = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
  }

  double Median() {
    const auto middle = each.begin() + static_cast<std::ptrdiff_t>(each.size() / 2);
    std::nth_element(each.begin(), middle, each.end());
    return *middle;
  }

  std::vector<double> each;
  double ofProcessor = 0;
};

/// Each sample behind a gap of a week: its charts and their pages are caught up.
void SampleBehindAWeek(benchmark::State& state) {
  constexpr long long kWeek = 7 * 86400;
  Job job("");
  job.Sample();
  for (auto _ : state) {
    job.Rest(kWeek);
    job.Sample();
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(SampleBehindAWeek)->UseRealTime()->Unit(benchmark::kMillisecond);

/// Once a second of a job: other words in the panel of the data, and the panel painted.
void DataPanelTells(benchmark::State& state) {
  Job job("");
  job.Sample();
  std::vector<OperatorText> words;
  for (int rows = 0; rows < 100; ++rows) {
    Session session;
    session.CurrentStatus = text::StatusAcquiringData;
    session.RecordToDB = true;
    session.Data.rows = 1000 + rows;
    words.push_back(WordsOfData(session, 0, 1.0).text);
  }
  std::size_t next = 0;
  for (auto _ : state) {
    job.Window().ShowData(words[next], false);
    next = (next + 1) % words.size();
    QCoreApplication::processEvents();
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(DataPanelTells)->UseRealTime();

/// Two jobs of one program in turn, one behind a month of rows. Rows are synced, and how long that takes varies far
/// more from minute to minute than what is looked for: only samples of the same moment can be compared. Each is painted
/// within its own time, since both jobs have the same event loop.
void RecordedBehindAMonthBesideAFresh(benchmark::State& state) {
  const bench::Folder folder;
  const std::string old = folder.File("old.mdb");
  bench::Recording(folder).log.CreateLogFile(old);
  bench::FillLog(old);
  Job behind(old, 0, bench::RowsToRead());
  Job fresh(folder.File("fresh.mdb"));
  for (Job* const job : {&behind, &fresh}) {
    job->ShowEachSample();
    job->Sample();
  }
  const long long before[] = {behind.Rows(), fresh.Rows()};
  Took behindTook;
  Took freshTook;
  bool freshFirst = false;
  for (auto _ : state) {
    if (freshFirst) freshTook.Sample(fresh);
    behindTook.Sample(behind);
    if (!freshFirst) freshTook.Sample(fresh);
    freshFirst = !freshFirst;
  }
  if (behind.Rows() - before[0] != state.iterations() || fresh.Rows() - before[1] != state.iterations())
    state.SkipWithError("not every sample was recorded");
  state.counters["fresh_us"] = freshTook.Median();
  state.counters["ratio"] = behindTook.Median() / freshTook.Median();
  state.counters["processor_ratio"] = behindTook.ofProcessor / freshTook.ofProcessor;
}
BENCHMARK(RecordedBehindAMonthBesideAFresh)->Iterations(20'000)->UseRealTime();

/// Decoding, splitting, scaling, averaging and thinning of 18 channels: no events, no drawing, no log.
void LineToValues(benchmark::State& state) {
  constexpr std::int16_t kUnitChannels = 18;
  Session session;
  session.SerialData = std::string(protocol::Kesta3);
  session.NumberOfParameters = kUnitChannels;
  SetProtocolConstants(session);
  for (int i = 1; i <= kUnitChannels; ++i) {
    session.Parameters[i].Gain = 0.25;
    session.Parameters[i].Offset = -3;
    session.Parameters[i].max = 1000;
    session.SmoothValue[i] = 3;
  }
  const std::vector<std::string> lines = Lines(kUnitChannels);
  OwnUnitDecoder decoder;
  SampleValues values;
  std::string line = lines[0];
  decoder.Orben_ver_3(line, session);
  std::size_t next = 0;
  long long moved = 0;
  for (auto _ : state) {
    line = lines[next];
    next = next + 1 == lines.size() ? 0 : next + 1;
    decoder.Orben_ver_3(line, session);
    if (!IsAccepted(session, line) || values.Take(session, line) != LineFault::None) {
      state.SkipWithError("a sound line was rejected");
      break;
    }
    for (int i = 1; i <= kUnitChannels; ++i) moved += HasMoved(session, i);
  }
  benchmark::DoNotOptimize(moved);
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(LineToValues);

}  // namespace

}  // namespace velk
