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
  QObject::connect(form_.MenuItem("mnuViewToolBar"), &QAction::toggled, &form_.Toolbar(), &QWidget::setVisible);
  QObject::connect(form_.MenuItem("mnuViewStatusBar"), &QAction::toggled, form_.statusBar(), &QWidget::setVisible);
  QObject::connect(form_.MenuItem("mnuViewCompany"), &QAction::toggled, &form_,
                   [this](bool visible) { mnuViewCompany_Click(visible); });
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
