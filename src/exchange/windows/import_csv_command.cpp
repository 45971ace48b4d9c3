#include "exchange/windows/import_csv_command.h"

#include "exchange/texts.h"
#include "exchange/windows/convert_data_files.h"
#include "exchange/windows/view_data.h"
#include "platform/dialogs/long_task.h"
#include "platform/files/file_errors.h"
#include "platform/files/file_lock.h"
#include "platform/loop/clock.h"

namespace velk {

namespace {

/// The file behind the first screen; nothing where it can't be opened.
std::unique_ptr<CsvFile> OpenCsv(WindowHost& host, const Platform& platform, const std::string& path) {
  std::unique_ptr<CsvFile> file;
  RunProcedure({platform.dialogs, "mnuFileImportCSV_Click"}, [&](const Statements& run) {
    file = run([&] {
      // To close a file that is being recorded to would take the engine's locks of it.
      if (FileLock::HolderOf(path))
        throw RuntimeError(ErrorNumber::FileAlreadyOpen, text::LogIsOpenBefore + path + text::LogIsOpenAfter);
      LongTask task(platform.dialogs, platform.clock, text::ImportCsv);
      task.Doing(text::OpeningFile);
      return std::make_unique<CsvFile>(path, CodePageOf(host.Words().Languages.Language()),
                                       [&](double done, double of) { task.Step(done, of); });
    });
  });
  return file;
}

/// The second and the third screen; false where they lead back to the first.
bool ShowFile(WindowHost& host, const ImportAccess& access, CsvFile& file) {
  CsvTable table(file);
  WriteLog write(host, access);
  for (;;) {
    const auto step = host.Ask<DataFileInfo>(file);
    if (step != WizardStep::Next) return !step;
    const auto viewed = host.Ask<ViewData>(table, access.platform.clock.Now(),
                                           [&](const CsvTable& rows, double day) { write.cmdCreate_Click(rows, day); });
    if (viewed != WizardStep::Back) return true;
  }
}

}  // namespace

void mnuFileImportCSV_Click(WindowHost& host, const ImportAccess& access) {
  std::string path;
  for (;;) {
    const auto chosen = host.Ask<ConvertDataFiles>(path.empty() ? access.directory : FolderOf(path), path);
    if (!chosen) return;
    path = *chosen;
    const auto file = OpenCsv(host, access.platform, path);
    if (file && ShowFile(host, access, *file)) return;
  }
}

}  // namespace velk
