#include "shell/frame.h"

#include "platform/settings/settings.h"
#include "shell/frm_about.h"
#include "shell/main_form.h"

namespace velk {

Frame::Frame(MainForm& form, Session& session, Platform& platform, WindowHost& windows)
    : form_(form),
      logo_(new CompanyLogo(session, platform, &form)),
      viewToggles_(form, session, *logo_),
      windowList_(form, session),
      toolbarMenus_(form),
      help_(windows) {
  form_.addToolBar(logo_);
  form_.Table().Bind("mnuHelpContents", [this] { help_.Open(topic::FirstStart); });
  form_.Table().Bind("mnuHelpAbout", [&] { windows.Show<frmAbout>(session, platform.settings.Directory()); });
}

void Frame::LoadCompanyLogo() {
  logo_->Load();
  viewToggles_.Apply();
}

}  // namespace velk
