#pragma once

#include <optional>
#include <vector>

#include "log/row_filter.h"
#include "log/row_source.h"

namespace velk {

class LogReader;

/// The rows of a log that pass a filter, read a page at a time.
class LogRows : public RowSource {
 public:
  /// Where no span of keys is given, the rows are found by the filter at each First and Seek.
  LogRows(LogReader& reader, const RowFilter& filter, std::optional<KeySpan> span = {})
      : reader_(reader), filter_(filter), span_(span) {}

  bool First() override;
  bool Seek(double time) override;
  bool Next() override;
  /// Raises NoCurrentRecord where there is none.
  const LogRow& Row() const override;

 private:
  bool ReadPage();

  LogReader& reader_;
  RowFilter filter_;
  std::optional<KeySpan> span_;
  std::optional<KeySpan> rest_;  ///< keys that were not read yet
  std::vector<LogRow> page_;
  std::size_t present_ = 0;
};

}  // namespace velk
