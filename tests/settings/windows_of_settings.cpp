#include "model/help_topics.h"
#include "settings/windows/clear_settings.h"
#include "settings/windows/frm_properties.h"
#include "settings/windows/frm_user_options.h"
#include "settings/windows/parameters_table.h"
#include "settings/windows/properties.h"
#include "windows/every_window.h"

namespace velk::test {
namespace {

std::shared_ptr<QWidget> OpenClearSettings(const std::string& language) {
  return Hosted<ClearSettings>(MakeJob(language), true);
}

std::shared_ptr<QWidget> OpenUserOptions(const std::string& language) {
  return Hosted<frmUserOptions>(MakeJob(language), UserOptionTexts{"120", "15", "3600", "10", "64"});
}

std::shared_ptr<QWidget> OpenParametersTable(const std::string& language) {
  const Job job = MakeJob(language);
  job->session.AcquisitionMode = true;
  return Hosted<ParametersTable>(job, ParameterTable(job->session));
}

/// With a graph that there isn't, a number that may be two, and a name twice.
std::shared_ptr<QWidget> OpenFaultyTable(const std::string& language) {
  const Job job = MakeJob(language);
  ParameterTable table(job->session);
  table.Change({{0, table.PlaceOf(TableColumn::Graph), "65"},
                {1, table.PlaceOf(TableColumn::Minimum), "1,234.5"},
                {2, 0, table.Cell(1, 0)}});
  return Hosted<ParametersTable>(job, table);
}

std::shared_ptr<QWidget> OpenProperties(const std::string& language, bool acquiring) {
  const Job job = MakeJob(language);
  job->session.AcquisitionMode = acquiring;
  const std::function<void()> calibrate = [] {};
  return Hosted<Properties>(job, PropertiesOf(job->session, 1), acquiring ? calibrate : nullptr);
}

/// A played file's: without what is the unit's set-up.
std::shared_ptr<QWidget> OpenPropertiesOfFile(const std::string& language) {
  const Job job = MakeJob(language);
  job->session.PlaybackParameterCount = job->session.NumberOfParameters;
  return Hosted<Properties>(job, PropertiesOf(job->session, 1));
}

std::shared_ptr<QWidget> OpenForeignProperties(const std::string& language) {
  const Job job = MakeJob(language);
  return Hosted<frmProperties>(job, PropertiesOf(job->session, 2));
}

const WindowsOf kSettings([] {
  const auto properties = [](bool acquiring) {
    return [=](const std::string& language) { return OpenProperties(language, acquiring); };
  };
  return std::vector<ListedWindow>{
      {"ClearSettings", "", topic::Templates, {}, OpenClearSettings},
      {"frmUserOptions", "", topic::StripChart, {}, OpenUserOptions},
      {"ParametersTable", "", topic::Parameters, {"lblFault"}, OpenParametersTable},
      {"ParametersTable", "faults", topic::Parameters, {"lblFault"}, OpenFaultyTable},
      {"Properties", "", topic::Parameters, {}, properties(true)},
      {"Properties", "no-alarms", topic::Parameters, {}, properties(false)},
      {"Properties", "playback", topic::Parameters, {}, OpenPropertiesOfFile},
      {"frmProperties", "", topic::Parameters, {}, OpenForeignProperties},
  };
});

}  // namespace
}  // namespace velk::test
