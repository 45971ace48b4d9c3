#include "shell/not_built.h"

#include <algorithm>
#include <array>

namespace velk {

namespace {

constexpr std::array<std::string_view, 43> kNotBuilt = {
    // File
    "mnuFilePlayback", "mnuFileImportCSV", "mnuFileExportSummary", "mnuFileExportMDBtoCSV", "mnuFileExportMDBtoXML",
    // View
    "mnuViewToolBar", "mnuViewStatusBar", "mnuViewCompany", "mnuViewSummaryReport",
    // Edit Settings
    "mnuEditAutoDetect", "mnuEditSerialPort", "mnuEditOPCServer", "mnuEditTable", "mnuEditSaveTemplate",
    "mnuEditLoadTemplate", "mnuEditDeleteTemplate", "mnuEditClear", "mnuEditUserOptions", "mnuEditLanguage",
    // Tools
    "mnuToolsDefine", "mnuToolsRemove", "mnuToolsInclude", "mnuImprtLiveData", "mnuToolsCalibrate", "mnuToolsReset",
    "mnuToolsOrbenHardware", "mnuToolsLiveSurvey", "mnuToolsSurvey", "mnuTools3DWell", "mnuToolsWellProfileTable",
    // Window, Help
    "mnuWindowCascade", "mnuWindowTileVertically", "mnuWindowTileHorizontally", "mnuWindowArrange", "mnuWindow1",
    "mnuHelpContents", "mnuHelpAbout",
    // Toolbar
    "PlayBack", "Edit", "Tools", "Help", "Alarms", "ScrollBar"};

}  // namespace

bool IsBuilt(std::string_view item) {
  return std::find(kNotBuilt.begin(), kNotBuilt.end(), item) == kNotBuilt.end();
}

}  // namespace velk
