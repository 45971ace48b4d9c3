#pragma once

#include "i18n/windows/window_host.h"
#include "shell/company_logo.h"
#include "shell/help.h"
#include "shell/toolbar_menus.h"
#include "shell/view_toggles.h"
#include "shell/window_list.h"

namespace velk {

class MainForm;

/// What the main window offers in every status, apart from any job: logo, view toggles, window list, help and about,
/// and the menus behind toolbar keys.
class Frame {
 public:
  Frame(MainForm& form, Session& session, Platform& platform, WindowHost& windows);

  /// Shows the picture and the visibility that the settings name: at start-up, and when a template was loaded.
  void LoadCompanyLogo();
  ViewToggles& Toggles() { return viewToggles_; }

  WindowList& Windows() { return windowList_; }

 private:
  MainForm& form_;
  CompanyLogo* logo_;
  ViewToggles viewToggles_;
  WindowList windowList_;
  ToolbarMenus toolbarMenus_;
  Help help_;
};

}  // namespace velk
