#pragma once

#include <string>

#include "base/dates.h"
#include "support/jet3_file.h"

namespace velk::test {

/// A log of version 3 of the Jet format: 100 rows of 28 February 1998, a second apart from 23:00:01 on in circles of a
/// minute, with names and comments in Windows-1251.
inline std::string OldJetLogBytes() {
  using File = Jet3File;
  const std::string depth = "\xC3\xEB\xF3\xE1\xE8\xED\xE0";  // Глубина
  const double day = DateSerial(1998, 2, 28);
  std::vector<File::Row> rows;
  for (std::int64_t i = 1; i <= 100; ++i)
    rows.push_back({i, day, TimeOfDay(23, 0, static_cast<int>(i % 60)), 0.1 * static_cast<double>(i),
                    i == 7 ? FieldValue() : FieldValue(1.0 / 3)});
  File file;
  file.AddTable("logData",
                {{"ID", File::LongInt},
                 {"Date", File::DateTime},
                 {"Time", File::DateTime},
                 {depth, File::Double},
                 {"B", File::Double}},
                rows);
  file.AddTable("GraphSettings",
                {{"ParameterName", File::Text},
                 {"units", File::Text},
                 {"Minimum", File::Double},
                 {"Maximum", File::Double},
                 {"NumberFormat", File::Text},
                 {"GraphNumber", File::Int},
                 {"CurveColor", File::LongInt}},
                {{depth, "\xEC", -5.0, 250.5, "#0.0", std::int64_t{2}, std::int64_t{255}},
                 {"B", "bar", 0.0, 10.0, "#0", std::int64_t{1}, std::int64_t{0}}});
  // Its second text begins beyond the places that one byte tells of.
  file.AddTable("SummaryReport",
                {{"Date", File::DateTime},
                 {"Time", File::DateTime},
                 {depth, File::Double},
                 {"Note", File::Text},
                 {"Comments", File::Memo}},
                {{day, TimeOfDay(23, 0, 5), 0.5, std::string(250, 'n'),
                  "\xCF\xE0\xEA\xE5\xF0 " + std::string(600, 'c') + " \xB9 7"}});
  return file.Bytes();
}

}  // namespace velk::test
