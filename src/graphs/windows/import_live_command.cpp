#include "graphs/windows/import_live_command.h"

#include "exchange/windows/frm_imprt_live_data.h"
#include "model/texts.h"

namespace velk {

namespace {

/// A chart of other rows begins anew.
frmExtGraphForm& ChartOf(WindowHost& host, const ExternalAccess& access, const LiveImport& live) {
  auto* chart = host.Opened<frmExtGraphForm>();
  if (chart && (!chart->isVisible() || !chart->Fits(live))) {
    delete chart;
    chart = nullptr;
  }
  if (chart) chart->Follow(live);
  return host.Open<frmExtGraphForm>(access, live);
}

}  // namespace

void mnuImprtLiveData_Click(WindowHost& host, const ImportLiveAccess& access) {
  LiveImport stored;
  LoadFromRegistry(access.chart.platform.settings, access.chart.platform.language, stored);
  const auto live = host.Ask<frmImprtLiveData>(
      LiveChoiceAccess{access.chart.platform, access.chart.session.DefaultDirectory, access.chart.tools, access.store},
      stored);
  if (!live) return;
  if (live->Import)
    ChartOf(host, access.chart, *live).StartReading();
  else if (auto* chart = host.Opened<frmExtGraphForm>())
    chart->StopReading();
  access.view.SetPanel(1, live->Import ? text::StatusAcquiringData : text::StatusAcquiringPaused);
}

}  // namespace velk
