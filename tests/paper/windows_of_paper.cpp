#include <QAbstractButton>
#include <cmath>
#include <optional>
#include <vector>

#include "model/help_topics.h"
#include "paper/windows/frm_image.h"
#include "paper/windows/frm_print_graph.h"
#include "support/fake_printers.h"
#include "windows/every_window.h"

namespace velk::test {
namespace {

constexpr int kGraph = 1;

/// A page over the recording of a job, with what the window needs beside it.
struct SamplePage {
  explicit SamplePage(const std::string& language) : job(MakeJob(language)) {
    const double start = job->clock.Now();
    job->Record(6);
    job->log.OpenLogRecordset();
    for (int second = 0; second < 400; ++second) {
      std::vector<double> values;
      for (int i = 1; i <= job->session.NumberOfParameters; ++i)
        values.push_back(50 + 40 * std::sin(second * 0.02 * i) / i);
      job->log.AppendLogRow({start + second / 86400.0, values});
    }
    composer.emplace(job->session, job->platform, kGraph, job->open.Path());
    composer->FilesAndTime(autoScale);
    window.emplace(job->host, PageAccess{job->session, job->platform, choice, autoScale, [] {}}, *composer);
  }

  Job job;
  FakePrinters printers;
  PrinterChoice choice{printers};
  bool autoScale = true;
  std::optional<PageComposer> composer;
  std::optional<frmPrintGraph> window;
};

std::shared_ptr<QWidget> OpenPage(const std::string& language) {
  const auto page = std::make_shared<SamplePage>(language);
  page->window->findChild<QAbstractButton*>("DrawCurves")->click();
  page->window->findChild<QAbstractButton*>("Comments")->click();
  return {page, &*page->window};
}

std::shared_ptr<QWidget> OpenLogo(const std::string& language) {
  QImage picture(120, 60, QImage::Format_RGB32);
  picture.fill(QColor(0, 87, 184));
  return Hosted<frmImage>(MakeJob(language), picture, QSize(240, 120), [](double, double) {});
}

const WindowsOf kPaper([] {
  return std::vector<ListedWindow>{
      {"frmPrintGraph",
       "",
       topic::Printing,
       {"lblPrinter", "lblNote", "Label1", "Zoom", "Logo*", "Header*", "qt_*"},
       OpenPage},
      {"frmImage", "", topic::Printing, {}, OpenLogo},
  };
});

}  // namespace
}  // namespace velk::test
