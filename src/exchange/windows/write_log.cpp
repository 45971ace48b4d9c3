#include "exchange/windows/write_log.h"

#include <filesystem>

#include "exchange/csv_import.h"
#include "exchange/log_tables.h"
#include "exchange/texts.h"
#include "exchange/windows/file_options.h"
#include "exchange/windows/pick_columns.h"
#include "model/parameter.h"
#include "platform/database/jet_copy.h"
#include "platform/dialogs/long_task.h"
#include "platform/files/file_errors.h"
#include "platform/texts.h"

namespace velk {

namespace {

std::string FileName(const std::string& path) {
  return path.substr(path.rfind('/') + 1);
}

/// With ".mdb" where the name that was entered has no extension.
std::string WithExtension(const std::string& path) {
  return FileName(path).find('.') == std::string::npos ? path + ".mdb" : path;
}

/// The last parameter of a file without names has no numbers in it.
std::size_t ColumnsThatCount(const CsvTable& table, const CsvPlan& plan) {
  const bool lastIsEmpty = !table.File().Shape().hasHeader && !plan.names.empty();
  return plan.names.size() - (lastIsEmpty ? 1 : 0);
}

}  // namespace

std::string OutputNameFor(const std::string& csvFileName) {
  const std::string name = FileName(csvFileName);
  return csvFileName.substr(0, csvFileName.size() - name.size()) + name.substr(0, name.find('.')) + ".mdb";
}

void WriteLog::cmdCreate_Click(const CsvTable& table, double startDay) {
  RunProcedure({access_.platform.dialogs, "cmdCreate_Click"}, [&](const Statements& run) {
    CsvPlan plan = PlanOf(table.File().Shape(), table.ColumnNames);
    plan.startDay = startDay;
    plan.deletedLines = table.DeletedLines();
    if (plan.names.empty()) return Tell(text::NoColumnsToImport);
    if (!Pick(plan, table)) return;
    const auto target = run([&] { return AskTarget(table, plan); });
    if (!target || !Write(table, plan, *target)) return;
    OfferGraphSettings(target->path);
    Tell(text::ConvertionCompleted);
  });
}

/// Where there are more columns than a log has room for, those that the operator picks. False where he picks none.
bool WriteLog::Pick(CsvPlan& plan, const CsvTable& table) {
  if (ColumnsThatCount(table, plan) <= kMaxParameters) return true;
  const auto picked = host_.Ask<PickColumns>(plan.names, kMaxParameters);
  if (!picked) return false;
  CsvPlan chosen = plan;
  chosen.names.clear();
  chosen.fields.clear();
  for (const int place : *picked) {
    chosen.names.push_back(plan.names[static_cast<std::size_t>(place)]);
    chosen.fields.push_back(plan.fields[static_cast<std::size_t>(place)]);
  }
  plan = std::move(chosen);
  return true;
}

std::optional<WriteLog::Target> WriteLog::AskTarget(const CsvTable& table, const CsvPlan& plan) {
  Dialogs& dialogs = access_.platform.dialogs;
  std::string offered = OutputNameFor(table.File().Path());
  for (;;) {
    const auto path =
        dialogs.SaveFile({text::SaveLogAs, text::DataFilesFilterLarge, FolderOf(offered), FileName(offered)});
    if (!path || path->empty()) return std::nullopt;
    offered = WithExtension(*path);
    const auto way = FileExists(offered) ? WayFor(offered) : Way::New;
    if (!way) {
      Tell(text::NotCreated);
      return std::nullopt;
    }
    if (const OperatorText reason = ReasonAgainst(*way, offered); !reason.IsEmpty()) {
      Tell(reason);
      if (dialogs.IsEnding()) return std::nullopt;
      continue;
    }
    if (way != Way::Append || CheckLogCompatible(offered, plan.names)) return Target{offered, *way};
    if (dialogs.Message({text::NotCompatableSelectAnother, {}, Buttons::YesNo, BoxIcon::Question}) != Answer::Yes)
      return std::nullopt;
  }
}

std::optional<WriteLog::Way> WriteLog::WayFor(const std::string& path) {
  const auto option = host_.Ask<FileOptions>(path);
  if (option == FileOption::Append) return Way::Append;
  return option == FileOption::OverWrite ? std::optional(Way::Replace) : std::nullopt;
}

/// False where nothing more is to be asked: it failed, was cancelled, or met a row without a time.
bool WriteLog::Write(const CsvTable& table, const CsvPlan& plan, const Target& target) {
  const Platform& platform = access_.platform;
  CsvImportResult result;
  try {
    LongTask task(platform.dialogs, platform.clock, text::ImportCsv);
    const CsvFile& file = table.File();
    result = target.way == Way::Append
                 ? AppendToLog(file, plan, target.path, platform.language, task)
                 : ImportIntoNewLog(file, plan, target.path, target.way == Way::Replace, platform.language, task);
  } catch (const RuntimeError& error) {
    TellError(error);
    return false;
  }
  if (result.badLine == 0) return true;
  Tell(text::ErrorNumberIs + std::to_string(static_cast<int>(ErrorNumber::TypeMismatch)) + ": " +
       text::LineWithoutTimeBefore + std::to_string(result.badLine) + text::LineWithoutTimeAfter +
       std::to_string(result.rows));
  return false;
}

void WriteLog::OfferGraphSettings(const std::string& path) {
  Dialogs& dialogs = access_.platform.dialogs;
  if (dialogs.Message({text::ImportSettingsQuestion, {}, Buttons::YesNo, BoxIcon::Question}) != Answer::Yes) return;
  const auto source = dialogs.OpenFile({text::SettingsSource, text::DataFilesFilterLarge, FolderOf(path)});
  if (!source) return;
  try {
    if (access_.prepare) access_.prepare(*source);
    if (!CompareSettingsFile(path, *source)) return Tell(text::SettingsNotCompatable);
    ImportGraphSettings(path, *source);
  } catch (const RuntimeError& error) {
    TellError(error);
  }
}

/// Why a file that is there can't be written to in this way; empty where it can.
OperatorText WriteLog::ReasonAgainst(Way way, const std::string& path) const {
  if (way == Way::New) return {};
  std::error_code error;
  const std::string open = access_.openLog();
  if (!open.empty() && std::filesystem::equivalent(open, path, error))
    return text::LogIsOpenBefore + path + text::LogIsOpenAfter;
  if (way == Way::Append && IsJetFile(path)) return text::JetIsReadOnlyBefore + path + text::JetIsReadOnlyAfter;
  return {};
}

void WriteLog::Tell(const OperatorText& text) {
  access_.platform.dialogs.Message({text, {}, Buttons::Ok, BoxIcon::Information});
}

void WriteLog::TellError(const RuntimeError& error) {
  const MessageBox box{text::ErrorNumberIs + std::to_string(static_cast<int>(error.Number())) + ": " + error.Text(),
                       {},
                       Buttons::Ok,
                       BoxIcon::Exclamation,
                       error.Number()};
  access_.platform.dialogs.Message(box);
}

}  // namespace velk
