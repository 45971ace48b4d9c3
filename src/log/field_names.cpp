#include "log/field_names.h"

#include <algorithm>

#include "base/text.h"
#include "model/parameter.h"
#include "platform/database/catalog.h"

namespace velk {

namespace {

bool IsTaken(const std::string& name, const std::vector<std::string>& taken) {
  return std::any_of(taken.begin(), taken.end(), [&](const std::string& other) { return SameName(name, other); });
}

/// A name that is not among `taken`, and takes it.
std::string TakeName(std::string name, int number, std::vector<std::string>& taken) {
  if (IsTaken(name, taken)) (name += '_') += std::to_string(number);
  while (IsTaken(name, taken)) name += "_";
  taken.push_back(name);
  return name;
}

std::string ColumnBase(const std::string& name, int number) {
  std::string cleaned = CleanFieldName(name);
  return cleaned.empty() || cleaned == kBlankName ? std::string(kBlankName).append(std::to_string(number)) : cleaned;
}

}  // namespace

std::vector<std::string> LogColumnNames(const std::vector<std::string>& names) {
  std::vector<std::string> taken{"ID", "Date", "Time"};
  std::vector<std::string> columns;
  for (const std::string& name : names) {
    const int number = static_cast<int>(columns.size()) + 1;
    columns.push_back(TakeName(ColumnBase(name, number), number, taken));
  }
  return columns;
}

SummaryColumns SummaryColumnNames(const std::vector<std::string>& channels, const std::vector<std::string>& extraFields,
                                  const std::string& comments) {
  SummaryColumns columns;
  columns.comments = comments;
  std::vector<std::string> taken{"Date", "Time", columns.comments};
  int number = 0;
  for (const std::string& name : LogColumnNames(channels))
    columns.parameters.push_back(TakeName(name, ++number, taken));
  for (const std::string& field : extraFields) {
    ++number;
    columns.extraFields.push_back(TakeName(ColumnBase(field, number), number, taken));
  }
  return columns;
}

bool BeginsWithBlank(std::string_view name) {
  return UpperCase(Left(name, 5)) == kBlankName;
}

}  // namespace velk
