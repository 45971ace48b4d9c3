#include "shell/view_toggles.h"

#include <QAction>
#include <QStatusBar>
#include <QToolBar>

#include "shell/main_form.h"

namespace velk {

ViewToggles::ViewToggles(MainForm& form, Session& session, QWidget& companyLogo)
    : form_(form), session_(session), companyLogo_(companyLogo) {
  // The toolkit's own menu would hide bars behind the back of the check marks.
  form_.setContextMenuPolicy(Qt::NoContextMenu);
  const auto bind = [this](const char* item, auto show) {
    form_.Table().Bind(item, [show, mark = form_.MenuItem(item)] { show(mark->isChecked()); });
  };
  bind("mnuViewToolBar", [this](bool visible) { form_.Toolbar().setVisible(visible); });
  bind("mnuViewStatusBar", [this](bool visible) { form_.statusBar()->setVisible(visible); });
  bind("mnuViewCompany", [this](bool visible) { mnuViewCompany_Click(visible); });
  const auto bindLooks = [&](const char* item, bool Session::*look) {
    bind(item, [this, look](bool on) {
      session_.*look = on;
      if (onChartLooks) onChartLooks();
      if (onStored) onStored();
    });
  };
  bindLooks("mnuViewFitGraphs", &Session::FitGraphsToWindows);
  bindLooks("mnuViewNightColours", &Session::NightColours);
}

void ViewToggles::mnuViewCompany_Click(bool visible) {
  session_.CompanyLogoVisible = visible;
  companyLogo_.setVisible(visible);
  if (onStored) onStored();
}

void ViewToggles::Apply() {
  form_.MenuItem("mnuViewFitGraphs")->setChecked(session_.FitGraphsToWindows);
  form_.MenuItem("mnuViewNightColours")->setChecked(session_.NightColours);
  form_.MenuItem("mnuViewCompany")->setChecked(session_.CompanyLogoVisible);
  companyLogo_.setVisible(session_.CompanyLogoVisible);
}

}  // namespace velk
