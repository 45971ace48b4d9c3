#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QListWidget>
#include <QWidget>
#include <algorithm>

#include "graphs/history_fixture.h"
#include "paper/windows/print_graph_command.h"
#include "support/fake_printers.h"
#include "support/host.h"
#include "support/window_script.h"

namespace velk::test {

inline constexpr int kGraphOfJob = 3;

/// A clock that moves each time it is asked, so that a long task can be cancelled at its first step.
class SteppingClock : public FakeClock {
 public:
  using FakeClock::FakeClock;
  std::int64_t Ticks() const override { return passed_ += 10; }

 private:
  mutable std::int64_t passed_ = 0;
};

/// The window of the page of a recorded job, with printers that can be looked at.
class PageFixture : public testing::Test {
 protected:
  /// Opens the page, and acts on its window.
  void OpenPage(const std::function<void(QDialog&)>& act) {
    script.Then("frmPrintGraph", [this, act](QDialog& window) {
      window_ = &window;
      act(window);
      window.reject();
    });
    print.Print(kGraphOfJob);
    window_ = nullptr;
  }
  template <class Control>
  Control& Find(const char* name) {
    return *window_->findChild<Control*>(QLatin1String(name));
  }
  void Press(const char* key) { Find<QAbstractButton>(key).click(); }
  bool IsPressed(const char* key) { return Find<QAbstractButton>(key).isChecked(); }
  std::string Text(const char* label) { return Find<QLabel>(label).text().toStdString(); }
  QImage Sheet() { return Find<QWidget>("Picture1").grab().toImage().convertToFormat(QImage::Format_RGB32); }
  /// Dots of the sheet in which red stands out, as it does in the first curve.
  int RedDots() {
    const QImage sheet = Sheet();
    int count = 0;
    for (int y = sheet.height() / 3; y < sheet.height(); ++y)
      for (int x = 0; x < sheet.width(); ++x) {
        const QRgb dot = sheet.pixel(x, y);
        count += qRed(dot) > 200 && qGreen(dot) < 60 && qBlue(dot) < 60;
      }
    return count;
  }
  /// Chooses a printer of the list in the dialog that comes next.
  void ThenChoosePrinter(int row) {
    script.Then("frmPrinterSelect", [row](QDialog& dialog) {
      dialog.findChild<QListWidget*>("List1")->setCurrentRow(row);
      dialog.findChild<QAbstractButton*>("Command1")->click();
    });
  }

  RecordedJob job;
  WindowScript script;
  WindowHost host{job.dialogs, EnglishWindows()};
  FakePrinters printers;
  int kept = 0;
  PrinterChoice choice{printers};
  SteppingClock stepping{job.gate};
  const Platform platform{stepping, job.gate, job.dialogs, job.settings, English()};
  PrintGraph print{host, job.session, platform, choice, [this] { ++kept; }};

 private:
  QDialog* window_ = nullptr;
};

class PrintGraphWindow : public PageFixture {
 protected:
  PrintGraphWindow() { job.session.CurrentParameters[1].color = 0x0000FF; }
  /// A green logo of 60 by 40 pixels, on the page.
  void WithLogo() {
    QImage logo(60, 40, QImage::Format_RGB32);
    logo.fill(Qt::green);
    ASSERT_TRUE(logo.save(QString::fromStdString(File("logo.png"))));
    job.session.CompanyLogoFile = File("logo.png");
    job.session.LogoInserted = true;
  }
  std::string File(const char* name) { return job.folder.File(name); }
  bool Drawn(const std::string& call) const {
    const auto& calls = printers.documents.back()->page.calls;
    return std::find(calls.begin(), calls.end(), call) != calls.end();
  }
  int LinesOf(const std::string& colour) const {
    int count = 0;
    for (const std::string& call : printers.documents.back()->page.calls)
      count += call.starts_with("line") && call.find(colour) != std::string::npos;
    return count;
  }
};

}  // namespace velk::test
