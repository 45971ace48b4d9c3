// Run by tests/support/private_cups, which makes the queues and removes them.

#include <QAbstractButton>
#include <QApplication>
#include <QImage>
#include <QListWidget>

#include "graphs/history_fixture.h"
#include "paper/windows/print_graph_command.h"
#include "printing/queue_fixture.h"
#include "reports/windows/summary_report_command.h"
#include "support/host.h"
#include "support/window_script.h"

namespace velk {
namespace {

using test::OutputOf;

/// A clock that moves each time it is asked, so that a long task lets events run at each step.
class MovingClock : public test::FakeClock {
 public:
  using FakeClock::FakeClock;
  std::int64_t Ticks() const override { return passed_ += 10; }

 private:
  mutable std::int64_t passed_ = 0;
};

/// The program's own windows over the printers of the system, on a job of four minutes.
class WindowsOnPaper : public test::QueueFixture {
 protected:
  WindowsOnPaper() {
    job.Record(0, 240);
    job.Comment(100, "Насос 2 включён");
  }
  ~WindowsOnPaper() override { host.CloseAll(); }

  static void Click(QDialog& window, const char* key) {
    window.findChild<QAbstractButton*>(QLatin1String(key))->click();
  }
  void ThenChoosePrinter(const QString& name) {
    script.Then("frmPrinterSelect", [name](QDialog& dialog) {
      auto& list = *dialog.findChild<QListWidget*>("List1");
      const auto found = list.findItems(name, Qt::MatchExactly);
      ASSERT_EQ(found.size(), 1) << name.toStdString();
      list.setCurrentItem(found.front());
      dialog.findChild<QAbstractButton*>("Command1")->click();
    });
  }
  void OnPage(const std::function<void(QDialog&)>& act) {
    script.Then("frmPrintGraph", [act](QDialog& window) {
      act(window);
      window.reject();
    });
    print.Print(3);
  }
  void InViewer(const std::function<void(QDialog&)>& act) {
    script.Then("frmSummaryReport", [act](QDialog& window) {
      QApplication::processEvents();  // what comes with showing it
      act(window);
      window.reject();
    });
    mnuViewSummaryReport_Click(host, {job.session, platform, job.open, choice});
  }
  /// The document that came to a queue, as text.
  std::string ArrivedText() {
    const std::string document = Arrived();
    return document.empty() ? document : OutputOf("pdftotext -layout '" + document + "' -");
  }
  bool HasArrived() const { return !std::filesystem::is_empty(folder_); }
  /// Dots of a document's first page in which red stands out, as it does in the job's curve.
  int RedDots(const std::string& document) {
    const std::string picture = job.folder.File("page");
    OutputOf("pdftoppm -r 60 -singlefile '" + document + "' '" + picture + "'");
    const QImage page(QString::fromStdString(picture + ".ppm"));
    int count = 0;
    for (int y = 0; y < page.height(); ++y)
      for (int x = 0; x < page.width(); ++x)
        count += qRed(page.pixel(x, y)) > 180 && qGreen(page.pixel(x, y)) < 100 && qBlue(page.pixel(x, y)) < 100;
    return count;
  }

  test::RecordedJob job;
  MovingClock moving{job.gate};
  const Platform platform{moving, job.gate, job.dialogs, job.settings, test::English()};
  test::WindowScript script;
  WindowHost host{job.dialogs, test::EnglishWindows()};
  PrinterChoice choice{printers_};
  PrintGraph print{host, job.session, platform, choice, [] {}};
};

TEST_F(WindowsOnPaper, BringThePageOfAGraphToAQueue) {
  OnPage([&](QDialog& window) {
    Click(window, "Comments");
    ThenChoosePrinter("Raw");
    Click(window, "Print");
  });
  const std::string words = ArrivedText();
  for (const char* word : {"Pressure 1 (psi)", "Time", "09:30:00", "14-Mar-26", "Насос 2 включён", "run.mdb"})
    EXPECT_NE(words.find(word), std::string::npos) << word << " in " << words;
  EXPECT_NE(OutputOf("pdfinfo '" + Arrived() + "'").find("Pages:           1\n"), std::string::npos);
  EXPECT_GT(RedDots(Arrived()), 500) << "the curve goes twice across the page";
}

TEST_F(WindowsOnPaper, SayOnceWhatTheMarginsOfAPrinterHide) {
  job.session.TextInserted = true;
  job.session.PrintGraphText1X = 1;
  job.session.PrintGraphText1Y = 1;
  OnPage([&](QDialog& window) {
    ThenChoosePrinter("One");
    job.dialogs.Expect("it will be cut off there", Answer::Ok);
    Click(window, "Print");
  });
  EXPECT_NE(ArrivedText().find("Client"), std::string::npos);
}

TEST_F(WindowsOnPaper, BringBothTablesToAQueue) {
  InViewer([&](QDialog& window) {
    job.dialogs.ExpectInput("Skip every ... lines", "9");
    ThenChoosePrinter("Raw");
    Click(window, "cmdPrintLog");
  });
  std::string words = ArrivedText();
  for (const char* word : {"Data Log On", "Page 1", "Pressure", "09:30:00", "09:33:50"})
    EXPECT_NE(words.find(word), std::string::npos) << word << " in " << words;
  EXPECT_EQ(words.find("09:30:01"), std::string::npos) << "nine of ten lines are skipped";
  for (const auto& file : std::filesystem::directory_iterator(folder_)) std::filesystem::remove(file);

  InViewer([&](QDialog& window) {
    ThenChoosePrinter("Raw");
    Click(window, "cmdPrintSummary");
  });
  words = ArrivedText();
  for (const char* word : {"Summary Data On", "09:31:40", "Насос 2 включён"})
    EXPECT_NE(words.find(word), std::string::npos) << word << " in " << words;
}

TEST_F(WindowsOnPaper, PrintToAFileWithoutAnyQueue) {
  const std::string pdf = job.folder.File("page.pdf");
  OnPage([&](QDialog& window) {
    ThenChoosePrinter(kPrintToFile);
    job.dialogs.ExpectSaveFile(pdf);
    Click(window, "Print");
  });
  EXPECT_NE(OutputOf("pdftotext '" + pdf + "' -").find("Pressure 1 (psi)"), std::string::npos);
  EXPECT_GT(RedDots(pdf), 500);
  EXPECT_FALSE(HasArrived());
}

TEST_F(WindowsOnPaper, TellOfAPrinterThatIsRemovedInTheMiddle) {
  const std::string make = "lpadmin -p Gone -E -v 'tofile:" + folder_.string() + "' -m raw 2>/dev/null";
  // While rows are read: the document has begun.
  moving.onYield = [] { EXPECT_EQ(std::system("lpadmin -x Gone 2>/dev/null; true"), 0); };
  ASSERT_EQ(std::system(make.c_str()), 0);
  OnPage([&](QDialog& window) {
    ThenChoosePrinter("Gone");
    job.dialogs.Expect("[Gone]", Answer::Cancel);
    Click(window, "Print");
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(window.findChild<QAbstractButton*>("Print")->isEnabled());
  });
  ASSERT_EQ(std::system(make.c_str()), 0);
  InViewer([&](QDialog& window) {
    job.dialogs.ExpectInput("Skip every ... lines", "0");
    ThenChoosePrinter("Gone");
    job.dialogs.Expect("[Gone]", Answer::Cancel);
    Click(window, "cmdPrintLog");
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(window.findChild<QAbstractButton*>("cmdPrintLog")->isEnabled());
  });
  EXPECT_FALSE(HasArrived());
}

}  // namespace
}  // namespace velk
