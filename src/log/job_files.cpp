#include "log/job_files.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "log/channels.h"
#include "log/field_names.h"
#include "log/log_check.h"
#include "log/log_schema.h"
#include "log/recording_lock.h"
#include "log/summary_report.h"
#include "log/texts.h"
#include "model/texts.h"
#include "platform/database/catalog.h"
#include "platform/database/jet_copy.h"
#include "platform/dialogs/dialogs.h"
#include "platform/dialogs/long_task.h"
#include "platform/files/new_file.h"

namespace velk {

namespace {

std::optional<Table> LogTable(const std::string& path) {
  const auto connection = Connection::Open(path, OpenMode::ReadOnly);
  return Catalog(*connection).Find(kLogData);
}

}  // namespace

bool JobFiles::IsCompatibleLog(const std::string& path) {
  whyNot_ = {};
  if (IsJetFile(path)) return IsNot(text::IsJet);
  const std::optional<Table> table = LogTable(path);
  if (!table) return IsNot(text::NoLogInFile);
  for (int i = 1; i <= session_.NumberOfParameters; ++i) {
    const std::string name = session_.CurrentParameters[static_cast<std::size_t>(i)].name;
    if (HasNameOfEarlierChannel(i)) {
      if (!AskForOtherName(i)) return IsNot(text::SameNameTwice + name);
      i = 0;
    } else if (!TakesChannel(*table, ChannelNames(session_), i)) {
      return IsNot(text::NoColumnForChannel + name);
    }
  }
  return HasRoomFor(*table, session_.NumberOfParameters) ||
         IsNot(text::NoRoomForChannels + std::to_string(session_.NumberOfParameters));
}

bool JobFiles::IsNot(OperatorText compatible) {
  whyNot_ = std::move(compatible);
  return false;
}

/// Channels that are nothing but "BLANK", or nothing once cleaned, are told apart by their numbers.
bool JobFiles::HasNameOfEarlierChannel(int channel) const {
  const auto& parameters = session_.CurrentParameters;
  const std::string name = CleanFieldName(parameters[static_cast<std::size_t>(channel)].name);
  if (name.empty() || name == kBlankName) return false;
  return std::any_of(parameters.begin() + 1, parameters.begin() + channel,
                     [&](const Parameter& earlier) { return CleanFieldName(earlier.name) == name; });
}

bool JobFiles::AskForOtherName(int channel) {
  Parameter& parameter = session_.CurrentParameters[static_cast<std::size_t>(channel)];
  const auto reply =
      platform_.dialogs.Input(text::SameNameBefore + parameter.name + text::SameNameAfter, text::DatabaseErrorTitle);
  if (!reply || reply->empty()) return false;
  parameter.name = *reply;
  graphs_.Rebuild(parameter.FormIndex);
  return true;
}

bool JobFiles::HasSameColumnOrder(const std::string& path) {
  const std::optional<Table> table = LogTable(path);
  return table && HasOrderOf(*table, ChannelNames(session_));
}

FileChoice JobFiles::AppendOrCreate(const std::string& path, const std::string& newName) {
  CheckNotRecordedElsewhere(path);
  const bool compatible = IsCompatibleLog(path);
  const FileChoice choice =
      questions_.AppendOrCreate({path, newName, compatible, compatible && HasSameColumnOrder(path), whyNot_});
  if (choice != FileChoice::Append || IsWhole(path)) return choice;
  const Answer answer = platform_.dialogs.Message(
      {text::DamagedLogBefore + path + text::DamagedLogAfter, "", Buttons::YesNo, BoxIcon::Exclamation});
  return answer == Answer::Yes ? FileChoice::CreateNew : FileChoice::None;
}

/// What the operator skips counts as whole.
bool JobFiles::IsWhole(const std::string& path) {
  LongTask task(platform_.dialogs, platform_.clock, text::CheckingLog);
  task.Doing(path);
  try {
    return IsWholeLog(path, [&](double done, double of) { task.Step(done, of); });
  } catch (const TaskCancelled&) {
    if (platform_.dialogs.IsEnding()) throw;
    return true;
  }
}

void JobFiles::ClearParts(const std::string& path) {
  for (const std::string& left : NewFile::ClearParts(path)) told_.Tell(text::LeftFileStays, left);
}

void JobFiles::AskForNewFile(const std::string& path) {
  NewFile::Check(path);
  AskSummaryInclusion(session_, questions_);
}

}  // namespace velk
