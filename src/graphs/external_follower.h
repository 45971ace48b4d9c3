#pragma once

#include <memory>
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
  bool IsReading() const { return read_ != nullptr; }
  /// Reads on. What was read is drawn once the poll has ended, or has brought many rows. Gives whether rows were drawn.
  bool ReadPiece();
  void Leave();

  /// Why the last poll could not be carried out; empty where it could.
  const OperatorText& Fault() const { return fault_; }

 private:
  void BeginAt(const ForeignStart& start);
  bool Plot();
  bool End();

  ExternalPlot& plot_;
  const JetTools tools_;
  LiveImport live_;
  ImportData importReader_;
  std::unique_ptr<ForeignRead> read_;
  std::vector<ForeignRow> waiting_;
  int drawn_ = 0;  ///< by this poll
  OperatorText fault_;
};

}  // namespace velk
