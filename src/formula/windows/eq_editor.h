#pragma once

#include <QDialog>
#include <QListWidgetItem>
#include <memory>

#include "formula/formula_checks.h"
#include "formula/formula_input.h"
#include "i18n/windows/window_host.h"
#include "model/graph_window.h"
#include "model/session.h"

namespace Ui {
class EqEditor;
}

namespace velk {

/// The Formula Calculator: a formula is put together from a keypad and the list of parameters, and added as a computed
/// channel. The list shows its entries' formulas on a right click or the menu key; Enter in it does what a double
/// click does, Enter in the text box what "Add Parameter" does.
class EqEditor : public QDialog {
  Q_OBJECT

 public:
  EqEditor(WindowHost& host, Session& session, const FormulaReport& report, GraphWindows& graphs);
  ~EqEditor() override;

 private:
  /// An empty formula is none.
  void AllowAdding();
  void ConnectKeypad();
  void ConnectList();
  void FillList();

  FormulaInput Input() const;
  void Show(const FormulaInput& input);
  void Press(void (*insert)(FormulaInput&, std::string_view), const QString& caption);
  void Function_Click(const QString& caption);
  void List1_DblClick(const QListWidgetItem* item);
  void List1_RightClick(const QListWidgetItem* item);
  void cmdClear_Click();
  void Equals_Click();

  std::unique_ptr<Ui::EqEditor> ui_;
  Session& session_;
  FormulaReport report_;
  GraphWindows& graphs_;
};

}  // namespace velk
