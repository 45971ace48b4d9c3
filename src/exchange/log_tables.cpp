#include "exchange/log_tables.h"

#include <algorithm>
#include <array>

#include "base/colour.h"
#include "base/errors.h"
#include "exchange/csv_shape.h"
#include "log/graph_settings.h"
#include "log/log_schema.h"
#include "log/recording_lock.h"
#include "log/texts.h"
#include "model/parameter.h"
#include "platform/database/catalog.h"
#include "platform/database/command.h"
#include "platform/files/file_errors.h"

namespace velk {

namespace {

constexpr std::size_t kFieldsCompared = 36;

// Neighbours differ in hue and in lightness; each can be read on white paper and, mapped, on dark one.
constexpr std::array<std::int32_t, 16> kCurveColours = {
    Rgb(0xC8, 0x10, 0x2E), Rgb(0x00, 0x57, 0xB8), Rgb(0x1B, 0x7F, 0x3B), Rgb(0x7B, 0x2D, 0x8E),
    Rgb(0xB8, 0x54, 0x00), Rgb(0x00, 0x79, 0x7A), Rgb(0x7A, 0x4A, 0x1E), Rgb(0xB0, 0x15, 0x7A),
    Rgb(0x1F, 0x3A, 0x93), Rgb(0x6B, 0x6B, 0x00), Rgb(0x8B, 0x0A, 0x1A), Rgb(0x0A, 0x7C, 0xA8),
    Rgb(0x14, 0x5A, 0x32), Rgb(0x5B, 0x3F, 0xBF), Rgb(0x96, 0x36, 0x1A), Rgb(0x33, 0x3A, 0x42)};

std::vector<std::string> FieldsOfLog(const std::string& path) {
  const auto connection = Connection::Open(path, OpenMode::ReadOnly);
  std::vector<std::string> names;
  if (const auto table = Catalog(*connection).Find(kLogData))
    for (const Column& column : table->columns) names.push_back(column.name);
  return names;
}

}  // namespace

void CreateLogTables(Connection& log, const std::vector<std::string>& names, bool hasComments,
                     const Language& language) {
  Catalog catalog(log);
  Table logData = LogDataTable(names);
  if (hasComments) logData.columns.push_back({kCommentColumn, column_type::kLongText});
  catalog.Append(logData);
  catalog.Append(GraphSettingsTable());
  catalog.Append(SummaryReportTable(SummaryColumnNames(names, {}, language.In(text::Comments)),
                                    std::vector<bool>(names.size(), true)));
}

std::int32_t CurveColour(std::size_t place) {
  return kCurveColours[place % kCurveColours.size()];
}

void FillGraphSettings(const std::shared_ptr<Connection>& log, const std::vector<std::string>& names,
                       const Language& language) {
  std::vector<Parameter> channels(names.size());
  for (std::size_t i = 0; i < names.size(); ++i) {
    channels[i].name = names[i];
    channels[i].color = CurveColour(i);
    channels[i].FormIndex = static_cast<std::int16_t>(i + 1);
  }
  WriteGraphSettings(log, channels, false, language);
}

bool CheckLogCompatible(const std::string& path, const std::vector<std::string>& names) {
  std::vector<std::string> wanted = {"Date", "Time"};
  wanted.insert(wanted.end(), names.begin(), names.end());
  const std::vector<std::string> fields = FieldsOfLog(path);
  return fields.size() > wanted.size() && std::equal(wanted.begin(), wanted.end(), fields.begin() + 1);
}

bool CompareSettingsFile(const std::string& path, const std::string& settingsSourceFile) {
  std::vector<std::string> own = FieldsOfLog(path), other = FieldsOfLog(settingsSourceFile);
  own.resize(std::min(own.size(), kFieldsCompared));
  other.resize(std::min(other.size(), kFieldsCompared));
  return !own.empty() && own == other;
}

void ImportGraphSettings(const std::string& path, const std::string& settingsSourceFile) {
  const auto lock = LockForRecording(path);
  const auto source = Connection::Open(settingsSourceFile, OpenMode::ReadOnly);
  if (!Catalog(*source).Find(kGraphSettings))
    throw RuntimeError(ErrorNumber::NoSuchTable,
                       FileErrorText(ErrorNumber::NoSuchTable, settingsSourceFile + " (" + kGraphSettings + ")"));
  const auto log = Connection::Open(path, OpenMode::ReadWrite);
  {
    Transaction transaction(*log);
    log->Execute("DELETE FROM GraphSettings");
    const std::string columns = "ParameterName, units, Minimum, Maximum, NumberFormat, GraphNumber, CurveColor";
    Command rows(*source, "SELECT " + columns + " FROM GraphSettings");
    Command insert(*log, "INSERT INTO GraphSettings (" + columns + ") VALUES (?,?,?,?,?,?,?)");
    while (rows.Next()) {
      for (int i = 0; i < rows.ColumnCount(); ++i) insert.Bind(i + 1, rows.Field(i));
      insert.Execute();
    }
    transaction.Commit();
  }
  log->Finalise();
}

}  // namespace velk
