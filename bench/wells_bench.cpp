// The path of a long well: its integration along stations that are there, and the merge of a survey with the grid. A
// picture of it while it turns. A row of the log for a live survey.

#include <benchmark/benchmark.h>

#include <QFont>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <filesystem>
#include <random>

#include "base/language.h"
#include "platform/database/command.h"
#include "platform/drawing/painted_surface.h"
#include "platform/drawing/surface_image.h"
#include "wells/live_survey.h"
#include "wells/profile_report.h"
#include "wells/trajectory.h"
#include "wells/well_scene.h"

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
BENCHMARK(Path10000)->UseRealTime();

/// As many as can be counted, half of them of the grid: should a merge move what is behind each, it takes longest here.
void Merge32000(benchmark::State& state) {
  Compute(state, Survey(16'000, 2), 2);
}
BENCHMARK(Merge32000)->UseRealTime();

void MergeFine(benchmark::State& state) {
  Compute(state, Survey(16'000, 1.001), 1);
}
BENCHMARK(MergeFine)->UseRealTime();

/// A frame of 10,000 stations with their tube, a degree farther than the one before, on a picture of 1280 by 900.
void TurnTube10000(benchmark::State& state, double distance) {
  std::int16_t interval = 30'000;
  const WellPath path = CalculateTrajectory(Survey(10'000, 1.2), interval);
  SurfaceImage picture(1280 * kTwipsPerPixel, 900 * kTwipsPerPixel, 1, QFont("DejaVu Sans"));
  const Language language;
  WellScene scene;
  WellView view;
  view.casing = true;
  view.distance = distance;
  view.focalDepth = -5'000;
  for (auto step : state) {
    view.azimuth += 1;
    scene.Build(path.stations, {}, view);
    picture.Fill(0, 0, picture.Width(), picture.Height(), 0x1D1814);
    scene.Draw(picture, {190 * kTwipsPerPixel, 0, 900 * kTwipsPerPixel, kTwipsPerPixel}, kColoursOnDark, language);
    benchmark::DoNotOptimize(picture.View().constBits());
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK_CAPTURE(TurnTube10000, far, 60'000)->Unit(benchmark::kMillisecond);
/// Within the frame: most stations lie on dots of their own.
BENCHMARK_CAPTURE(TurnTube10000, near, 8'000)->Unit(benchmark::kMillisecond);

/// The sheets of a preview, laid out anew as each five seconds.
void LayOutReport10000(benchmark::State& state) {
  std::int16_t interval = 30'000;
  const std::vector<SurveyStation> survey = Survey(10'000, 1.2);
  const WellPath path = CalculateTrajectory(survey, interval);
  const WellUnits units;
  const ProfileTable table(path, units);
  const Language language;
  QImage dot(1, 1, QImage::Format_RGB32);
  QPainter painter(&dot);
  PaintedSurface surface(painter, Unit::Millimetre, 210, 297, 300);
  for (auto step : state) {
    const ProfileReport report(surface, {table, survey, "feet", "degrees", {}, {}, "", "DejaVu Sans"}, language);
    benchmark::DoNotOptimize(report.PageCount());
  }
}
BENCHMARK(LayOutReport10000)->Unit(benchmark::kMillisecond);

/// A live survey of a log of 64 channels in which 10,000 stations stand.
struct LongLiveSurvey {
  LongLiveSurvey() {
    std::vector<std::string> channels = {"Speed", "Depth", "Inclination", "Azimuth", "RPM"};
    for (int i = 5; i < 64; ++i) channels.push_back("C" + std::to_string(i));
    survey.Start({{"Speed", "Date", "Time", "Depth", "Inclination", "Azimuth", "RPM"}}, log, channels);
    log->Execute(
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 10000) INSERT INTO surveyData "
        "(\"Date\", \"Time\", Depth, Inclination, Azimuth, DogLeg, RPM) SELECT 46000, i / 86400.0, i * 3.1, "
        "30 + 10 * (i % 100) / 100.0, 120 + (i % 70) / 70.0, 1.5, 60 FROM n");
  }
  ~LongLiveSurvey() { std::filesystem::remove(file); }

  const std::string file = [] {
    std::string path = std::filesystem::temp_directory_path() / "velk-wells-bench.mdb";
    std::filesystem::remove(path);
    return path;
  }();
  const std::shared_ptr<Connection> log = [this] {
    auto connection = Connection::Open(file, OpenMode::CreateNew);
    connection->BeginRecording();
    return connection;
  }();
  Well well;
  LiveSurvey survey{well};
};

/// What it adds to a sample while no station is due, which is nearly always.
void LiveStep64(benchmark::State& state) {
  LongLiveSurvey live;
  LogRow row{46'000.5, std::vector<double>(64, 1.5), 0};
  for (auto step : state) {
    ++row.key;
    live.survey.LiveSurveyStep(row);
  }
}
BENCHMARK(LiveStep64);

/// A station that is due with each row, and its own transaction.
void LiveStepDue64(benchmark::State& state) {
  LongLiveSurvey live;
  LogRow row{46'000.5, std::vector<double>(64, 1.5), 0};
  for (auto step : state) {
    ++row.key;
    row.values[1] += 101;
    live.survey.LiveSurveyStep(row);
  }
  Command count(*live.log, "SELECT count(*) FROM surveyData");
  if (!count.Next() || count.Integer(0) != 10'000 + row.key) state.SkipWithError("the stations are not there");
}
BENCHMARK(LiveStepDue64)->Unit(benchmark::kMicrosecond);

/// The path computed anew, as each five seconds.
void LiveRefresh10000(benchmark::State& state) {
  LongLiveSurvey live;
  for (auto step : state) live.survey.LoadSurveyAndCalculate();
  if (live.well.Survey.size() != 10'001) state.SkipWithError("the stations are not there");
}
BENCHMARK(LiveRefresh10000)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  const QGuiApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
