#pragma once

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "i18n/windows/window_host.h"
#include "instruments/calibration/calibration.h"

namespace Ui {
class CalibrateForm;
}

namespace velk {

/// What the window of calibration works with.
struct CalibrationWork {
  std::vector<std::string> names;  ///< of the parameters that can be read, from 1 on
  bool canRead = true;             ///< the instrument is one that can be calibrated here
  /// Reads a parameter for a reference, handing each reading on; nothing where none came. Events run meanwhile.
  std::function<std::optional<double>(int parameter, const std::function<void(double)>& show)> read;
  std::function<void()> stop;                             ///< ends a reading
  std::function<void(int parameter, ChannelScale)> take;  ///< gain and offset were found
};

/// Finds gain and offset of a parameter by two references.
class CalibrateForm : public QDialog {
  Q_OBJECT

 public:
  CalibrateForm(WindowHost& host, CalibrationWork work);
  ~CalibrateForm() override;

  /// A reading is ended first.
  void done(int result) override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void List1_Click();
  void ForgetReading(std::size_t number);
  void DoReference(int number);
  void Read(int number, double reference);
  void Calibrate();
  void ShowSampling(bool sampling);
  void ShowHint();
  void ShowFault(int number, const MessageText& fault);

  WindowHost& host_;
  std::unique_ptr<Ui::CalibrateForm> ui_;
  const CalibrationWork work_;
  std::array<QLineEdit*, 2> references_;
  std::array<QPushButton*, 2> buttons_;
  std::array<QLabel*, 2> readings_;
  CalibrationPoints points_;
  std::array<bool, 2> done_{};
  bool isSampling_ = false;
  std::optional<int> closing_;  ///< the result to close with, once the reading has ended
};

}  // namespace velk
