#include "shell/not_built.h"

#include <algorithm>
#include <iterator>

namespace velk {

namespace {

constexpr std::string_view kNotBuilt[] = {
    // File
    "mnuFilePlayback", "mnuFileImportCSV", "mnuFileExportSummary", "mnuFileExportMDBtoCSV", "mnuFileExportMDBtoXML",
    // View
    "mnuViewSummaryReport",
    // Edit Settings
    "mnuEditAutoDetect", "mnuEditOPCServer", "mnuEditTable",
    // Tools
    "mnuImprtLiveData", "mnuToolsCalibrate", "mnuToolsReset", "mnuToolsOrbenHardware", "mnuToolsLiveSurvey",
    "mnuToolsSurvey", "mnuTools3DWell", "mnuToolsWellProfileTable",
    // Toolbar
    "PlayBack", "ScrollBar"};

}  // namespace

bool IsBuilt(std::string_view item) {
  return std::find(std::begin(kNotBuilt), std::end(kNotBuilt), item) == std::end(kNotBuilt);
}

}  // namespace velk
