#pragma once

#include <QToolBar>
#include <string>

#include "model/session.h"
#include "platform/platform.h"

class QToolButton;

namespace velk {

/// The company's picture at the right of the toolbar, scaled to the bar's height. A click on it chooses another one.
class CompanyLogo : public QToolBar {
  Q_OBJECT

 public:
  CompanyLogo(Session& session, Platform& platform, QWidget* parent);

  /// Shows the picture that `CompanyLogoFile` names, and our own where there is none. For start-up, and for whatever
  /// changes the setting.
  void Load();
  /// The button that carries the picture.
  QToolButton& Picture() { return *picture_; }

 private:
  void CompanyLogo_Click();
  /// False where the file can't be shown; what is shown then stays.
  bool Show(const std::string& path);
  void SetPicture(const QIcon& icon, QSize size);

  Session& session_;
  Platform& platform_;
  QToolButton* picture_;
};

}  // namespace velk
