#pragma once

#include <string>
#include <vector>

#include "base/language.h"
#include "log/field_names.h"
#include "log/job_questions.h"
#include "model/session.h"
#include "platform/database/catalog.h"
#include "platform/database/connection.h"

namespace velk {

/// Asks which channels the summary report gets and which additional fields, and notes the answer in the session.
/// Channels named "BLANK" are not asked for.
void AskSummaryInclusion(Session& session, JobQuestions& questions);

/// The columns of the report of the session's channels and additional fields.
SummaryColumns SummaryColumnsOf(const Session& session, const Language& language);

/// Makes the report of a log that has none: of its channels those of the session's that are included, and the session's
/// additional fields. Raises NoSuchTable for a file without a log.
void MakeReport(Connection& connection, const Session& session, const Language& language);

/// Of each channel of these names, whether the report of a file has a column for it. False for all without a report.
std::vector<bool> ChannelsInSummary(Connection& connection, const std::vector<std::string>& channels,
                                    const Language& language);

/// The comments column of a report: the last one that holds text. Its name is in the language of the session that made
/// the file. Empty where there is none, and without a report.
std::string CommentsColumn(Connection& connection);
std::string CommentsColumn(const Table& report);

}  // namespace velk
