#include "log/log_database.h"

#include <algorithm>

#include "base/dates.h"
#include "log/field_names.h"
#include "log/log_tables.h"
#include "log/parameter_defaults.h"
#include "log/texts.h"
#include "platform/database/command.h"
#include "platform/dialogs/dialogs.h"
#include "platform/files/file_errors.h"
#include "platform/files/new_file.h"
#include "platform/loop/clock.h"

namespace velk {

LogDatabase::LogDatabase(Session& session, const Platform& platform, JobQuestions& questions, GraphWindows& graphs)
    : session_(session), platform_(platform), questions_(questions), graphs_(graphs), lastUpdated_(platform) {
}

LogDatabase::~LogDatabase() {
  try {
    Finalise();
  } catch (const std::exception&) {
  }
}

void LogDatabase::CreateLogFile(const std::string& path) {
  NewFile file(path);
  auto connection = Connection::Open(file.PartName(), OpenMode::CreateNew);
  connection->Execute("PRAGMA journal_mode=MEMORY");
  Transaction transaction(*connection);
  Catalog catalog(*connection);
  catalog.Append(LogDataTable(session_));
  catalog.Append(GraphSettingsTable());
  AskSummaryInclusion();
  catalog.Append(SummaryReportTable(session_, platform_.language));
  WriteGraphSettingsTo(connection, false);
  transaction.Commit();
  connection.reset();
  file.Complete();
}

void LogDatabase::AskSummaryInclusion() {
  SummaryInclusion inclusion;
  for (int i = 1; i <= session_.NumberOfParameters; ++i) {
    const Parameter& parameter = session_.CurrentParameters[static_cast<std::size_t>(i)];
    if (parameter.name != kBlankName) inclusion.parameters.push_back({i, parameter.name, parameter.IncludeInSummary});
  }
  inclusion.extraFields = session_.SummaryExtraFields;
  questions_.IncludeInSummary(inclusion);
  for (const SummaryInclusion::Entry& entry : inclusion.parameters)
    session_.CurrentParameters[static_cast<std::size_t>(entry.parameter)].IncludeInSummary = entry.included;
  session_.SummaryExtraFields = inclusion.extraFields;
}

void LogDatabase::ConnectLogFile(const std::string& path) {
  if (connection_ && connection_->IsSameFile(path)) return;
  auto connection = Connection::Open(path, OpenMode::ReadWrite);
  // A stranger's file is left as it is.
  if (!Catalog(*connection).Find(kLogData))
    throw RuntimeError(ErrorNumber::NoSuchTable, FileErrorText(ErrorNumber::NoSuchTable, path + " (" + kLogData + ")"));
  connection->BeginRecording();
  try {
    Finalise();
  } catch (const RuntimeError&) {
    // Another program reads the log before. It keeps its write-ahead log; the new recording does not wait for that.
  }
  connection_ = std::move(connection);
}

void LogDatabase::OpenLogRecordset() {
  const auto table = Catalog(Connected()).Find(kLogData);
  if (!table || !HasRoomFor(*table, session_.NumberOfParameters)) RaiseNotCompatible(connection_->Path());
  recordset_.emplace(connection_, kLogData);
}

void LogDatabase::CloseLogRecordset() {
  recordset_.reset();
  lastUpdated_.Flush();
}

void LogDatabase::AppendLogRow(std::optional<double> at) {
  if (session_.LogFileInUse == platform_.language.In(text::Failed)) return;
  if (!recordset_) throw RuntimeError(ErrorNumber::Database, text::LogNotOpen);
  connection_->CheckInPlace();
  const double time = at.value_or(platform_.clock.Now());
  const DateParts parts = Split(time);
  recordset_->AddNew();
  recordset_->SetField(1, DatePart(time));
  recordset_->SetField(2, TimeOfDay(parts.hour, parts.minute, parts.second));
  for (int i = 1; i <= session_.NumberOfParameters; ++i)
    recordset_->SetField(i + 2, static_cast<double>(session_.CurrentValue[static_cast<std::size_t>(i)]));
  recordset_->Update();
  lastUpdated_.Stamp();
}

void LogDatabase::WriteGraphSettings(bool update) {
  Connected();
  Transaction transaction(*connection_);
  WriteGraphSettingsTo(connection_, update);
  transaction.Commit();
}

void LogDatabase::WriteGraphSettingsTo(const std::shared_ptr<Connection>& connection, bool update) {
  Recordset settings(connection, kGraphSettings);
  if (update) settings.MoveFirst();
  for (int i = 1; i <= session_.NumberOfParameters; ++i) {
    if (!update) settings.AddNew();
    Parameter& parameter = session_.CurrentParameters[static_cast<std::size_t>(i)];
    FillEmptyFields(parameter, i, platform_.language);
    settings.SetField(0, parameter.name);
    settings.SetField(1, parameter.units);
    settings.SetField(2, parameter.min);
    settings.SetField(3, parameter.max);
    settings.SetField(4, parameter.format);
    settings.SetField(5, std::int64_t{parameter.FormIndex});
    settings.SetField(6, std::int64_t{parameter.color});
    settings.Update();
    if (update) settings.MoveNext();
  }
  lastUpdated_.Stamp();
}

bool LogDatabase::IsCompatibleLog(const std::string& path) {
  const std::optional<Table> table = LogTableOf(path);
  if (!table) return false;
  for (int i = 1; i <= session_.NumberOfParameters; ++i) {
    if (HasNameOfEarlierChannel(i)) {
      if (!AskForOtherName(i)) return false;
      i = 0;
    } else if (!TakesChannel(*table, ChannelNames(session_), i)) {
      return false;
    }
  }
  return HasRoomFor(*table, session_.NumberOfParameters);
}

/// Channels that are nothing but "BLANK", or nothing once cleaned, are told apart by their numbers.
bool LogDatabase::HasNameOfEarlierChannel(int channel) const {
  const auto& parameters = session_.CurrentParameters;
  const std::string name = CleanFieldName(parameters[static_cast<std::size_t>(channel)].name);
  if (name.empty() || name == kBlankName) return false;
  return std::any_of(parameters.begin() + 1, parameters.begin() + channel,
                     [&](const Parameter& earlier) { return CleanFieldName(earlier.name) == name; });
}

bool LogDatabase::AskForOtherName(int channel) {
  Parameter& parameter = session_.CurrentParameters[static_cast<std::size_t>(channel)];
  const auto reply =
      platform_.dialogs.Input(text::SameNameBefore + parameter.name + text::SameNameAfter, text::DatabaseErrorTitle);
  if (!reply || reply->empty()) return false;
  parameter.name = *reply;
  graphs_.Rebuild(parameter.FormIndex);
  return true;
}

bool LogDatabase::HasSameColumnOrder(const std::string& path) {
  const std::optional<Table> table = LogTableOf(path);
  return table && HasOrderOf(*table, ChannelNames(session_));
}

/// Reads through the log's own connection where the file is the log.
std::optional<Table> LogDatabase::LogTableOf(const std::string& path) {
  if (connection_ && connection_->IsSameFile(path)) return Catalog(*connection_).Find(kLogData);
  const auto connection = Connection::Open(path, OpenMode::ReadOnly);
  return Catalog(*connection).Find(kLogData);
}

bool LogDatabase::LogHasGraphSettings() {
  if (connection_ && Catalog(*connection_).Find(kGraphSettings)) return true;
  platform_.dialogs.Message({text::NoGraphSettings, text::DatabaseErrorTitle, Buttons::Ok, BoxIcon::Exclamation});
  return false;
}

bool LogDatabase::HoldsPresentChannels() {
  if (!connection_ || !Catalog(*connection_).Find(kGraphSettings)) return false;
  Command names(*connection_, "SELECT ParameterName FROM GraphSettings ORDER BY rowid");
  std::vector<std::string> held;
  while (names.Next()) held.push_back(names.Text(0));
  return held == ChannelNames(session_);
}

void LogDatabase::ReadSummaryInclusion() {
  const auto report = Catalog(Connected()).Find(kSummaryReport);
  const SummaryColumns names = SummaryColumnNames(session_, platform_.language);
  for (std::size_t i = 0; i < names.parameters.size(); ++i) {
    const auto isOwn = [&](const Column& column) { return column.name == names.parameters[i]; };
    session_.CurrentParameters[i + 1].IncludeInSummary =
        report && std::any_of(report->columns.begin(), report->columns.end(), isOwn);
  }
}

void LogDatabase::Finalise() {
  CloseLogRecordset();
  if (!connection_) return;
  connection_->Finalise();
  connection_.reset();
}

Connection& LogDatabase::Connected() const {
  if (!connection_) throw RuntimeError(ErrorNumber::Database, text::LogNotOpen);
  return *connection_;
}

void LogDatabase::RaiseNotCompatible(const std::string& path) const {
  throw RuntimeError(ErrorNumber::Database, text::NotCompatibleBefore + path + text::NotCompatibleAfter);
}

}  // namespace velk
