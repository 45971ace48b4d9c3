#pragma once

#include <functional>

#include "model/session.h"

class QWidget;

namespace velk {

class MainForm;

/// The items of the menu View that have a check mark: three show or hide a bar of the main window, two tell how charts
/// look. Of the bars only the logo is kept over a restart.
class ViewToggles {
 public:
  /// All three are the main window's and outlive this.
  ViewToggles(MainForm& form, Session& session, QWidget& companyLogo);

  /// Shows or hides the logo as `CompanyLogoVisible` says, and sets the marks of what the settings keep; for start-up.
  void Apply();
  /// FitGraphsToWindows or NightColours was switched.
  std::function<void()> onChartLooks;
  /// What the settings keep was switched; behind onChartLooks.
  std::function<void()> onStored;

 private:
  void mnuViewCompany_Click(bool visible);

  MainForm& form_;
  Session& session_;
  QWidget& companyLogo_;
};

}  // namespace velk
