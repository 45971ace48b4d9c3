#pragma once

#include <QDialog>
#include <QLineEdit>
#include <functional>
#include <memory>
#include <optional>

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
  /// `calibrate` finds gain and offset on the board of a unit, lets events run and shows its own boxes; empty for a
  /// parameter that is calibrated nowhere.
  Properties(WindowHost& host, CurveProperties properties, std::function<void()> calibrate = {});
  ~Properties() override;

  const CurveProperties& Answer() const { return properties_; }

  /// Waits for a calibration that is under way.
  void done(int result) override;

 protected:
  /// The same window under another name.
  Properties(WindowHost& host, CurveProperties properties, const char* name, std::function<void()> calibrate = {});
  WindowHost& Host() const { return host_; }
  const Ui::Properties& Controls() const { return *ui_; }
  /// Takes what was entered, or tells what is wrong with it.
  virtual void cmdOK_Click();

 private:
  void Fill();
  void ShowColour();
  void ShowWrapping();
  void cmdColor_Click();
  void Command3_Click();
  QLineEdit& FieldOf(std::string PropertyTexts::*field) const;
  void ShowFault(const PropertyFault& fault);

  WindowHost& host_;
  std::unique_ptr<Ui::Properties> ui_;
  CurveProperties properties_;
  const std::function<void()> calibrate_;
  bool calibrating_ = false;
  std::optional<int> closing_;  ///< the result to close with behind the calibration
};

}  // namespace velk
