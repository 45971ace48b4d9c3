#include "reports/log_edits.h"

#include <algorithm>

#include "base/errors.h"
#include "base/text.h"
#include "log/log_schema.h"
#include "log/summary_report.h"
#include "platform/database/recordset.h"

namespace velk {

namespace {

constexpr std::size_t kCommentCharacters = 255;

bool IsAmongNames(const std::vector<std::string>& names, const std::string& name) {
  return std::any_of(names.begin(), names.end(), [&](const std::string& other) { return SameName(other, name); });
}

}  // namespace

OperatorText LogEdits::WhyNot() const {
  try {
    log_.Edit(view_.Path(), [](const auto&) {});
    return {};
  } catch (const RuntimeError& error) {
    return error.Text();
  }
}

void LogEdits::DeleteRow(int row) {
  const Place place = view_.Order().PlaceAt(row);
  const std::int64_t key = view_.Order().KeyAt(row);
  log_.Edit(view_.Path(), [&](const auto& log) { deleted_.push_back({velk::DeleteRow(*log, kLogData, key), place}); });
  view_.Remove(place, deleted_.back().row.fields);
  log_.FollowRow(view_.Path(), key, false);
}

void LogEdits::RemoveLine(std::int64_t key) {
  log_.Edit(view_.Path(), [&](const auto& log) {
    deleted_.push_back({velk::DeleteRow(*log, kSummaryReport, key), {}});
  });
}

void LogEdits::AddLine(int row, const std::string& comment) {
  if (!view_.IsInFile(row)) throw RuntimeError(ErrorNumber::NoCurrentRecord);
  log_.Edit(view_.Path(), [&](const auto& log) {
    Recordset report(log, kSummaryReport);
    const std::string comments = CommentsColumn(*log);
    report.AddNew();
    for (int i = 0; i < report.FieldCount(); ++i) {
      const std::string& name = report.FieldName(i);
      if (SameName(name, comments))
        report.SetField(i, Left(comment, kCommentCharacters));
      else if (SameName(name, "Date") || SameName(name, "Time") || IsAmongNames(view_.Channels(), name))
        report.SetField(i, view_.FieldOf(row, name));
    }
    report.Update();
  });
}

std::optional<Place> LogEdits::Undo() {
  const Deleted& last = deleted_.back();
  std::int64_t key = 0;
  log_.Edit(view_.Path(), [&](const auto& log) { key = RestoreRow(*log, last.row); });
  const std::optional<Place> place = last.place;
  if (place) {
    view_.Restore(*place, key);
    log_.FollowRow(view_.Path(), key, true);
  }
  deleted_.pop_back();
  return place;
}

}  // namespace velk
