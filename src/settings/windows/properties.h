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

 protected:
  /// The same window under another name.
  Properties(WindowHost& host, CurveProperties properties, const char* name);
  WindowHost& Host() const { return host_; }
  const Ui::Properties& Controls() const { return *ui_; }
  /// Takes what was entered, or tells what is wrong with it.
  virtual void cmdOK_Click();

 private:
  void Fill();
  void ShowColour();
  void ShowWrapping();
  void cmdColor_Click();
  QLineEdit& FieldOf(std::string PropertyTexts::*field) const;
  void ShowFault(const PropertyFault& fault);

  WindowHost& host_;
  std::unique_ptr<Ui::Properties> ui_;
  CurveProperties properties_;
};

}  // namespace velk
