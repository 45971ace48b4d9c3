#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTableView>
#include <QTest>

#include "reports/viewed_log.h"
#include "reports/windows/summary_report_command.h"
#include "support/fake_printers.h"
#include "support/host.h"
#include "support/window_script.h"

namespace velk::test {

/// A clock that a millisecond passes on each time it is asked.
class PassingClock : public FakeClock {
 public:
  using FakeClock::FakeClock;
  std::int64_t Ticks() const override { return ++passed_; }

 private:
  mutable std::int64_t passed_ = 0;
};

class SummaryReportEditing : public ViewedLog {
 protected:
  ~SummaryReportEditing() override { host.CloseAll(); }

  /// Opens the viewer, and acts on it.
  void View(const std::function<void(QDialog&)>& act) {
    script.Then("frmSummaryReport", [this, act](QDialog& window) {
      window_ = &window;
      QApplication::processEvents();  // what comes with showing it
      act(window);
      window_ = nullptr;
      window.reject();
    });
    mnuViewSummaryReport_Click(host, access);
  }
  template <class Control>
  Control& Find(const char* name) {
    return *window_->findChild<Control*>(QLatin1String(name));
  }
  void Press(const char* key) {
    ASSERT_TRUE(Find<QAbstractButton>(key).isEnabled()) << key;
    Find<QAbstractButton>(key).click();
  }
  bool IsOn(const char* key) { return Find<QAbstractButton>(key).isEnabled(); }
  void Enter(const char* entry, const std::string& text) {
    Find<QLineEdit>(entry).setText(QString::fromStdString(text));
  }
  std::string Entered(const char* entry) { return Find<QLineEdit>(entry).text().toStdString(); }
  std::string Text(const char* label) { return Find<QLabel>(label).text().toStdString(); }
  QTableView& Grid(const char* name) { return Find<QTableView>(name); }
  int Row(const char* grid) { return Grid(grid).currentIndex().row(); }
  void GoTo(const char* grid, int row) { Grid(grid).setCurrentIndex(Grid(grid).model()->index(row, 0)); }
  /// A column of a grid, as it is shown.
  Lines Shown(const char* grid, int column) {
    Lines cells;
    const auto& model = *Grid(grid).model();
    for (int row = 0; row < model.rowCount(); ++row)
      cells.push_back(model.index(row, column).data().toString().toStdString());
    return cells;
  }
  void ClickHead(const char* grid, int column) {
    QHeaderView& heads = *Grid(grid).horizontalHeader();
    QTest::mouseClick(heads.viewport(), Qt::LeftButton, {},
                      QPoint(heads.sectionViewportPosition(column) + 10, heads.height() / 2));
  }
  void ThenChoosePrinter(int row) {
    script.Then("frmPrinterSelect", [row](QDialog& dialog) {
      dialog.findChild<QListWidget*>("List1")->setCurrentRow(row);
      dialog.findChild<QAbstractButton*>("Command1")->click();
    });
  }
  Lines Printed(const std::string& part) {
    Lines found;
    for (const std::string& call : printers.documents.back()->page.calls)
      if (call.starts_with("print") && call.find(part) != std::string::npos) found.push_back(call);
    return found;
  }

  WindowScript script;
  WindowHost host{dialogs, EnglishWindows()};
  FakePrinters printers;
  PrinterChoice printer{printers};
  PassingClock passing{gate};
  const Platform viewing{passing, gate, dialogs, settings, English()};
  const ViewerAccess access{session, viewing, open, printer};

 private:
  QDialog* window_ = nullptr;
};

inline constexpr int kTimeColumn = 2, kPressureColumn = 3, kCommentColumn = 4;
inline constexpr const char* kLog = "logDataGrid";
inline constexpr const char* kReport = "summaryGrid";

}  // namespace velk::test
