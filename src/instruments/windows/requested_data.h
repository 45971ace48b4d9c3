#pragma once

#include <QCheckBox>
#include <QDialog>
#include <QLineEdit>
#include <memory>
#include <vector>

#include "i18n/windows/window_host.h"
#include "instruments/setup/parameter_commands.h"

namespace Ui {
class RequestedData;
}

namespace velk {

/// Edits the commands of an instrument that is asked: for the parameter i `txtCommand_<i>` and `txtReset_<i>`, each
/// with its boxes for CR and LF (`chkCommandCR_<i>`, `chkCommandLF_<i>`, `chkResetCR_<i>`, `chkResetLF_<i>`).
class RequestedData : public QDialog {
  Q_OBJECT

 public:
  RequestedData(WindowHost& host, const std::vector<ParameterCommands>& commands);
  ~RequestedData() override;

  /// The commands as the boxes show them; what was not touched is as it came.
  std::vector<ParameterCommands> Answer() const;

 private:
  /// The boxes of one command.
  struct Row {
    QLineEdit* text;
    QCheckBox* cr;
    QCheckBox* lf;
  };
  void AddParameter(int number, const ParameterCommands& commands);
  Row AddCommand(const QString& what, int number, int column, const std::string& stored);
  QWidget* InTabOrder(QWidget* widget);
  void NameBoxes();
  void FitToScreen();
  static std::string CommandOf(const Row& row, const std::string& stored);

  std::unique_ptr<Ui::RequestedData> ui_;
  const std::vector<ParameterCommands> stored_;
  std::vector<Row> commands_;
  std::vector<Row> resets_;
  QWidget* last_ = nullptr;  ///< the last in the order of Tab so far
};

}  // namespace velk
