#include "log/record_file.h"

#include <algorithm>

#include "base/dates.h"
#include "base/numbers.h"
#include "log/texts.h"
#include "model/status.h"
#include "model/texts.h"
#include "platform/dialogs/procedure.h"
#include "platform/files/file_errors.h"
#include "platform/loop/clock.h"

namespace velk {

namespace {

constexpr const char* kExtension = ".mdb";

/// Where the file's name begins in a path: dots and "#" of folders don't count.
std::size_t NameStart(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string::npos ? 0 : slash + 1;
}

/// The whole number at the front of a text; 0 where there is none that can be counted on from.
long long CountFrom(const std::string& text) {
  constexpr double kMost = 1e15;
  const double value = Val(text);
  return value >= 0 && value < kMost ? static_cast<long long>(value) : 0;
}

/// The name that is to be recorded to; empty where the operator chose none.
std::string AskAppendOrCreate(const RecordFileNames& names, JobFiles& files) {
  switch (files.AppendOrCreate(names.oldName, names.newName)) {
    case FileChoice::Append:
      return names.oldName;
    case FileChoice::CreateNew:
      return names.newName;
    case FileChoice::None:
      break;
  }
  return {};
}

void TakeFile(Session& session, MainView& view, const std::string& name) {
  session.CurrentFile = name;
  session.PageCount = 0;
  session.DefaultDirectory = FolderOf(name);
  view.SetPanel(2, text::CurrentFile + name);
  if (StatusIs(session, text::StatusReadyToAcquire)) {
    session.RecordToDB = true;
    view.SetButtonImage("RecordToDB", image::RecordOn);
  }
}

}  // namespace

RecordFileNames NamesFor(const std::string& chosen, const std::function<bool(const std::string&)>& exists) {
  RecordFileNames names;
  const std::size_t nameStart = NameStart(chosen);
  std::size_t dot = chosen.find('.', nameStart);
  names.oldName = dot == std::string::npos ? chosen + kExtension : chosen;
  if (!exists(names.oldName)) return names;

  const std::string stem = chosen.substr(0, dot);
  const std::size_t mark = stem.find('#', nameStart);
  const bool numbered = mark != std::string::npos;
  names.oldName = stem + kExtension;
  names.oldExists = exists(names.oldName);
  if (!names.oldExists) return names;

  const std::string base = stem.substr(0, mark);
  long long number = numbered ? CountFrom(stem.substr(mark + 1)) : 1;
  names.newName = numbered ? names.oldName : base + "#1" + kExtension;
  while (exists(names.newName)) names.newName = base + "#" + std::to_string(++number) + kExtension;
  return names;
}

bool mnuFileRecord_Click(Session& session, const Platform& platform, MainView& view, JobFiles& files) {
  bool chosen = false;
  const Report report{platform.dialogs, "mnuFileRecord_Click", text::RecordToError};
  RunProcedure(report, [&](auto run) {
    // No ":" in it: files go to disks of other systems.
    const std::string name = FormatDate(platform.clock.Now(), "yyyy-mm-dd hh-nn") + kExtension;
    const auto picked =
        platform.dialogs.SaveFile({text::RecordDataTo, text::DataFilesFilter, session.DefaultDirectory, name});
    if (!picked || picked->empty()) return;
    const RecordFileNames names = NamesFor(*picked, FileExists);
    const std::string file = names.oldExists ? run([&] { return AskAppendOrCreate(names, files); }) : names.oldName;
    if (file.empty()) return;
    files.ClearParts(file);
    TakeFile(session, view, file);
    chosen = true;
  });
  return chosen;
}

}  // namespace velk
