#include <benchmark/benchmark.h>
#include <qcustomplot.h>

#include <QApplication>
#include <QMdiArea>
#include <QTemporaryDir>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "base/dates.h"
#include "bench/no_dialogs.h"
#include "graphs/windows/graph_windows_mdi.h"
#include "i18n/translation.h"
#include "model/graph_map.h"
#include "platform/dialogs/dialogs.h"
#include "platform/loop/clock.h"
#include "platform/loop/gate.h"
#include "platform/settings/settings.h"

// Eight curves on one chart of 900x240, fed one sample after the other and shown as a user sees them: against a chart
// that replots for each sample, and for as long as a week of seconds to see that memory stays where it is.

namespace velk {

namespace {

constexpr int kCurves = 8;
constexpr double kSecond = 1.0 / 86400;

/// A sample's values: slow waves over the whole scale, some of them past its edge.
class Job {
 public:
  /// The values of a sample by curve, from 1 on.
  const float* Sample(long long sample) const {
    return wave_.data() + static_cast<std::size_t>(sample % kLength) * kCurveSlots;
  }

 private:
  static constexpr int kLength = 601;
  static constexpr int kCurveSlots = 65;
  static std::vector<float> Wave() {
    std::vector<float> wave;
    for (int i = 0; i < kLength * kCurveSlots; ++i) wave.push_back(At(i / kCurveSlots + 40 * (i % kCurveSlots)));
    return wave;
  }
  static float At(int place) { return static_cast<float>(50 + 48 * std::sin(place * 2 * 3.14159265 / kLength)); }
  std::vector<float> wave_ = Wave();
};

/// No time passes but that of the samples; the window's refresh is run by hand, once for 33 ms of real time.
class BenchClock : public Clock {
 public:
  double Now() const override { return 46000; }
  std::int64_t Ticks() const override { return 0; }
  void Yield() override {}
  void WaitRound() override {}
  void WaitMilliseconds(int) override {}
  void Post(std::function<void()> task) override { task(); }
  std::unique_ptr<Timer> MakeTimer() override {
    auto timer = std::make_unique<ManualTimer>();
    timers_.push_back(timer.get());
    return timer;
  }
  void FireEnabled() {
    for (ManualTimer* timer : timers_)
      if (timer->Enabled()) timer->Fire();
  }

 private:
  class ManualTimer : public Timer {
   public:
    void SetHandler(std::function<void()> handler) override { handler_ = std::move(handler); }
    void SetInterval(int milliseconds) override { interval_ = milliseconds; }
    int Interval() const override { return interval_; }
    void SetEnabled(bool enabled) override { enabled_ = enabled; }
    bool Enabled() const override { return enabled_; }
    void Fire() const { handler_(); }

   private:
    std::function<void()> handler_;
    int interval_ = 1000;
    bool enabled_ = false;
  };
  std::vector<ManualTimer*> timers_;
};

/// How charts come to the screen.
enum class Look {
  Plain,  ///< 900 x 240 dots, as the other chart has
  Night,  ///< the same on dark paper
  Filled  ///< as high as the window has room
};

/// Strip-chart windows that share so many curves, driven as the road of a sample drives them.
class LiveChart {
 public:
  explicit LiveChart(int curves = kCurves, int windows = 1, QSize area = {1100, 520}, Look look = Look::Plain)
      : curves_(curves) {
    session_.FitGraphsToWindows = look == Look::Filled;
    session_.NightColours = look == Look::Night;
    session_.Times.GraphTimeStep = kSecond;
    session_.NumberOfParameters = static_cast<std::int16_t>(curves);
    for (int i = 1; i <= curves; ++i) {
      Parameter& curve = session_.CurrentParameters[i];
      curve.name = "Curve " + std::to_string(i);
      curve.max = 100;
      curve.color = i * 0x1D3A57 & 0xFFFFFF;
      curve.format = "#0.000";
      curve.FormIndex = static_cast<std::int16_t>((i - 1) * windows / curves + 1);
      curve.GraphVisible = true;
    }
    BuildGraphMap(session_, curves);
    area_.resize(area);
    area_.show();
    windows_.CreateGraphWindows();
    session_.Times.GraphPageTime = session_.Times.GraphEndTime = lastTime_ = start_;
    ForEachGraphWindow(session_, [&](GraphWindow& window) { window.WriteDate(start_, start_ + BlockLength()); });
  }

  /// `hasValues`: with the labels of the values.
  void Sample(bool hasValues = true) {
    const double time = start_ + static_cast<double>(sample_) * kSecond;
    if (time >= session_.Times.GraphEndTime) {
      const double start = session_.Times.GraphEndTime;
      ForEachGraphWindow(session_, [&](GraphWindow& window) { window.Picture2_Update(start, start + BlockLength()); });
      session_.Times.GraphPageTime = session_.GraphForms[1]->TimeOrigin();
      session_.Times.GraphEndTime += BlockLength();
    }
    const float* const values = job_.Sample(sample_);
    for (int i = 1; i <= curves_; ++i) {
      const Parameter& curve = session_.CurrentParameters[i];
      GraphWindow& window = *session_.GraphForms[curve.FormIndex];
      const float value = values[i];
      if (hasValues) window.WriteValuesToLabels(i, value);
      window.PlotValue(lastTime_, time, session_.PreviousValue[i], value, curve.min, curve.max, curve.color,
                       curve.Wrapping);
      session_.PreviousValue[i] = value;
    }
    lastTime_ = time;
    ++sample_;
  }

  /// Whether each row of each chart is in view: what isn't costs nothing to show.
  bool AllAreInView() {
    const QList<QWidget*> plots = area_.findChildren<QWidget*>(QStringLiteral("Pic2"));
    return !plots.isEmpty() && std::all_of(plots.begin(), plots.end(), [](const QWidget* plot) {
      return plot->visibleRegion().boundingRect().height() == plot->height();
    });
  }

  /// Brings to the screen what has changed.
  void Show() {
    clock_.FireEnabled();
    QCoreApplication::processEvents();
  }

 private:
  double BlockLength() const { return kSecond * session_.pixelslength; }

  Gate gate_;
  BenchClock clock_;
  Language language_;
  bench::NoDialogs dialogs_{gate_, language_};
  QTemporaryDir folder_;
  SettingsStore settings_{folder_.path().toStdString()};
  Platform platform_{clock_, gate_, dialogs_, settings_, language_};
  Translation translation_;
  Session session_;
  QMdiArea area_;
  ScreenRefresh refresh_{platform_.clock};
  GraphWindowsMdi windows_{session_, platform_, translation_, area_, refresh_};
  const int curves_;
  Job job_;
  const double start_ = DateSerial(2026, 3, 14);
  double lastTime_ = 0;
  long long sample_ = 0;
};

/// The same curves on a chart that draws everything anew for each sample. It holds the two minutes that the page of a
/// strip chart gains at a time.
class ReplottedChart {
 public:
  ReplottedChart() {
    plot_.resize(900, 240);
    plot_.setNotAntialiasedElements(QCP::aeAll);
    plot_.setNoAntialiasingOnDrag(true);
    for (int i = 1; i <= kCurves; ++i) {
      QCPGraph* curve = plot_.addGraph(plot_.yAxis, plot_.xAxis);
      curve->setPen(QPen(QColor::fromRgb(static_cast<QRgb>(i * 0x1D3A57)), 2));
      curve->setAntialiased(false);
    }
    plot_.xAxis->setRange(0, 100);
    plot_.yAxis->setRangeReversed(true);
    plot_.show();
  }

  void Sample() {
    const double time = static_cast<double>(sample_);
    for (int i = 1; i <= kCurves; ++i) {
      plot_.graph(i - 1)->addData(time, static_cast<double>(job_.Sample(sample_)[i]));
      plot_.graph(i - 1)->data()->removeBefore(time - kPage);
    }
    plot_.yAxis->setRange(std::max(0.0, time - kPage), std::max<double>(kPage, time));
    plot_.replot(QCustomPlot::rpImmediateRefresh);
    ++sample_;
  }

 private:
  static constexpr int kPage = 240;  ///< samples that a page of 240 pixels holds
  QCustomPlot plot_;
  Job job_;
  long long sample_ = 0;
};

/// Runs `sample` and, 30 times a second of real time, `show`.
template <class SampleStep, class ShowStep>
void Run(benchmark::State& state, SampleStep sample, ShowStep show) {
  using Time = std::chrono::steady_clock;
  auto next = Time::now();
  for (auto unused : state) {
    (void)unused;
    sample();
    if (Time::now() < next) continue;
    show();
    next = Time::now() + std::chrono::milliseconds(34);
  }
  state.SetItemsProcessed(state.iterations());
}

void StripChartSamples(benchmark::State& state) {
  LiveChart chart;
  Run(
      state, [&] { chart.Sample(); }, [&] { chart.Show(); });
}

void ReplottedSamples(benchmark::State& state) {
  ReplottedChart chart;
  for (int i = 0; i < 240; ++i) chart.Sample();
  Run(
      state, [&] { chart.Sample(); }, [] {});
}

/// Each sample is brought to the screen: how it is at up to 30 samples a second.
void EachSampleShown(benchmark::State& state, int curves, int windows, QSize area, bool hasValues,
                     Look look = Look::Plain) {
  LiveChart chart(curves, windows, area, look);
  if (!chart.AllAreInView()) state.SkipWithError("not every chart is in view");
  for (auto unused : state) {
    (void)unused;
    chart.Sample(hasValues);
    chart.Show();
  }
  state.SetItemsProcessed(state.iterations());
}

/// Nothing is shown: what a sample's segments cost.
void SegmentsOnly(benchmark::State& state, int curves, int windows) {
  LiveChart chart(curves, windows, {1280, 700});
  for (auto unused : state) {
    (void)unused;
    chart.Sample(false);
  }
  state.SetItemsProcessed(state.iterations());
}

BENCHMARK_CAPTURE(EachSampleShown, CurvesAndValues8, 8, 1, QSize(1100, 520), true);
BENCHMARK_CAPTURE(EachSampleShown, Curves8, 8, 1, QSize(1100, 520), false);
BENCHMARK_CAPTURE(EachSampleShown, CurvesAndValues64, 64, 1, QSize(1100, 2600), true);
BENCHMARK_CAPTURE(EachSampleShown, CurvesAndValues64In8Windows, 64, 8, QSize(1280, 1500), true);
// Beside CurvesAndValues8: what the night and what a stretched chart add. In the last one's window the plot has about
// as many dots as without stretching; a higher one shows more, and so costs more.
BENCHMARK_CAPTURE(EachSampleShown, CurvesAndValues8AtNight, 8, 1, QSize(1100, 520), true, Look::Night);
BENCHMARK_CAPTURE(EachSampleShown, CurvesAndValues8Filled, 8, 1, QSize(1100, 470), true, Look::Filled);
BENCHMARK_CAPTURE(SegmentsOnly, 8, 8, 1);
BENCHMARK_CAPTURE(SegmentsOnly, 64, 64, 8);
BENCHMARK(StripChartSamples)->MinTime(3);
BENCHMARK(ReplottedSamples)->MinTime(3);

long ResidentKilobytes() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);)
    if (line.rfind("VmRSS:", 0) == 0) return std::atol(line.c_str() + 6);
  return 0;
}

/// `graphs_bench --memory N`: resident memory after 100,000 and after N samples.
int WatchMemory(long long samples) {
  LiveChart chart;
  long early = 0;
  for (long long i = 0; i < samples; ++i) {
    chart.Sample();
    if (i % 2000 == 0) chart.Show();
    if (i == 100'000) early = ResidentKilobytes();
  }
  const long late = ResidentKilobytes();
  std::printf("resident after 100000 samples: %ld kB, after %lld: %ld kB, grown by %ld kB\n", early, samples, late,
              late - early);
  return late - early <= 1024 ? 0 : 1;
}

}  // namespace

}  // namespace velk

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  if (argc == 3 && std::string(argv[1]) == "--memory") return velk::WatchMemory(std::atoll(argv[2]));
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
