#pragma once

#include <QDialog>
#include <QLineEdit>
#include <memory>

#include "i18n/windows/window_host.h"
#include "settings/curve_properties.h"

namespace Ui {
class Properties;
}

namespace velk {

/// The properties of one parameter. It stays open while they can't be taken, and tells why.
class Properties : public QDialog {
  Q_OBJECT

 public:
  Properties(WindowHost& host, CurveProperties properties);
  ~Properties() override;

  const CurveProperties& Answer() const { return properties_; }

 private:
  void Fill();
  void ShowColour();
  void ShowWrapping();
  void cmdColor_Click();
  void cmdOK_Click();
  QLineEdit& FieldOf(std::string PropertyTexts::*field) const;
  void ShowFault(const PropertyFault& fault);

  WindowHost& host_;
  std::unique_ptr<Ui::Properties> ui_;
  CurveProperties properties_;
};

}  // namespace velk
