#include <gtest/gtest.h>

#include <QClipboard>
#include <QDoubleSpinBox>
#include <QTest>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "exchange/jet_log.h"
#include "paper/page_fixture.h"
#include "support/file_size_limit.h"

namespace velk {
namespace {

using test::PrintGraphWindow;

constexpr double kDay = 86400;

TEST_F(PrintGraphWindow, ShowsTheSheetAtHalfItsSizeWithoutCurvesAtFirst) {
  job.Record(0, 240);
  OpenPage([&](QDialog& window) {
    EXPECT_EQ(window.windowTitle(), "Graph Print Preview");
    EXPECT_EQ(Find<QComboBox>("Zoom").currentText(), "50 %");
    EXPECT_FALSE(IsPressed("DrawCurves"));
    EXPECT_FALSE(IsPressed("Comments"));
    EXPECT_TRUE(IsPressed("AutoScale"));
    EXPECT_FALSE(Find<QAbstractButton>("Logo").isEnabled()) << "no company logo is chosen";
    EXPECT_NEAR(Sheet().height(), Sheet().width() * 297.0 / 210, 2);
    EXPECT_EQ(RedDots(), 0);
  });
}

TEST_F(PrintGraphWindow, TellsWhereTheLogHasNothingToShow) {
  job.dialogs.Expect("no page to show", Answer::Ok);
  print.Print(test::kGraphOfJob);
  job.Append(0, {1});
  job.dialogs.Expect("no page to show", Answer::Ok);
  print.Print(test::kGraphOfJob);
}

TEST_F(PrintGraphWindow, DrawsTheCurvesAndTakesThemAway) {
  job.Record(0, 240);
  OpenPage([&](QDialog&) {
    Press("DrawCurves");
    EXPECT_GT(RedDots(), 300);
    Press("DrawCurves");
    EXPECT_EQ(RedDots(), 0);
  });
}

TEST_F(PrintGraphWindow, GrowsWithTheZoom) {
  job.Record(0, 240);
  OpenPage([&](QDialog&) {
    const int half = Sheet().height();
    Find<QComboBox>("Zoom").setCurrentIndex(0);
    EXPECT_NEAR(Sheet().height(), 2 * half, 2);
    Find<QComboBox>("Zoom").setCurrentIndex(1);
    EXPECT_NEAR(Sheet().height(), 1.5 * half, 2);
  });
}

TEST_F(PrintGraphWindow, PrintsFrameAndCurvesOnTheChosenPrinter) {
  job.Record(0, 240);
  OpenPage([&](QDialog&) {
    ThenChoosePrinter(0);
    Press("Print");
    EXPECT_EQ(Text("lblPrinter"), "Printer: Office");
  });
  ASSERT_EQ(printers.documents.size(), 1u);
  EXPECT_EQ(printers.documents[0]->printer, "Office");
  EXPECT_EQ(printers.documents[0]->title, "run.mdb");
  EXPECT_TRUE(printers.documents[0]->ended);
  EXPECT_TRUE(Drawn("line 190 257 20 257 000000 w0.944882"));
  EXPECT_GT(LinesOf("0000FF"), 100) << "without Draw curves on the preview too";
}

TEST_F(PrintGraphWindow, PrintsNothingWhereNoPrinterIsAccepted) {
  job.Record(0, 240);
  OpenPage([&](QDialog&) {
    script.Then("frmPrinterSelect", [](QDialog& dialog) { dialog.reject(); });
    Press("Print");
  });
  EXPECT_TRUE(printers.documents.empty());
}

TEST_F(PrintGraphWindow, PrintsToAFile) {
  job.Record(0, 240);
  OpenPage([&](QDialog&) {
    ThenChoosePrinter(2);
    job.dialogs.ExpectSaveFile(File("page"));
    Press("Print");
    EXPECT_EQ(Text("lblPrinter"), "Printer: Print to File (PDF)");
  });
  std::ifstream file(File("page.pdf"), std::ios::binary);
  std::string beginning(5, ' ');
  file.read(beginning.data(), 5);
  EXPECT_EQ(beginning, "%PDF-");
}

TEST_F(PrintGraphWindow, AsksBeforeItReplacesAFile) {
  job.Record(0, 240);
  std::ofstream(File("page.jpg")) << "before";
  OpenPage([&](QDialog&) {
    job.dialogs.ExpectSaveFile(File("page.jpg"));
    job.dialogs.Expect("is there already", Answer::No);
    Press("SaveToFile");
  });
  EXPECT_EQ(std::filesystem::file_size(File("page.jpg")), 6u);
}

TEST_F(PrintGraphWindow, TellsOfAPrinterThatFailsAndStays) {
  job.Record(0, 240);
  printers.fails = true;
  OpenPage([&](QDialog& window) {
    ThenChoosePrinter(0);
    job.dialogs.Expect(" - Toolbar1_ButtonClick", Answer::Cancel);
    Press("Print");
    EXPECT_TRUE(window.isVisible());
  });
  EXPECT_FALSE(printers.documents[0]->ended);
}

TEST_F(PrintGraphWindow, TellsOfMarginsInWhichSomethingLies) {
  job.Record(0, 240);
  printers.sheet.left = 25;
  OpenPage([&](QDialog&) {
    ThenChoosePrinter(0);
    job.dialogs.Expect("leaves a margin", Answer::Ok);
    Press("Print");
    ThenChoosePrinter(0);
    Press("Print");
  });
  ASSERT_EQ(printers.documents.size(), 2u) << "told once";
  EXPECT_TRUE(printers.documents[0]->ended);
}

TEST_F(PrintGraphWindow, SavesTheWholeSheetAt150DotsAnInchWhateverTheZoom) {
  job.Record(0, 240);
  OpenPage([&](QDialog&) {
    Find<QComboBox>("Zoom").setCurrentIndex(1);
    for (const char* name : {"page.jpg", "page.bmp"}) {
      job.dialogs.ExpectSaveFile(File(name));
      Press("SaveToFile");
      EXPECT_EQ(QImage(QString::fromStdString(File(name))).size(), QSize(1240, 1754)) << name;
    }
  });
}

TEST_F(PrintGraphWindow, SaysThatTheRoundTimesLeaveRecordsOutUntilFullView) {
  job.Append(0, {1});
  job.Append(2 * kDay, {2});
  OpenPage([&](QDialog&) {
    EXPECT_TRUE(Text("lblNote").starts_with("The page ends before the log does."));
    Press("FullView");
    EXPECT_EQ(Text("lblNote"), "");
    EXPECT_FALSE(IsPressed("AutoScale"));
  });
}

TEST_F(PrintGraphWindow, TakesTimesByHandAndKeepsThePresentOnesForWhatIsNoTime) {
  job.Record(0, 240);
  job.session.CurrentParameters[1].color = 0x0000FF;
  OpenPage([&](QDialog&) {
    job.dialogs.ExpectInput("Enter start date and time", "no time");
    job.dialogs.ExpectInput("Enter end date and time",
                            FormatDate(test::JobStart() + 60 / kDay, "dd-mmm-yyyy hh:mm:ss"));
    Press("AutoScale");
    EXPECT_FALSE(IsPressed("AutoScale"));
    // The middle of the plot, 28 to 277 mm of 297 with one curve: half a minute behind the start.
    QWidget& sheet = Find<QWidget>("Picture1");
    QTest::mouseMove(&sheet, QPoint(sheet.width() / 2, static_cast<int>(sheet.height() * 152.5 / 297)));
    EXPECT_TRUE(Text("Label1").starts_with(FormatDate(test::JobStart(), "dd/mm/yy hh:mm:"))) << Text("Label1");
  });
}

TEST_F(PrintGraphWindow, RefusesAnEndThatIsNotBehindTheStart) {
  job.Record(0, 240);
  OpenPage([&](QDialog&) {
    job.dialogs.ExpectInput("Enter start date and time", "14-Mar-2030 00:00:00");
    job.dialogs.ExpectInput("Enter end date and time", "14-Mar-2029 00:00:00");
    job.dialogs.Expect("The end has to be later", Answer::Ok);
    const QImage before = Sheet();
    Press("AutoScale");
    EXPECT_EQ(Sheet(), before);
    EXPECT_TRUE(IsPressed("AutoScale")) << "nothing has changed";
  });
}

TEST_F(PrintGraphWindow, AsksForTheLinesAboveTheFrameAndRemembersThem) {
  job.Record(0, 240);
  OpenPage([&](QDialog&) {
    for (const char* line : {" Client : ", " Field  : ", " Well   : ", " Job    : "})
      job.dialogs.ExpectInput(line, std::string("My") + line);
    EXPECT_EQ(Find<QAbstractButton>("InsertText").toolTip(), "Insert Header Information");
    Press("InsertText");
    EXPECT_EQ(Find<QAbstractButton>("InsertText").toolTip(), "Remove Header Information");
    EXPECT_TRUE(job.session.TextInserted);
    EXPECT_EQ(job.settings.Get("VELK2", "PrintGraph", "Well", ""), "My Well   : ");
    Press("InsertText");
    EXPECT_FALSE(job.session.TextInserted);
  });
  EXPECT_EQ(kept, 2) << "each change goes to the disk";
}

TEST_F(PrintGraphWindow, LeavesTheHeaderOutWhereALineIsCancelled) {
  job.Record(0, 240);
  OpenPage([&](QDialog&) {
    job.dialogs.ExpectInput(" Client : ", std::nullopt);
    Press("InsertText");
    EXPECT_FALSE(IsPressed("InsertText"));
  });
}

TEST_F(PrintGraphWindow, PutsTheLogoWhereItIsDropped) {
  job.Record(0, 240);
  WithLogo();
  job.session.LogoInserted = false;
  OpenPage([&](QDialog&) {
    Press("Logo");
    EXPECT_TRUE(job.session.LogoInserted);
    QWidget& sheet = Find<QWidget>("Picture1");
    const auto at = [&](double x, double y) {
      return QPoint(static_cast<int>(x * sheet.width() / 210), static_cast<int>(y * sheet.height() / 297));
    };
    EXPECT_EQ(Sheet().pixelColor(at(30, 20)), QColor(Qt::green)) << "20, 10 to 50, 30 at first";
    QTest::mousePress(&sheet, Qt::LeftButton, {}, at(30, 20));
    QTest::mouseMove(&sheet, at(130, 50));
    QTest::mouseRelease(&sheet, Qt::LeftButton, {}, at(130, 50));
    EXPECT_NEAR(job.session.PrintGraphImageX, 120, 1);
    EXPECT_NEAR(job.session.PrintGraphImageY, 40, 1);
    EXPECT_NEAR(job.session.PrintGraphImageW, 30, 0.1);
    EXPECT_EQ(Sheet().pixelColor(at(130, 50)), QColor(Qt::green));
    EXPECT_NE(Sheet().pixelColor(at(30, 20)), QColor(Qt::green));
  });
}

TEST_F(PrintGraphWindow, TellsOfALogoThatCannotBeRead) {
  job.Record(0, 240);
  job.session.CompanyLogoFile = File("missing.png");
  OpenPage([&](QDialog&) {
    job.dialogs.Expect("The company logo can't be read: ", Answer::Ok);
    Press("Logo");
    EXPECT_FALSE(job.session.LogoInserted);
  });
}

TEST_F(PrintGraphWindow, PlacesLogoAndHeaderByNumbers) {
  job.Record(0, 240);
  WithLogo();
  job.session.TextInserted = true;
  OpenPage([&](QDialog&) {
    EXPECT_EQ(Find<QDoubleSpinBox>("LogoLeft").text(), "20.0 mm");
    EXPECT_EQ(Find<QDoubleSpinBox>("LogoTop").value(), 10);
    EXPECT_EQ(Find<QDoubleSpinBox>("LogoHeight").value(), 20);
    EXPECT_EQ(Find<QDoubleSpinBox>("LogoWidth").value(), 30) << "60 by 40 pixels";
    Find<QDoubleSpinBox>("LogoLeft").setValue(100);
    Find<QDoubleSpinBox>("LogoWidth").setValue(60);
    Find<QDoubleSpinBox>("HeaderTop").setValue(40);
    EXPECT_EQ(job.session.PrintGraphImageX, 100);
    EXPECT_EQ(job.session.PrintGraphImageY, 10);
    EXPECT_EQ(job.session.PrintGraphImageW, 60);
    EXPECT_EQ(job.session.PrintGraphImageH, 20) << "each side by itself";
    EXPECT_EQ(job.session.PrintGraphText1Y, 40);
    EXPECT_EQ(kept, 3);
    Press("Logo");
    EXPECT_FALSE(Find<QDoubleSpinBox>("LogoLeft").isEnabled());
    EXPECT_FALSE(Find<QAbstractButton>("Resize").isEnabled());
  });
}

TEST_F(PrintGraphWindow, GivesTheLogoTheSizeOfItsWindow) {
  job.Record(0, 240);
  WithLogo();
  OpenPage([&](QDialog&) {
    script.Then("frmImage", [&](QDialog& window) {
      auto& picture = *window.findChild<QLabel*>("Picture");
      const double before = picture.width();
      ASSERT_GT(before, 0);
      EXPECT_EQ(job.session.PrintGraphImageW, 0) << "as it is until the window is sized";
      window.resize(window.width() + static_cast<int>(before), window.height());
      EXPECT_NEAR(job.session.PrintGraphImageW, 60, 1) << "twice as wide";
      window.reject();
    });
    // A right click on it, 35 by 20 mm from the corner of the sheet.
    QWidget& sheet = Find<QWidget>("Picture1");
    QTest::mouseClick(&sheet, Qt::RightButton, {}, QPoint(35 * sheet.width() / 210, 20 * sheet.height() / 297));
    EXPECT_NEAR(Find<QDoubleSpinBox>("LogoWidth").value(), 60, 1);
  });
}

TEST_F(PrintGraphWindow, PrintsInTheFontThatIsChosen) {
  job.Record(0, 240);
  job.session.CurrentFont = "";
  OpenPage([&](QDialog&) {
    job.dialogs.ExpectFont(FontChoice{.family = "DejaVu Serif"});
    Press("ChangeFont");
    EXPECT_EQ(job.session.CurrentFont, "DejaVu Serif");
    EXPECT_EQ(kept, 1);
    job.dialogs.ExpectFont(std::nullopt);
    Press("ChangeFont");
    EXPECT_EQ(job.session.CurrentFont, "DejaVu Serif");
  });
}

TEST_F(PrintGraphWindow, PutsTheSheetOnTheClipboard) {
  job.Record(0, 240);
  OpenPage([&](QDialog&) {
    Press("Copy");
    EXPECT_EQ(QApplication::clipboard()->image().size(), QSize(1240, 1754));
  });
}

TEST_F(PrintGraphWindow, DrawsAPaleCurveDarkerThanItIsOnTheScreen) {
  job.Record(0, 240);
  job.session.CurrentParameters[1].color = 0x00FFFF;  // yellow
  OpenPage([&](QDialog&) {
    ThenChoosePrinter(0);
    Press("Print");
  });
  EXPECT_EQ(LinesOf(" 00FFFF"), 0);
}

TEST_F(PrintGraphWindow, NamesTheStepThatFailed) {
  job.Record(0, 240);
  OpenPage([&](QDialog&) {
    job.log.Writing()->Execute("DROP TABLE logData");
    job.dialogs.Expect(" - DrawCurves", Answer::Cancel);
    Press("DrawCurves");
    EXPECT_FALSE(IsPressed("DrawCurves"));
    job.dialogs.Expect(" - FilesAndTime", Answer::Cancel);
    Press("FullView");
    job.log.Writing()->Execute("DROP TABLE SummaryReport");
    job.dialogs.Expect(" - InsertReportComments", Answer::Cancel);
    Press("Comments");
    EXPECT_FALSE(IsPressed("Comments"));
  });
}

TEST_F(PrintGraphWindow, TellsOfADiskThatIsFullForItsPdf) {
  job.Record(0, 240);
  const std::string pdf = File("page.pdf");
  OpenPage([&](QDialog& window) {
    ThenChoosePrinter(2);
    job.dialogs.ExpectSaveFile(pdf);
    job.dialogs.Expect(" - Toolbar1_ButtonClick", Answer::Cancel);
    const test::FileSizeLimit full(1000);
    Press("Print");
    EXPECT_TRUE(window.isVisible());
  });
  EXPECT_FALSE(std::filesystem::exists(pdf));
}

TEST_F(PrintGraphWindow, ShowsComments) {
  job.Record(0, 240);
  job.Comment(100, "Pump 2 started");
  OpenPage([&](QDialog&) {
    const QImage before = Sheet();
    Press("Comments");
    EXPECT_NE(Sheet(), before);
    ThenChoosePrinter(0);
    Press("Print");
  });
  int comments = 0;
  for (const std::string& call : printers.documents.back()->page.calls)
    comments += call.find("'Pump 2 started'") != std::string::npos;
  EXPECT_EQ(comments, 1);
}

TEST_F(PrintGraphWindow, SaysWhereTheLogHasNoReport) {
  job.Record(0, 240);
  job.log.Writing()->Execute("DROP TABLE SummaryReport");
  OpenPage([&](QDialog&) {
    job.dialogs.Expect("Summary Report does not exist", Answer::Cancel);
    Press("Comments");
    EXPECT_FALSE(IsPressed("Comments"));
  });
}

// --- Logo, printer and files ---

TEST_F(PrintGraphWindow, TellsOnceOfALogoThatIsDamagedAndTakesItWhenItIsWhole) {
  job.Record(0, 240);
  WithLogo();
  const std::string logo = File("logo.png");
  const auto whole = std::filesystem::file_size(logo);
  std::filesystem::copy_file(logo, File("whole.png"));
  std::filesystem::resize_file(logo, whole / 2);
  job.dialogs.Expect("The company logo can't be read: " + logo, Answer::Ok);
  OpenPage([&](QDialog&) {
    EXPECT_FALSE(IsPressed("Logo"));
    EXPECT_EQ(Find<QAbstractButton>("Logo").toolTip(), "Insert Company Logo");
    std::filesystem::copy_file(File("whole.png"), logo, std::filesystem::copy_options::overwrite_existing);
    Press("Logo");
    EXPECT_TRUE(IsPressed("Logo"));
    EXPECT_TRUE(job.session.LogoInserted);
  });
}

TEST_F(PrintGraphWindow, KeepsTheLogoAboveThePlotWhereItIsDroppedLower) {
  job.Record(0, 240);
  WithLogo();
  OpenPage([&](QDialog&) {
    QWidget& sheet = Find<QWidget>("Picture1");
    const auto at = [&](double x, double y) {
      return QPoint(static_cast<int>(x * sheet.width() / 210), static_cast<int>(y * sheet.height() / 297));
    };
    QTest::mousePress(&sheet, Qt::LeftButton, {}, at(30, 20));
    QTest::mouseMove(&sheet, at(30, 200));
    QTest::mouseRelease(&sheet, Qt::LeftButton, {}, at(30, 200));
    EXPECT_NEAR(job.session.PrintGraphImageY, 70, 0.01) << "20 high, it ends at 90, and the frame begins at 100";
    ThenChoosePrinter(0);
    Press("Print");
  });
  EXPECT_TRUE(Drawn("line 20 100 190 100 000000 w0.944882"));
}

TEST_F(PrintGraphWindow, PrintsTheEndOfAScaleAtTheRightEdgeOfTheFrame) {
  job.session.CurrentParameters[1].min = 0;
  job.session.CurrentParameters[1].max = 50;
  job.Append(0, {0});
  job.Append(60, {50});
  OpenPage([&](QDialog&) {
    ThenChoosePrinter(0);
    Press("Print");
  });
  // 600 dots an inch are 620.08 for each of 8 inches of 210 mm: 26.25 of them make 23.622 a millimetre, and 190 mm fall
  // on dot 4488, which is at 189.992; 40 mm on 945, 28 on 661 and 257 on 6071.
  EXPECT_TRUE(Drawn("line 40.005 27.9823 189.992 257.006 0000FF w2.48031"));
}

TEST_F(PrintGraphWindow, GivesFilesTheirEndings) {
  job.Record(0, 240);
  const auto begins = [&](const char* name) {
    std::ifstream file(File(name), std::ios::binary);
    std::string bytes(2, ' ');
    file.read(bytes.data(), 2);
    return bytes;
  };
  OpenPage([&](QDialog&) {
    for (const char* name : {"Well 7.5", "page.jpeg", "page.BMP"}) {
      job.dialogs.ExpectSaveFile(File(name));
      Press("SaveToFile");
    }
    ThenChoosePrinter(2);
    job.dialogs.ExpectSaveFile(File("Well 7.5"));
    Press("Print");
  });
  EXPECT_EQ(begins("Well 7.5.jpg"), "\xFF\xD8");
  EXPECT_EQ(begins("page.jpeg"), "\xFF\xD8");
  EXPECT_EQ(begins("page.BMP"), "BM");
  EXPECT_EQ(begins("Well 7.5.pdf"), "%P");
}

TEST_F(PrintGraphWindow, TellsOfADiskThatIsFullForItsPictures) {
  job.Record(0, 240);
  OpenPage([&](QDialog& window) {
    for (const char* name : {"page.jpg", "page.bmp"}) {
      job.dialogs.ExpectSaveFile(File(name));
      job.dialogs.Expect(" - Toolbar1_ButtonClick", Answer::Cancel);
      const test::FileSizeLimit full(1000);
      Press("SaveToFile");
      EXPECT_TRUE(window.isVisible());
      EXPECT_FALSE(std::filesystem::exists(File(name)));
    }
  });
}

// --- A table that another program fills ---

/// Rows a second apart, in any order; the value goes from 0 to 100 and back in two minutes each.
LiveImport TableOfOthers(const std::string& database, int count) {
  Connection::Open(database, OpenMode::CreateNew)
      ->Execute(
          "CREATE TABLE r (d DATE, t DATE, a DOUBLE);"
          "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < " +
          std::to_string(count) +
          ") INSERT INTO r SELECT 46095, (34200 + i) / 86400.0, abs(i % 240 - 120) FROM n "
          "ORDER BY i % 7");
  LiveImport live{true, database, "r", "d", "t", {}};
  live.Fields.push_back(
      LiveField{.Name = "a", .DisplayName = "Hook load", .max = 120, .Unit = "t", .Colour = 0x0000FF});
  return live;
}

TEST_F(PrintGraphWindow, ShowsATableOfAnotherProgram) {
  job.Record(0, 5);
  const LiveImport live = TableOfOthers(File("rig 7.mdb"), 480);
  script.Then("frmPrintGraph", [this](QDialog& window) {
    window.findChild<QAbstractButton*>("DrawCurves")->click();
    ThenChoosePrinter(0);
    window.findChild<QAbstractButton*>("Print")->click();
    window.reject();
  });
  print.PrintExternal(live, {});
  ASSERT_FALSE(printers.documents.empty());
  EXPECT_GT(LinesOf("0000FF"), 100);
  // In order of time each line leads from one second to the next, half a millimetre further down.
  for (const std::string& call : printers.documents.back()->page.calls) {
    double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
    if (call.find("0000FF") != std::string::npos &&
        std::sscanf(call.c_str(), "line %lf %lf %lf %lf", &x1, &y1, &x2, &y2) == 4)
      EXPECT_LT(std::abs(y2 - y1), 2) << call;
  }
}

TEST_F(PrintGraphWindow, TellsWhereTheTableOfAnotherProgramHasNothingToShow) {
  const LiveImport live = TableOfOthers(File("rig 7.mdb"), 0);
  job.dialogs.Expect("no page to show", Answer::Ok);
  print.PrintExternal(live, {});
  std::filesystem::remove(File("rig 7.mdb"));
  job.dialogs.Expect("File not found", Answer::Cancel);
  print.PrintExternal(live, {});
}

TEST_F(PrintGraphWindow, DrawsALogOfTheJetFormat) {
  const std::string log = File("old.mdb");
  const std::string from = std::string(VELK_SOURCE_DIR) + "/tests/data/jet/log_1000.mdb.gz";
  ASSERT_EQ(std::system(("gunzip -c '" + from + "' > '" + log + "'").c_str()), 0);
  const test::TemporaryFolder cache;
  setenv("XDG_CACHE_HOME", cache.Path().c_str(), 1);
  PrepareLog(log, {VELK_JET_READER}, job.platform);
  job.session.LogFileInUse = log;
  job.session.CurrentParameters[1].max = 1000;
  script.Then("frmPrintGraph", [this](QDialog& window) {
    window.findChild<QAbstractButton*>("DrawCurves")->click();
    ThenChoosePrinter(0);
    window.findChild<QAbstractButton*>("Print")->click();
    window.reject();
  });
  print.Print(test::kGraphOfJob);
  unsetenv("XDG_CACHE_HOME");
  ASSERT_FALSE(printers.documents.empty());
  EXPECT_GT(LinesOf("0000FF"), 30);
}

}  // namespace
}  // namespace velk
