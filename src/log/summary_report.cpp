#include "log/summary_report.h"

#include <algorithm>

#include "base/text.h"
#include "log/channels.h"
#include "log/log_layout.h"
#include "log/log_schema.h"
#include "log/texts.h"

namespace velk {

namespace {

bool HoldsText(const Column& column) {
  const std::string type = UpperCase(column.type);
  return type.find("TEXT") != std::string::npos || type.find("CHAR") != std::string::npos ||
         type.find("MEMO") != std::string::npos;
}

}  // namespace

void AskSummaryInclusion(Session& session, JobQuestions& questions) {
  SummaryInclusion inclusion;
  for (int i = 1; i <= session.NumberOfParameters; ++i) {
    const Parameter& parameter = session.CurrentParameters[static_cast<std::size_t>(i)];
    if (parameter.name != kBlankName) inclusion.parameters.push_back({i, parameter.name, parameter.IncludeInSummary});
  }
  inclusion.extraFields = session.SummaryExtraFields;
  questions.IncludeInSummary(inclusion);
  for (const SummaryInclusion::Entry& entry : inclusion.parameters)
    session.CurrentParameters[static_cast<std::size_t>(entry.parameter)].IncludeInSummary = entry.included;
  session.SummaryExtraFields = inclusion.extraFields;
}

SummaryColumns SummaryColumnsOf(const Session& session, const Language& language) {
  return SummaryColumnNames(ChannelNames(session), session.SummaryExtraFields, language.In(text::Comments));
}

void MakeReport(Connection& connection, const Session& session, const Language& language) {
  const std::vector<std::string> own = LogColumnNames(ChannelNames(session));
  const std::vector<std::string> channels = ReadLogLayout(connection).channels;
  std::vector<bool> included;
  for (const std::string& channel : channels) {
    const auto found = std::find_if(own.begin(), own.end(), [&](const auto& name) { return SameName(name, channel); });
    const auto number = static_cast<std::size_t>(found - own.begin()) + 1;
    included.push_back(found != own.end() && session.CurrentParameters[number].IncludeInSummary);
  }
  const SummaryColumns columns = SummaryColumnNames(channels, session.SummaryExtraFields, language.In(text::Comments));
  Catalog(connection).Append(SummaryReportTable(columns, included));
}

std::vector<bool> ChannelsInSummary(Connection& connection, const std::vector<std::string>& channels,
                                    const Language& language) {
  const auto report = Catalog(connection).Find(kSummaryReport);
  std::string comments = CommentsColumn(connection);
  if (comments.empty()) comments = language.In(text::Comments);
  std::vector<bool> included;
  for (const std::string& name : SummaryColumnNames(channels, {}, comments).parameters) {
    const auto isOwn = [&](const Column& column) { return column.name == name; };
    included.push_back(report && std::any_of(report->columns.begin(), report->columns.end(), isOwn));
  }
  return included;
}

std::string CommentsColumn(Connection& connection) {
  const auto report = Catalog(connection).Find(kSummaryReport);
  return report ? CommentsColumn(*report) : std::string();
}

std::string CommentsColumn(const Table& report) {
  const auto found = std::find_if(report.columns.rbegin(), report.columns.rend(), HoldsText);
  return found == report.columns.rend() ? std::string() : found->name;
}

}  // namespace velk
