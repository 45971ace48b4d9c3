#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

#include "base/operator_text.h"
#include "exchange/import_data.h"
#include "graphs/external_plot.h"

namespace velk {

/// Looks for new rows of a followed table, and brings them onto the page of its plot: a poll in pieces of a few
/// milliseconds, for as long as it goes on.
class ExternalFollower {
 public:
  /// The plot outlives it.
  ExternalFollower(ExternalPlot& plot, JetTools tools) : plot_(plot), tools_(std::move(tools)) {}

  /// Begins a poll from the last row on; one that goes on is left alone. `live` has the fields of the plot.
  void Begin(const LiveImport& live);
  bool IsReading() const { return read_ != nullptr || !waiting_.empty(); }
  /// Reads on. What was read is drawn in order of time once the table has ended, some rows at a time. Gives whether
  /// rows were drawn.
  bool ReadPiece();
  void Leave();

  /// Why the last poll could not be carried out; empty where it could.
  const OperatorText& Fault() const { return fault_; }

 private:
  void BeginAt(const ForeignStart& start);
  bool Plot();

  ExternalPlot& plot_;
  const JetTools tools_;
  LiveImport live_;
  ImportData importReader_;
  std::unique_ptr<ForeignRead> read_;
  std::vector<ForeignRow> waiting_;
  std::size_t plotted_ = 0;      ///< of those
  int drawn_ = 0;                ///< by this poll
  std::optional<double> later_;  ///< the next day that has rows
  OperatorText fault_;
};

}  // namespace velk
