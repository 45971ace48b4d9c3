#pragma once

#include <QCheckBox>
#include <QDialog>
#include <functional>
#include <memory>
#include <vector>

#include "formula/include_in_graphs.h"
#include "i18n/windows/window_host.h"

namespace Ui {
class ComputedParameters;
}

namespace velk {

/// Switches computed channels on and off: a check box `Check1_<i>` for each. However it is closed, Answer() is what
/// its boxes say.
class ComputedParameters : public QDialog {
  Q_OBJECT

 public:
  /// `showParameters` is called when the list of all parameters is wanted.
  ComputedParameters(WindowHost& host, std::vector<ComputedChannel> channels, std::function<void()> showParameters);
  ~ComputedParameters() override;

  std::vector<ComputedChannel> Answer() const;

 private:
  void AddCheckBoxes();
  void FitToScreen();

  std::unique_ptr<Ui::ComputedParameters> ui_;
  std::vector<ComputedChannel> channels_;
  std::vector<QCheckBox*> check1_;  ///< in the order of the channels
};

}  // namespace velk
