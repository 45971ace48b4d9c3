#include "log/log_writer.h"

#include <algorithm>
#include <span>

#include "base/dates.h"
#include "log/channels.h"
#include "log/graph_settings.h"
#include "log/log_layout.h"
#include "log/log_parameters.h"
#include "log/log_schema.h"
#include "log/recording_lock.h"
#include "log/summary_report.h"
#include "log/texts.h"
#include "platform/dialogs/dialogs.h"
#include "platform/files/file_errors.h"
#include "platform/files/new_file.h"

namespace velk {

namespace {

std::vector<bool> IncludedChannels(const Session& session) {
  std::vector<bool> included;
  for (int i = 1; i <= session.NumberOfParameters; ++i)
    included.push_back(session.CurrentParameters[static_cast<std::size_t>(i)].IncludeInSummary);
  return included;
}

std::span<Parameter> Channels(Session& session) {
  return std::span(session.CurrentParameters).subspan(1, static_cast<std::size_t>(session.NumberOfParameters));
}

/// The rows to come. Where a damaged log doesn't tell its last key, none that could be looked for.
JobRows RowsBehind(const Connection& connection, const Table& logData) {
  try {
    Command last(connection, "SELECT max(" + KeyOf(logData) + ") FROM logData");
    return {connection.Path(), last.Next() ? last.Integer(0) : 0, 0};
  } catch (const RuntimeError&) {
    return {};
  }
}

}  // namespace

LogWriter::LogWriter(Session& session, const Platform& platform)
    : session_(session), platform_(platform), lastUpdated_(platform), told_(platform.dialogs) {
}

LogWriter::~LogWriter() {
  try {
    Release();
  } catch (const std::exception&) {
  }
}

void LogWriter::CreateLogFile(const std::string& path) {
  NewFile file(path);
  auto connection = Connection::Open(file.PartName(), OpenMode::CreateNew);
  connection->Execute("PRAGMA journal_mode=MEMORY");
  Transaction transaction(*connection);
  Catalog catalog(*connection);
  catalog.Append(LogDataTable(ChannelNames(session_)));
  catalog.AppendIndex(kLogDataTimes, kLogData, {"Date", "Time"});
  catalog.Append(GraphSettingsTable());
  catalog.Append(SummaryReportTable(SummaryColumnsOf(session_, platform_.language), IncludedChannels(session_)));
  velk::WriteGraphSettings(connection, Channels(session_), false, platform_.language);
  transaction.Commit();
  connection.reset();
  const bool flushed = file.Complete();
  lastUpdated_.Stamp();
  if (!flushed) told_.Tell(text::FolderNotFlushed, FolderOf(path));
}

void LogWriter::FollowRow(std::int64_t key, bool isThere) {
  if (key > job_.after) job_.count += isThere ? 1 : -1;
}

void LogWriter::ConnectLogFile(const std::string& path) {
  if (connection_ && connection_->IsSameFile(path)) return KeepChannels();
  auto connection = Connection::Open(path, OpenMode::ReadWrite);
  // A stranger's file is left as it is.
  const auto table = Catalog(*connection).Find(kLogData);
  if (!table)
    throw RuntimeError(ErrorNumber::NoSuchTable, FileErrorText(ErrorNumber::NoSuchTable, path + " (" + kLogData + ")"));
  // A file that was replaced under its name has the lock already.
  auto lock = lock_ && lock_->Guards(path) ? std::move(lock_) : LockForRecording(path);
  connection->BeginRecording();
  std::vector<std::string> left;
  try {
    left = Release();
  } catch (const RuntimeError&) {
    // Another program reads the log before. It keeps its write-ahead log; the new recording does not wait for that.
  }
  connection_ = std::move(connection);
  lock_ = std::move(lock);
  job_ = RowsBehind(*connection_, *table);
  KeepChannels();
  TellLeft(left);
}

/// Graph settings that can't be read keep no row out of the log.
void LogWriter::KeepChannels() {
  channels_ = ChannelNames(session_);
  holdsChannels_ = false;
  try {
    const auto held = ReadGraphSettings(connection_, platform_.language);
    const auto isCalled = [](const Parameter& channel, const std::string& name) { return channel.name == name; };
    holdsChannels_ = held && std::equal(held->begin(), held->end(), channels_.begin(), channels_.end(), isCalled);
  } catch (const RuntimeError&) {
  }
}

void LogWriter::OpenLogRecordset() {
  const auto table = Catalog(Connected()).Find(kLogData);
  if (!table || !HasRoomFor(*table, session_.NumberOfParameters))
    throw RuntimeError(ErrorNumber::Database,
                       text::NotCompatibleBefore + connection_->Path() + text::NotCompatibleAfter);
  recordset_.emplace(connection_, kLogData);
}

void LogWriter::CloseLogRecordset() {
  recordset_.reset();
  lastUpdated_.Flush();
}

void LogWriter::AppendLogRow(const LogRow& row) {
  if (session_.LogFileInUse == platform_.language.In(text::Failed)) return;
  if (!recordset_) throw RuntimeError(ErrorNumber::Database, text::LogNotOpen);
  connection_->CheckInPlace();
  const DateParts parts = Split(row.time);
  recordset_->AddNew();
  recordset_->SetField(1, DatePart(row.time));
  recordset_->SetField(2, TimeOfDay(parts.hour, parts.minute, parts.second));
  int field = kFieldsBeforeChannels;
  for (const double value : row.values) recordset_->SetField(field++, value);
  recordset_->Update();
  ++job_.count;
  lastUpdated_.Stamp();
}

void LogWriter::WriteGraphSettings(bool update) {
  Connected();
  const std::vector<std::string> present = ChannelNames(session_);
  Transaction transaction(*connection_);
  velk::WriteGraphSettings(connection_, Channels(session_), update, platform_.language, NamesToStore(present));
  transaction.Commit();
  lastUpdated_.Stamp();
}

const std::vector<std::string>& LogWriter::NamesToStore(const std::vector<std::string>& present) const {
  if (present.size() != channels_.size() || present == channels_) return present;
  const std::vector<std::string> columns = ReadLogLayout(*connection_).channels;
  const auto places = PlacesOfChannels(channels_, columns);
  return places && PlacesOfChannels(present, columns) == places ? present : channels_;
}

void LogWriter::ReadSummaryInclusion() {
  const std::vector<bool> included = ChannelsInSummary(Connected(), ChannelNames(session_), platform_.language);
  for (std::size_t i = 0; i < included.size(); ++i) session_.CurrentParameters[i + 1].IncludeInSummary = included[i];
}

void LogWriter::Finalise() {
  TellLeft(Release());
}

std::vector<std::string> LogWriter::Release() {
  CloseLogRecordset();
  if (!connection_) return {};
  if (onLeaving) onLeaving();
  std::vector<std::string> left = connection_->Finalise();
  connection_.reset();
  if (lock_ && !lock_->Release()) left.push_back(lock_->Name());
  lock_.reset();
  job_ = {};
  channels_.clear();
  holdsChannels_ = false;
  return left;
}

void LogWriter::TellLeft(const std::vector<std::string>& files) {
  if (files.empty()) return;
  std::string names = files.front();
  for (std::size_t i = 1; i < files.size(); ++i) names += ", " + files[i];
  told_.Tell(text::SideFileStays, names);
}

Connection& LogWriter::Connected() const {
  if (!connection_) throw RuntimeError(ErrorNumber::Database, text::LogNotOpen);
  return *connection_;
}

}  // namespace velk
