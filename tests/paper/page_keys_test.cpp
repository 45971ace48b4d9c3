#include <gtest/gtest.h>

#include <QDoubleSpinBox>
#include <QTest>

#include "paper/page_fixture.h"

namespace velk {
namespace {

using test::PrintGraphWindow;

// --- What the keys do beside the drawing, and what stays from page to page ---

TEST_F(PrintGraphWindow, ChoosesAPrinterWithoutPrinting) {
  job.Record(0, 240);
  OpenPage([&](QDialog&) {
    EXPECT_EQ(Text("lblPrinter"), "Printer: Cabin");
    ThenChoosePrinter(0);
    Press("Printer");
    EXPECT_EQ(Text("lblPrinter"), "Printer: Office");
    script.Then("frmPrinterSelect", [](QDialog& dialog) {
      dialog.findChild<QListWidget*>("List1")->setCurrentRow(1);
      dialog.reject();
    });
    Press("Printer");
    EXPECT_EQ(Text("lblPrinter"), "Printer: Office") << "Cancel puts back what stood";
  });
  EXPECT_TRUE(printers.documents.empty());
}

TEST_F(PrintGraphWindow, PrintsOnceWhateverIsPressedMeanwhile) {
  job.Record(0, 240);
  OpenPage([&](QDialog&) {
    bool pressed = false;
    stepping.onYield = [&] {
      if (pressed) return;
      pressed = true;
      for (const char* key : {"Print", "Printer", "DrawCurves", "SaveToFile", "FullView"}) Press(key);
    };
    ThenChoosePrinter(0);
    Press("Print");
    stepping.onYield = nullptr;
    EXPECT_TRUE(pressed);
    EXPECT_FALSE(IsPressed("DrawCurves"));
    EXPECT_TRUE(IsPressed("AutoScale"));
  });
  ASSERT_EQ(printers.documents.size(), 1u);
  EXPECT_TRUE(printers.documents[0]->ended);
}

TEST_F(PrintGraphWindow, PutsTheHeaderWhereItIsDroppedAndFindsItThereAgain) {
  job.Record(0, 240);
  job.session.TextInserted = true;
  OpenPage([&](QDialog&) {
    EXPECT_EQ(Find<QDoubleSpinBox>("HeaderLeft").value(), 110);
    QWidget& sheet = Find<QWidget>("Picture1");
    const auto at = [&](double x, double y) {
      return QPoint(static_cast<int>(x * sheet.width() / 210), static_cast<int>(y * sheet.height() / 297));
    };
    QTest::mousePress(&sheet, Qt::LeftButton, {}, at(113, 13));
    QTest::mouseMove(&sheet, at(43, 53));
    QTest::mouseRelease(&sheet, Qt::LeftButton, {}, at(43, 53));
    EXPECT_NEAR(job.session.PrintGraphText1X, 40, 1);
    EXPECT_NEAR(job.session.PrintGraphText1Y, 50, 1);
    EXPECT_EQ(kept, 1) << "it goes to the disk";
  });
  OpenPage([&](QDialog&) {
    EXPECT_NEAR(Find<QDoubleSpinBox>("HeaderLeft").value(), 40, 1);
    EXPECT_NEAR(Find<QDoubleSpinBox>("HeaderTop").value(), 50, 1);
    EXPECT_TRUE(IsPressed("InsertText"));
  });
}

TEST_F(PrintGraphWindow, KeepsTheScalingForTheNextPageButNotWhatWasDrawn) {
  job.Record(0, 230);  // round times end behind it
  OpenPage([&](QDialog&) {
    Press("FullView");
    Press("DrawCurves");
    EXPECT_FALSE(IsPressed("AutoScale"));
  });
  OpenPage([&](QDialog&) {
    EXPECT_FALSE(IsPressed("AutoScale"));
    EXPECT_EQ(Find<QAbstractButton>("AutoScale").toolTip(), "Manual Scaling");
    EXPECT_FALSE(IsPressed("DrawCurves"));
    Press("AutoScale");
    EXPECT_EQ(Find<QAbstractButton>("AutoScale").toolTip(), "Auto Scaling");
  });
}

TEST_F(PrintGraphWindow, PrintsInMsSansSerifWhereNoFontIsChosen) {
  job.Record(0, 240);
  job.session.CurrentFont = "";
  OpenPage([&](QDialog&) {
    ThenChoosePrinter(0);
    Press("Print");
  });
  EXPECT_TRUE(Drawn("font 'MS Sans Serif' 10"));
}

TEST_F(PrintGraphWindow, NamesTheLogoKeyByWhatItDoes) {
  job.Record(0, 240);
  WithLogo();
  OpenPage([&](QDialog&) {
    auto& key = Find<QAbstractButton>("Logo");
    EXPECT_TRUE(key.isEnabled());
    EXPECT_EQ(key.toolTip(), "Remove Company Logo");
    Press("Logo");
    EXPECT_EQ(key.toolTip(), "Insert Company Logo");
    EXPECT_FALSE(job.session.LogoInserted);
  });
}

TEST_F(PrintGraphWindow, TellsTheTimeUnderTheMouseWithinThePlot) {
  job.Record(0, 240);  // four minutes, one each interval
  OpenPage([&](QDialog&) {
    QWidget& sheet = Find<QWidget>("Picture1");
    for (const int y : {sheet.height() / 4, sheet.height() / 2, sheet.height() * 9 / 10}) {
      QTest::mouseMove(&sheet, QPoint(sheet.width() / 2, y));
      const double millimetres = 297.0 * y / sheet.height();
      const double time = test::JobStart() + (millimetres - 28) * 4 * (60 / 86400.0) / (277 - 28);
      EXPECT_EQ(Text("Label1"), FormatDate(time, "dd/mm/yy hh:mm:ss"));
    }
    QTest::mouseMove(&sheet, QPoint(sheet.width() / 2, sheet.height() / 20));
    EXPECT_EQ(Text("Label1"), "");
  });
}

}  // namespace
}  // namespace velk
