#include "settings/windows/frm_properties.h"

#include "settings/texts.h"
#include "ui_properties.h"

namespace velk {

frmProperties::frmProperties(WindowHost& host, const std::optional<CurveProperties>& curve)
    : Properties(host, curve.value_or(CurveProperties{.name = "", .units = ""}), "frmProperties"),
      hasCurve_(curve.has_value()) {
  if (hasCurve_) return;
  const Ui::Properties& controls = Controls();
  for (QLineEdit* field : {controls.txtMinimum, controls.txtMaximum, controls.txtLowerAlarm, controls.txtUpperAlarm})
    field->clear();
  for (QWidget* field : std::initializer_list<QWidget*>{
           controls.txtName, controls.txtUnits, controls.txtMinimum, controls.txtMaximum, controls.cboFormat,
           controls.cmdColor, controls.optWrapping, controls.UpDown1, controls.txtLowerAlarm, controls.txtUpperAlarm})
    field->setEnabled(false);
  controls.cmdOK->setFocus();
}

void frmProperties::cmdOK_Click() {
  if (hasCurve_) return Properties::cmdOK_Click();
  reject();
  Host().Boxes().Message({text::NoDataSaved, {}, Buttons::Ok, BoxIcon::Exclamation});
}

std::optional<CurveProperties> AskProperties(WindowHost& host, const std::optional<CurveProperties>& curve) {
  if (!curve) host.Boxes().Message({text::NoDataExist, {}, Buttons::Ok, BoxIcon::Exclamation});
  return host.Ask<frmProperties>(curve);
}

}  // namespace velk
