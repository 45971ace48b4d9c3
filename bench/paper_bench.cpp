// What paper costs: a page of 8 curves out of VELK_BENCH_ROWS (2.6 million, 1.8 GB) with 64 channels to a PDF, reading
// included; the drawing of it alone, against a line through every point; and 10,000 rows of 18 columns as a table, made
// up and out of a log. The folder has to have room for the log: the present one, or VELK_BENCH_FOLDER. A log that
// VELK_BENCH_LOG names stays for the next run.

#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <QImage>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QPolygonF>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "base/dates.h"
#include "bench/long_log.h"
#include "log/log_reader.h"
#include "log/open_log.h"
#include "model/graph_map.h"
#include "paper/page_composer.h"
#include "platform/printing/pdf_printer.h"
#include "reports/print_grid.h"
#include "reports/table_sources.h"
#include "settings/page_lines.h"

namespace velk::bench {

namespace {

constexpr int kCurves = 8;
constexpr int kDots = 300;

/// Of the process, as "VmRSS:" (present) or "VmHWM:" (the most since ForgetPeak).
long Kilobytes(const char* what) {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);)
    if (line.rfind(what, 0) == 0) return std::atol(line.c_str() + std::strlen(what));
  return 0;
}

void ForgetPeak() {
  std::ofstream("/proc/self/clear_refs") << 5;
}

/// The long log, made once, with a session in which every eighth channel is a curve of graph 1.
struct Job {
  Job() {
    Session& session = recording.session;
    session.TotalParameters = kChannels;
    session.AcquisitionMode = true;
    for (int i = 1; i <= kChannels; ++i) {
      Parameter& channel = session.CurrentParameters[static_cast<std::size_t>(i)];
      channel.max = 500;
      channel.FormIndex = i % kCurves == 0 ? 1 : 2;
      channel.GraphVisible = true;
    }
    BuildGraphMap(session, kChannels);
    MakeLongLog(recording.log, file);
    OpenLog(session, recording.platform, recording.log).EnsureReport(file);
    Connection::Open(file, OpenMode::ReadWrite)
        ->Execute(
            "DELETE FROM SummaryReport; INSERT INTO SummaryReport (Date, Time, Comments) "
            "SELECT Date, Time, 'A comment of the job, as an operator writes it' FROM logData WHERE ID % 100000 = 1");
    QImage logo(600, 200, QImage::Format_RGB32);
    logo.fill(Qt::darkGreen);
    logo.save(QString::fromStdString(folder.File("logo.png")));
    session.CompanyLogoFile = folder.File("logo.png");
    session.LogoInserted = session.TextInserted = true;
    SavePageLines(recording.settings, {"A client", "A field", "A well", "A job"});
  }
  static Job& Made() {
    static Job job;
    return job;
  }

  Folder folder;
  Recording recording{folder};
  const std::string file = LongLogIn(folder);
};

void PageToPdf(benchmark::State& state) {
  Job& job = Job::Made();
  const std::string pdf = job.folder.File("page.pdf");
  ForgetPeak();
  const long before = Kilobytes("VmRSS:");
  for (auto _ : state) {
    PageComposer composer(job.recording.session, job.recording.platform, 1, job.file);
    composer.FilesAndTime(false);
    const auto printer = MakePdfPrinter(pdf);
    Surface& page = printer->Begin("page", Unit::Millimetre);
    composer.Paint(page, PageTarget::Paper, kDots, {"DejaVu Sans", 10}, {true, true});
    printer->End();
  }
  state.counters["KB"] = static_cast<double>(std::filesystem::file_size(pdf)) / 1024;
  state.counters["grown_MB"] = static_cast<double>(Kilobytes("VmHWM:") - before) / 1024;
}

/// Times and values of the long log's curves, as FillLog writes them.
float ValueAt(long row, int curve) {
  return static_cast<float>(static_cast<double>(row % 1000) * 0.37 + curve * kCurves);
}

void DrawWhatThePageCanShow(benchmark::State& state) {
  Job& job = Job::Made();
  const ParameterCurves curves(job.recording.session, 1);
  const double start = 46095, second = 1.0 / 86400;
  const PageTimes times{start, static_cast<double>(RowsToRead()) * second / 4};
  const std::string pdf = job.folder.File("reduced.pdf");
  for (auto _ : state) {
    PageCurves page(curves, LayOut(kCurves, {}, {}, PageTarget::Paper), times, kDots);
    for (long row = 1; row < RowsToRead(); ++row)
      for (int slot = 1; slot <= kCurves; ++slot)
        page.PlotLine(slot, start + static_cast<double>(row - 1) * second, start + static_cast<double>(row) * second,
                      ValueAt(row - 1, slot), ValueAt(row, slot));
    const auto printer = MakePdfPrinter(pdf);
    page.Draw(printer->Begin("page", Unit::Millimetre), PenOf(PageTarget::Paper));
    printer->End();
    state.counters["lines"] = static_cast<double>(page.LineCount());
  }
  state.counters["KB"] = static_cast<double>(std::filesystem::file_size(pdf)) / 1024;
}

void DrawALineThroughEveryPoint(benchmark::State& state) {
  Job& job = Job::Made();
  const std::string pdf = job.folder.File("every.pdf");
  for (auto _ : state) {
    QPdfWriter writer(QString::fromStdString(pdf));
    writer.setResolution(kDots);
    writer.setPageSize(QPageSize(QPageSize::A4));
    QPainter painter(&writer);
    painter.setPen(QPen(Qt::black, 8));
    const double perRow = 180.0 / 25.4 * kDots / static_cast<double>(RowsToRead());
    for (int slot = 1; slot <= kCurves; ++slot) {
      QPolygonF line;
      line.reserve(static_cast<qsizetype>(RowsToRead()));
      for (long row = 0; row < RowsToRead(); ++row)
        line.append({static_cast<double>(ValueAt(row, slot)) * 3, static_cast<double>(row) * perRow});
      painter.drawPolyline(line);
    }
    painter.end();
  }
  state.counters["KB"] = static_cast<double>(std::filesystem::file_size(pdf)) / 1024;
}

class Table : public TableSource {
 public:
  Table() {
    columns_ = {{"Date", CellKind::Date}, {"Time", CellKind::Time}};
    for (int i = 1; i <= 16; ++i) columns_.push_back({"Channel " + std::to_string(i), CellKind::Number});
  }
  const std::vector<PrintedColumn>& Columns() const override { return columns_; }
  double FirstTime() override { return 46095; }
  double LastTime() override { return 46096; }
  std::int64_t Count() override { return kRows; }
  bool First() override {
    row_ = 0;
    return true;
  }
  bool Next() override { return ++row_ < kRows; }
  std::optional<double> Number(int column) override {
    return column < 2 ? std::nullopt : std::optional(row_ % 1000 + 0.25);
  }
  std::string Text(int column) override {
    if (column == 0) return "14-Mar-2026";
    if (column == 1) return FormatDate(46095 + row_ / 86400.0, "hh:mm:ss");
    return std::to_string(row_ % 1000) + ".250";
  }

 private:
  static constexpr int kRows = 10'000;
  std::vector<PrintedColumn> columns_;
  int row_ = 0;
};

void PrintATable(benchmark::State& state) {
  Folder folder;
  Recording recording(folder);
  for (auto _ : state) {
    Table table;
    LongTask task(recording.dialogs, recording.clock, "Printing");
    PrintGrid(*MakePdfPrinter(folder.File("table.pdf")), table, {"Data Log", 0, 46095, "DejaVu Sans"},
              recording.english, task);
  }
  state.counters["KB"] = static_cast<double>(std::filesystem::file_size(folder.File("table.pdf"))) / 1024;
}

/// 10,000 rows of 18 columns, out of a log.
void PrintALog(benchmark::State& state) {
  constexpr int kValues = 15, kRows = 10'000;
  Folder folder;
  Recording recording(folder);
  recording.session.NumberOfParameters = kValues;
  const std::string file = folder.File("log.mdb");
  recording.log.CreateLogFile(file);
  const auto connection = Connection::Open(file, OpenMode::ReadWrite);
  Transaction all(*connection);
  Command insert(*connection, "INSERT INTO logData VALUES (NULL, ?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)");
  for (int row = 0; row < kRows; ++row) {
    insert.Bind(1, 46095.0).Bind(2, row / 86400.0);
    for (int i = 0; i < kValues; ++i) insert.Bind(i + 3, row % 1000 * 0.37 + i);
    insert.Execute();
  }
  all.Commit();
  for (auto _ : state) {
    LongTask task(recording.dialogs, recording.clock, "Printing");
    LogView view(file, task);
    LogTable table(view, recording.english);
    PrintGrid(*MakePdfPrinter(folder.File("log.pdf")), table, {"Data Log", 0, 46095, "DejaVu Sans"}, recording.english,
              task);
  }
}

BENCHMARK(PageToPdf)->Unit(benchmark::kMillisecond)->Iterations(2)->UseRealTime();
BENCHMARK(DrawWhatThePageCanShow)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(DrawALineThroughEveryPoint)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(PrintATable)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(PrintALog)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace

}  // namespace velk::bench

int main(int argc, char** argv) {
  const QGuiApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
