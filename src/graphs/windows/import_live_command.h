#pragma once

#include "graphs/windows/frm_ext_graph_form.h"
#include "model/main_view.h"

namespace velk {

/// What following another program's database works with; all outlives it.
struct ImportLiveAccess {
  ExternalAccess chart;
  MainView& view;
  std::function<void(const LiveImport& live)> store;  ///< brings a choice to the disk, or raises why not
};

/// The menu command: chooses what is followed, and opens its chart or goes on with the one that stands. Where following
/// is switched off the chart stays and reads no more. The first panel of the status bar tells which; the job's own
/// status is what it was.
void mnuImprtLiveData_Click(WindowHost& host, const ImportLiveAccess& access);

}  // namespace velk
