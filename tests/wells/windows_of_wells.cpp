#include "model/help_topics.h"
#include "support/fake_printers.h"
#include "support/window_driving.h"
#include "wells/windows/edit_sur.h"
#include "wells/windows/frm_3d_well.h"
#include "wells/windows/frm_import_survey.h"
#include "wells/windows/report_form.h"
#include "wells/windows/units_convert.h"
#include "windows/every_window.h"

namespace velk::test {
namespace {

Well SampleWell() {
  Well well;
  well.Survey = {{0, 0, 0}, {450, 2.5, 118}, {960, 14.25, 121}, {1480, 31, 124.5}, {2050, 46.75, 126}};
  well.SavedSurveyCount = 5;
  return well;
}

std::shared_ptr<QWidget> OpenEditor(const std::string& language, Well well) {
  const SurveyAccess access{"", [] {}, [](const UserUnits&) {}, [](const std::string&) {}, [] { return false; }};
  return Hosted<EditSur>(MakeJob(language), std::move(well), access);
}

/// With a depth above the one before it, in units of the operator's own.
std::shared_ptr<QWidget> OpenFaultySurvey(const std::string& language) {
  Well well = SampleWell();
  well.Survey[3].depth = 900;
  well.SurveyFileUnits = kUserDefined;
  well.Units.SetUser({0.5, "fathom", "gon"});
  well.SurveyFileName = "/wells/north-7.d15";
  return OpenEditor(language, well);
}

/// Printers that a table of a sample job could be sent to.
struct SamplePrinters {
  FakePrinters system;
  PrinterChoice choice{system};
};

/// A window over the stations of a survey that builds, and a button of it pressed.
template <class Window>
std::shared_ptr<QWidget> OpenOnPath(const std::string& language, const char* pressed = nullptr) {
  struct Held {
    Job job;
    Well well;
    SamplePrinters printers;
    std::unique_ptr<Window> window;
  };
  const auto held = std::make_shared<Held>();
  held->job = MakeJob(language);
  held->well = SampleWell();
  held->well.Path = CalculateTrajectory(held->well.Survey, held->well.CalculationInterval);
  const WellAccess access{held->well, held->job->session, held->job->platform,
                          [&printers = held->printers]() -> PrinterChoice& { return printers.choice; }, [] {}};
  held->window = std::make_unique<Window>(held->job->host, access);
  if (pressed) Click(*held->window, pressed);
  return {held, held->window.get()};
}

std::shared_ptr<QWidget> OpenLiveSurvey(const std::string& language) {
  const Job job = MakeJob(language);
  std::vector<std::string> fields = {"Hookload", "Pump pressure"};
  for (const auto& [english, russian] : {std::pair{"Speed", "Скорость"},
                                         {"Date", "Дата"},
                                         {"Time", "Время"},
                                         {"Depth", "Глубина"},
                                         {"Inclination", "Зенитный угол"},
                                         {"Azimuth", "Азимут"},
                                         {"RPM", "Обороты"}})
    fields.push_back(job->Pick(english, russian));
  return Hosted<frmImportSurvey>(job, fields, LiveSurveyChoice{}, true);
}

const WindowsOf kWells([] {
  return std::vector<ListedWindow>{
      {"EditSur",
       "",
       topic::Wells,
       {"lblFault", "qt_GridHeadings"},
       [](const std::string& language) { return OpenEditor(language, SampleWell()); }},
      {"EditSur", "faults", topic::Wells, {"lblFault", "qt_GridHeadings", "EditSur"}, OpenFaultySurvey},
      {"ReportForm",
       "",
       topic::Wells,
       {"qt_GridHeadings"},
       [](const std::string& language) { return OpenOnPath<ReportForm>(language); }},
      {"ReportForm",
       "preview",
       topic::Wells,
       {"qt_GridHeadings", "cmdPrintPreview"},
       [](const std::string& language) { return OpenOnPath<ReportForm>(language, "cmdPrintPreview"); }},
      {"frm3DWell",
       "",
       topic::Wells,
       {"lblUnits", "lblHint", "frm3DWell"},
       [](const std::string& language) { return OpenOnPath<frm3DWell>(language); }},
      {"frmImportSurvey", "", topic::Wells, {"txtField_*"}, OpenLiveSurvey},
      {"UnitsConvert",
       "",
       topic::Wells,
       {"UnitsConvert"},
       [](const std::string& language) {
         return Hosted<UnitsConvert>(MakeJob(language), kMetric, UserUnits{0.5, "fathom", "gon"});
       }},
  };
});

}  // namespace
}  // namespace velk::test
