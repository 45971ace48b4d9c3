#pragma once

#include "base/language.h"
#include "graphs/parameter_curves.h"
#include "model/session.h"
#include "paper/page_records.h"

namespace velk {

/// Records of a log, as the curves of a graph of the session.
class LogRecords : public PageRecords {
 public:
  /// All outlive this. `graph` is the number of the graph.
  LogRecords(const Session& session, const Language& language, int graph, std::string log)
      : session_(session), language_(language), curves_(session, graph), log_(std::move(log)) {}

  const CurveSource& Curves() const override { return curves_; }
  const std::string& File() const override { return log_; }
  std::optional<RecordSpan> FirstAndLast() override;
  void Draw(PageCurves& to, const PageTimes& times, LongTask& task) override;

 private:
  const Session& session_;
  const Language& language_;
  ParameterCurves curves_;
  const std::string log_;
};

}  // namespace velk
