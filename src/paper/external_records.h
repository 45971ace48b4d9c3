#pragma once

#include <vector>

#include "exchange/import_data.h"
#include "graphs/external_curves.h"
#include "paper/page_records.h"
#include "platform/platform.h"

namespace velk {

/// Records of a table that another program fills, in order of time. They are read as a whole and kept as numbers: such
/// a table has no order of its own.
class ExternalRecords : public PageRecords {
 public:
  ExternalRecords(const Platform& platform, const LiveImport& live, JetTools tools);

  const CurveSource& Curves() const override { return curves_; }
  const std::string& File() const override { return live_.DBaseName; }
  std::optional<RecordSpan> FirstAndLast() override;
  void Draw(PageCurves& to, const PageTimes& times, LongTask& task) override;

 private:
  Platform platform_;
  const LiveImport live_;
  const JetTools tools_;
  ExternalCurves curves_;
  std::vector<ForeignRow> rows_;
};

}  // namespace velk
