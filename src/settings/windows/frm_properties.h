#pragma once

#include <optional>

#include "settings/windows/properties.h"

namespace velk {

/// The properties of a curve whose values don't come from the unit. Without a curve it shows nothing, and O.K. tells
/// that nothing is saved.
class frmProperties : public Properties {
  Q_OBJECT

 public:
  frmProperties(WindowHost& host, const std::optional<CurveProperties>& curve);

 protected:
  void cmdOK_Click() override;

 private:
  const bool hasCurve_;
};

/// Shows the window for a curve, and gives what was entered; nothing on Cancel. Where no curve is loaded it says so
/// ahead of the empty window.
std::optional<CurveProperties> AskProperties(WindowHost& host, const std::optional<CurveProperties>& curve);

}  // namespace velk
