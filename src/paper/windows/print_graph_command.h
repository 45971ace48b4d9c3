#pragma once

#include <functional>
#include <memory>

#include "exchange/jet_reader.h"
#include "exchange/live_import.h"
#include "i18n/windows/window_host.h"
#include "imaging/printer_choice.h"
#include "model/session.h"
#include "paper/page_records.h"
#include "platform/platform.h"

namespace velk {

/// The key "Print" of graph windows: the page of that graph, over the log that is in use.
class PrintGraph {
 public:
  /// All outlive this. `keepSettings` brings what is placed or entered to the disk.
  PrintGraph(WindowHost& host, Session& session, const Platform& platform, PrinterChoice& printer,
             std::function<void()> keepSettings);

  /// Opens the page of a graph; tells where the log has none to show.
  void Print(int graph);
  /// Opens the page of a table that another program fills.
  void PrintExternal(const LiveImport& live, const JetTools& tools);

 private:
  void Show(const std::function<std::unique_ptr<PageRecords>()>& records);

  WindowHost& host_;
  Session& session_;
  Platform platform_;
  PrinterChoice& printer_;
  const std::function<void()> keepSettings_;
  bool autoScaleTime_ = true;
};

}  // namespace velk
