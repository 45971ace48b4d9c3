#pragma once

#include "model/session.h"

class QWidget;

namespace velk {

class MainForm;

/// The first three items of the menu View: each toggles its check mark together with a bar of the main window. The logo
/// is the only one that is kept over a restart.
class ViewToggles {
 public:
  /// All three are the main window's and outlive this.
  ViewToggles(MainForm& form, Session& session, QWidget& companyLogo);

  /// Shows or hides the logo as `CompanyLogoVisible` says; for start-up.
  void ApplyCompanyLogoVisible();

 private:
  void mnuViewCompany_Click(bool visible);

  MainForm& form_;
  Session& session_;
  QWidget& companyLogo_;
};

}  // namespace velk
