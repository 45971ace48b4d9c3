#include <fstream>

#include "exchange/windows/convert_data_files.h"
#include "exchange/windows/data_file_info.h"
#include "exchange/windows/file_options.h"
#include "exchange/windows/frm_export.h"
#include "exchange/windows/frm_imprt_live_data.h"
#include "exchange/windows/pick_columns.h"
#include "exchange/windows/rename_fields.h"
#include "exchange/windows/view_data.h"
#include "model/help_topics.h"
#include "platform/database/connection.h"
#include "support/window_driving.h"
#include "windows/every_window.h"

namespace velk::test {
namespace {

/// A text file of a job, with what looks at it.
struct SampleCsv {
  SampleCsv(const std::string& language, const char* first) : job(MakeJob(language)) {
    const std::string path = job->folder.File("north 7.csv");
    std::ofstream file(path);
    file << (*first == '\0' ? job->Pick("Date,Time,Hook load,Depth,Pump pressure,TheComment",
                                        "Date,Time,Нагрузка на крюке,Глубина,Давление насоса,TheComment")
                            : std::string(first))
         << "\r\n";
    for (int i = 0; i < 40; ++i)
      file << "21/11/2026,10:" << 10 + i << ":00," << 180.5 + i << "," << 2050 + i * 0.25 << "," << 21 - i * 0.1
           << (i == 7 ? job->Pick(",Packer set", ",Пакер установлен") : "") << "\r\n";
    file.close();
    csv = std::make_unique<CsvFile>(path, CodePage::Western);
    table = std::make_unique<CsvTable>(*csv);
  }

  Job job;
  std::unique_ptr<CsvFile> csv;
  std::unique_ptr<CsvTable> table;
  std::unique_ptr<QWidget> window;
};

template <class Make>
std::shared_ptr<QWidget> OnCsv(const std::string& language, const char* first, Make make) {
  const auto sample = std::make_shared<SampleCsv>(language, first);
  sample->window = make(*sample);
  return {sample, sample->window.get()};
}

std::shared_ptr<QWidget> OpenInfo(const std::string& language, const char* first) {
  return OnCsv(language, first,
               [](SampleCsv& sample) { return std::make_unique<DataFileInfo>(sample.job->host, *sample.csv); });
}

std::shared_ptr<QWidget> OpenView(const std::string& language) {
  return OnCsv(language, "", [](SampleCsv& sample) {
    return std::make_unique<ViewData>(sample.job->host, *sample.table, 46000, [](const CsvTable&, double) {});
  });
}

std::shared_ptr<QWidget> OpenExport(const std::string& language, ExportMode mode) {
  const Job job = MakeJob(language);
  job->Record(3);
  auto window = Hosted<frmExport>(job, ExportAccess{job->platform, mode, job->open.Path(), "/"});
  if (mode == ExportMode::LogToCsv)
    for (int i = 0; i < 4; ++i) Click(*window, "Command1");
  job->dialogs.ExpectSaveFile(job->folder.File("north 7.csv"));
  Click(*window, "Command6");
  return window;
}

std::vector<std::string> ManyNames(int count) {
  std::vector<std::string> names;
  for (int i = 1; i <= count; ++i) names.push_back("Channel " + std::to_string(i));
  return names;
}

std::shared_ptr<QWidget> OpenLiveChoice(const std::string& language, bool isChosen) {
  const Job job = MakeJob(language);
  LiveImport live;
  if (isChosen) {
    live = {true, job->folder.File("rig 7.mdb"), "Readings", "Day", "Clock", {LiveField{.Name = "Hook load"}}};
    Connection::Open(live.DBaseName, OpenMode::CreateNew)
        ->Execute(
            "CREATE TABLE Readings (Day DATE, Clock DATE, \"Hook load\" DOUBLE, Depth DOUBLE, \"Pump pressure\" "
            "DOUBLE)");
  }
  return Hosted<frmImprtLiveData>(job, LiveChoiceAccess{job->platform, "/", {}, [](const LiveImport&) {}}, live);
}

const WindowsOf kExchange([] {
  return std::vector<ListedWindow>{
      {"ConvertDataFiles",
       "",
       topic::Exchange,
       {"lblHint"},
       [](const std::string& language) {
         const Job job = MakeJob(language);
         return Hosted<ConvertDataFiles>(job, "/", job->folder.Touch("north 7.csv"));
       }},
      {"ConvertDataFiles",
       "missing",
       topic::Exchange,
       {"lblHint"},
       [](const std::string& language) {
         return Hosted<ConvertDataFiles>(MakeJob(language), "/", std::string("/data/none.csv"));
       }},
      {"DataFileInfo",
       "",
       topic::Exchange,
       {"lblColumns", "lblRows", "lblNames", "lblNote", "DataFileInfo"},
       [](const std::string& language) { return OpenInfo(language, ""); }},
      {"DataFileInfo",
       "warning",
       topic::Exchange,
       {"lblColumns", "lblRows", "lblNames", "lblNote", "DataFileInfo"},
       [](const std::string& language) { return OpenInfo(language, "ID,Date,Time,A"); }},
      {"ViewData", "", topic::Exchange, {"lblRows", "qt_GridHeadings", "lblNote", "Text1"}, OpenView},
      {"RenameFields",
       "",
       topic::Exchange,
       {"Text1_*", "qt_*"},
       [](const std::string& language) { return Hosted<RenameFields>(MakeJob(language), ManyNames(12)); }},
      {"FileOptions",
       "",
       topic::Exchange,
       {"lblFile"},
       [](const std::string& language) {
         return Hosted<FileOptions>(MakeJob(language), std::string("/data/jobs/north 7.mdb"));
       }},
      {"PickColumns",
       "",
       topic::Exchange,
       {"lblChosen"},
       [](const std::string& language) { return Hosted<PickColumns>(MakeJob(language), ManyNames(70), 64); }},
      {"frmImprtLiveData",
       "",
       topic::Exchange,
       {"lblDate", "lblTime", "txtDatabaseName"},
       [](const std::string& language) { return OpenLiveChoice(language, true); }},
      {"frmImprtLiveData",
       "first",
       topic::Exchange,
       {"lblDate", "lblTime", "txtDatabaseName"},
       [](const std::string& language) { return OpenLiveChoice(language, false); }},
      {"frmExport",
       "",
       topic::Exchange,
       {"Label1", "Label4", "frmExport"},
       [](const std::string& language) { return OpenExport(language, ExportMode::LogToCsv); }},
      {"frmExport",
       "xml",
       topic::Exchange,
       {"Label1", "Label4", "frmExport"},
       [](const std::string& language) { return OpenExport(language, ExportMode::LogToXml); }},
  };
});

}  // namespace
}  // namespace velk::test
