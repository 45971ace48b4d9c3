#include <QTableView>
#include <cmath>

#include "model/help_topics.h"
#include "reports/windows/frm_summary_report.h"
#include "support/fake_printers.h"
#include "windows/every_window.h"

namespace velk::test {
namespace {

/// The viewer over the recording of a job of so many rows, and what it needs.
struct SampleViewer {
  SampleViewer(const std::string& language, int rows, int lines) : job(MakeJob(language)) {
    const double start = job->clock.Now();
    job->Record(lines);
    job->log.OpenLogRecordset();
    Transaction all(*job->log.Writing());
    for (int second = 0; second < rows; ++second) {
      std::vector<double> values;
      for (int i = 1; i <= job->session.NumberOfParameters; ++i)
        values.push_back(1500 + 1200 * std::sin(second * 0.02 * i) / i);
      job->log.AppendLogRow({start + second / 86400.0, values});
    }
    all.Commit();
    LongTask task(job->dialogs, job->clock, "Reading");
    view = std::make_unique<LogView>(job->open.Path(), task);
    window.reset(new frmSummaryReport(job->host, ViewerAccess{job->session, job->platform, job->open, printer}, *view));
  }

  Job job;
  FakePrinters printers;
  PrinterChoice printer{printers};
  std::unique_ptr<LogView> view;
  std::unique_ptr<frmSummaryReport> window;
};

std::shared_ptr<QWidget> OpenViewer(const std::string& language, int rows, int lines) {
  const auto viewer = std::make_shared<SampleViewer>(language, rows, lines);
  return {viewer, &*viewer->window};
}

const WindowsOf kReports([] {
  const auto viewer = [](int rows, int lines) {
    return [=](const std::string& language) { return OpenViewer(language, rows, lines); };
  };
  // Headings have no name of their own; those of logs are names of their columns.
  const std::set<std::string> composed = {"lblFile", "lblNote", "lblRecord", "lblLogRecord", "Combo1", ""};
  return std::vector<ListedWindow>{
      {"frmSummaryReport", "", topic::Viewer, composed, viewer(300, 12)},
      {"frmSummaryReport", "empty", topic::Viewer, composed, viewer(0, 0)},
  };
});

}  // namespace
}  // namespace velk::test
