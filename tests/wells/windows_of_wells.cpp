#include "model/help_topics.h"
#include "wells/windows/edit_sur.h"
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
  const SurveyAccess access{"", [] {}, [](const UserUnits&) {}};
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

const WindowsOf kWells([] {
  return std::vector<ListedWindow>{
      {"EditSur",
       "",
       topic::Wells,
       {"lblFault"},
       [](const std::string& language) { return OpenEditor(language, SampleWell()); }},
      {"EditSur", "faults", topic::Wells, {"lblFault", "EditSur"}, OpenFaultySurvey},
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
