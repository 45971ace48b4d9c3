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
}

void ViewToggles::mnuViewCompany_Click(bool visible) {
  session_.CompanyLogoVisible = visible;
  companyLogo_.setVisible(visible);
}

void ViewToggles::ApplyCompanyLogoVisible() {
  form_.MenuItem("mnuViewCompany")->setChecked(session_.CompanyLogoVisible);
  companyLogo_.setVisible(session_.CompanyLogoVisible);
}

}  // namespace velk
