#include <gtest/gtest.h>

#include <QDoubleSpinBox>
#include <filesystem>

#include "paper/page_fixture.h"

namespace velk {
namespace {

using test::PrintGraphWindow;

constexpr double kSecondsOfDay = 86400;

// --- What is given up leaves all as it was ---

TEST_F(PrintGraphWindow, IsAsItWasWhereDrawingIsCancelled) {
  job.Record(0, 230);  // round times end behind it
  WithLogo();
  OpenPage([&](QDialog&) {
    QImage before = Sheet();
    job.dialogs.cancelProgress = true;
    Press("DrawCurves");
    EXPECT_FALSE(IsPressed("DrawCurves"));
    EXPECT_EQ(Sheet(), before);
    job.dialogs.cancelProgress = false;
    Press("DrawCurves");
    before = Sheet();
    job.dialogs.cancelProgress = true;
    Press("FullView");
    EXPECT_TRUE(IsPressed("AutoScale"));
    EXPECT_TRUE(IsPressed("DrawCurves"));
    Find<QDoubleSpinBox>("LogoTop").setValue(60);
    EXPECT_EQ(Find<QDoubleSpinBox>("LogoTop").value(), 10);
    EXPECT_EQ(job.session.PrintGraphImageW, 0) << "not placed";
    Press("Logo");
    EXPECT_TRUE(IsPressed("Logo"));
    EXPECT_TRUE(job.session.LogoInserted);
    Find<QComboBox>("Zoom").setCurrentIndex(0);
    EXPECT_EQ(Find<QComboBox>("Zoom").currentText(), "50 %");
    EXPECT_EQ(Sheet(), before);
    job.dialogs.cancelProgress = false;
    Press("FullView");
    EXPECT_FALSE(IsPressed("AutoScale"));
    EXPECT_GT(RedDots(), 300);
  });
}

TEST_F(PrintGraphWindow, KeepsTimesAndHeaderWhereEnteringThemIsCancelled) {
  job.Record(0, 240);
  OpenPage([&](QDialog&) {
    Press("DrawCurves");
    const QImage before = Sheet();
    job.dialogs.cancelProgress = true;
    job.dialogs.ExpectInput("Enter start date and time", std::nullopt);
    job.dialogs.ExpectInput("Enter end date and time",
                            FormatDate(test::JobStart() + 60 / kSecondsOfDay, "dd-mmm-yyyy hh:mm:ss"));
    Press("AutoScale");
    EXPECT_TRUE(IsPressed("AutoScale"));
    for (const char* line : {" Client : ", " Field  : ", " Well   : ", " Job    : "})
      job.dialogs.ExpectInput(line, "of no page");
    Press("InsertText");
    EXPECT_FALSE(job.session.TextInserted);
    EXPECT_EQ(job.settings.Get("VELK2", "PrintGraph", "Well", ""), "");
    EXPECT_EQ(Sheet(), before);
  });
}

TEST_F(PrintGraphWindow, KeepsWhatThePreviewReadWhereAPrintIsCancelled) {
  job.Record(0, 240);
  OpenPage([&](QDialog&) {
    Press("DrawCurves");
    job.dialogs.cancelProgress = true;
    ThenChoosePrinter(0);
    Press("Print");
    ASSERT_EQ(printers.documents.size(), 1u);
    EXPECT_FALSE(printers.documents[0]->ended);
    const std::size_t tasks = job.dialogs.progress.size();
    Press("Comments");
    EXPECT_TRUE(IsPressed("Comments"));
    EXPECT_EQ(job.dialogs.progress.size(), tasks) << "nothing is read again";
    const QImage before = Sheet();
    job.dialogs.ExpectSaveFile(File("page.jpg"));
    Press("SaveToFile");
    EXPECT_FALSE(std::filesystem::exists(File("page.jpg")));
    EXPECT_EQ(Sheet(), before);
  });
}

TEST_F(PrintGraphWindow, KeepsCurvesWhereTheLogHasNoReport) {
  job.Record(0, 240);
  job.log.Writing()->Execute("DROP TABLE SummaryReport");
  OpenPage([&](QDialog&) {
    Press("DrawCurves");
    const int drawn = RedDots();
    job.dialogs.Expect("Summary Report does not exist", Answer::Cancel);
    Press("Comments");
    EXPECT_TRUE(IsPressed("DrawCurves"));
    EXPECT_EQ(RedDots(), drawn);
  });
}

TEST_F(PrintGraphWindow, ReadsCurvesOnceForTheDotsOfEachZoom) {
  job.Record(0, 240);
  OpenPage([&](QDialog&) {
    Press("DrawCurves");
    EXPECT_EQ(job.dialogs.progress.size(), 1u);
    Find<QComboBox>("Zoom").setCurrentIndex(0);
    EXPECT_EQ(job.dialogs.progress.size(), 2u);
    Find<QComboBox>("Zoom").setCurrentIndex(2);
    EXPECT_EQ(job.dialogs.progress.size(), 2u);
  });
}

// --- Times ---

TEST_F(PrintGraphWindow, TakesTimesAsTheyAreOfferedWithTheirFractionsOfASecond) {
  job.Append(0, {1});
  job.Append(60, {2});
  job.log.Writing()->Execute("UPDATE logData SET Time = Time + 0.4 / 86400");
  const auto at = [](double second) {
    return FormatDate(test::JobStart() + second / kSecondsOfDay, "dd-mmm-yyyy hh:mm:ss");
  };
  OpenPage([&](QDialog&) {
    job.dialogs.ExpectInput("Enter start date and time", at(0.4));
    job.dialogs.ExpectInput("Enter end date and time", at(60.4));
    Press("AutoScale");
    EXPECT_FALSE(IsPressed("AutoScale"));
    ThenChoosePrinter(0);
    Press("Print");
  });
  EXPECT_EQ(LinesOf("0000FF w2.48031"), 2) << "the first point, and the line to the last one";
}

TEST_F(PrintGraphWindow, TakesTheTimesOfALogThatIsShorterThanASecond) {
  job.Append(0, {1});
  job.Append(1, {2});
  job.log.Writing()->Execute("UPDATE logData SET Time = Time - 0.4 / 86400 WHERE ID = 2");
  const std::string shown = FormatDate(test::JobStart(), "dd-mmm-yyyy hh:mm:ss");
  OpenPage([&](QDialog&) {
    for (const char* prompt : {"Enter start date and time", "Enter end date and time"})
      job.dialogs.ExpectInput(prompt, shown);
    Press("AutoScale");
    EXPECT_FALSE(IsPressed("AutoScale"));
  });
}

TEST_F(PrintGraphWindow, NamesTheCauseWhereALogMakesNoPage) {
  job.Append(100, {1});
  job.Append(0, {2});
  job.dialogs.Expect("The last record of the log is earlier than the first one", Answer::Ok);
  print.Print(test::kGraphOfJob);
  job.log.Writing()->Execute("UPDATE logData SET Date = NULL WHERE ID = 1");
  job.dialogs.Expect("The first or the last record of the log has no date and time", Answer::Ok);
  print.Print(test::kGraphOfJob);
}

TEST_F(PrintGraphWindow, StaysAsItWasWhereTheLogHasBeenEmptied) {
  job.Record(0, 240);
  OpenPage([&](QDialog&) {
    const QImage before = Sheet();
    job.log.Writing()->Execute("DELETE FROM logData");
    job.dialogs.Expect("The log has no records over a length of time", Answer::Ok);
    Press("FullView");
    EXPECT_TRUE(IsPressed("AutoScale"));
    EXPECT_EQ(Sheet(), before);
  });
}

TEST_F(PrintGraphWindow, SaysThatRecordsAreLaterThanTheLastOne) {
  job.Append(0, {1});
  job.Append(100, {2});
  job.Append(50, {3});
  OpenPage([&](QDialog&) {
    Press("FullView");
    EXPECT_EQ(Text("lblNote"),
              "Some records are later than the last one, since the clock was set back, and not on the page.");
  });
}

TEST_F(PrintGraphWindow, ShowsTheWholeSheetOnFullView) {
  job.Record(0, 240);
  OpenPage([&](QDialog&) {
    Find<QComboBox>("Zoom").setCurrentIndex(0);
    Press("FullView");
    EXPECT_EQ(Find<QComboBox>("Zoom").currentText(), "50 %");
    EXPECT_LE(Sheet().height(), 300) << "the least height of a sheet, without a main window";
  });
}

}  // namespace
}  // namespace velk
