#pragma once

#include <cmath>

#include "base/dates.h"
#include "log/log_fixture.h"
#include "log/open_log.h"
#include "reports/log_edits.h"
#include "reports/log_view.h"

namespace velk::test {

using Lines = std::vector<std::string>;

inline double Morning() {
  return JoinDateTime(DateSerial(2026, 3, 14), TimeOfDay(9, 30, 0));
}

inline double Seconds(double count) {
  return count / 86400;
}

/// A log of two channels, its rows a second apart.
class ViewedLog : public LogFixture {
 protected:
  ViewedLog() {
    NameChannels({"Pressure", "Rate"});
    session.CurrentParameters[1].IncludeInSummary = true;
    session.SummaryExtraFields = {"Water"};
    session.LogFileInUse = path;
    session.Data.hasValues = true;
  }

  /// A log with these pressures; the rate is the number of the row, from 1.
  void Record(const std::vector<double>& pressures, double from = Morning()) {
    if (!log.IsConnected()) StartLog(path);
    Transaction all(*log.Writing());
    for (std::size_t i = 0; i < pressures.size(); ++i)
      log.AppendLogRow({from + Seconds(static_cast<double>(i)), {pressures[i], static_cast<double>(i + 1)}});
    all.Commit();
  }
  void Comment(double time, const std::string& comment) {
    clock.SetNow(time);
    open.AddSummaryRow(comment);
  }
  /// The rows as they are shown: their keys.
  static std::vector<std::int64_t> Shown(const LogView& view) {
    std::vector<std::int64_t> keys;
    for (int row = 0; row < view.Count(); ++row) keys.push_back(view.Order().KeyAt(row));
    return keys;
  }
  int ColumnOf(const LogView& view, const std::string& name) const {
    const auto& columns = view.Columns();
    return static_cast<int>(std::find(columns.begin(), columns.end(), name) - columns.begin());
  }

  OpenLog open{session, platform, log};
};

}  // namespace velk::test
