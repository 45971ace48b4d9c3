#include "shell/frame.h"

#include <QAction>
#include <QPointer>

#include "platform/settings/settings.h"
#include "shell/frm_about.h"
#include "shell/main_form.h"

namespace velk {

Frame::Frame(MainForm& form, Session& session, Platform& platform, const Translation& translation)
    : form_(form),
      session_(session),
      platform_(platform),
      translation_(translation),
      windows_(platform.dialogs),
      logo_(new CompanyLogo(session, platform, &form)),
      viewToggles_(form, session, *logo_),
      windowList_(form),
      toolbarMenus_(form, session),
      help_(translation) {
  form_.addToolBar(logo_);
  QObject::connect(form_.MenuItem("mnuHelpContents"), &QAction::triggered, &form_,
                   [this] { help_.Open(topic::FirstStart); });
  QObject::connect(form_.Button("Help"), &QAction::triggered, form_.MenuItem("mnuHelpContents"), &QAction::trigger);
  QObject::connect(form_.MenuItem("mnuHelpAbout"), &QAction::triggered, &form_, [this] { mnuHelpAbout_Click(); });
}

void Frame::LoadCompanyLogo() {
  logo_->Load();
  viewToggles_.ApplyCompanyLogoVisible();
}

void Frame::mnuHelpAbout_Click() {
  // On the heap and watched: the main window may be destroyed while the box stands, and takes it along.
  const QPointer<frmAbout> about = new frmAbout(session_, translation_, platform_.settings.Directory(), &form_);
  windows_.Run(about.data());
  delete about;
}

}  // namespace velk
