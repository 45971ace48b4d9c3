#pragma once

#include <functional>
#include <optional>

#include "i18n/windows/window_host.h"
#include "imaging/printer_choice.h"
#include "model/session.h"
#include "platform/platform.h"

namespace velk {

/// The key "Print" of graph windows: the page of that graph, over the log that is in use.
class PrintGraph {
 public:
  /// All outlive this. `keepSettings` brings what is placed or entered to the disk.
  PrintGraph(WindowHost& host, Session& session, const Platform& platform, const SystemPrinters& printers,
             std::function<void()> keepSettings);

  /// Opens the page of a graph; tells where the log has none to show.
  void Print(int graph);

 private:
  WindowHost& host_;
  Session& session_;
  Platform platform_;
  const SystemPrinters& printers_;
  const std::function<void()> keepSettings_;
  /// Made at the first page: a print service that doesn't answer would hold up the start.
  std::optional<PrinterChoice> choice_;
  bool autoScaleTime_ = true;
};

}  // namespace velk
