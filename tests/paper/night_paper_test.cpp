// Paper stays white where charts are dark.

#include <gtest/gtest.h>

#include "paper/page_fixture.h"
#include "support/dark_desktop.h"

namespace velk {
namespace {

class NightPaper : public test::PageFixture {
 protected:
  NightPaper() {
    job.session.CurrentParameters[1].color = 0x0000FF;
    job.Record(0, 240);
  }
  QImage SheetWithCurves() {
    QImage sheet;
    OpenPage([&](QDialog&) {
      Press("DrawCurves");
      sheet = Sheet();
    });
    return sheet;
  }
  QImage SavedAs(const char* name) {
    const std::string path = job.folder.File(name);
    OpenPage([&](QDialog&) {
      job.dialogs.ExpectSaveFile(path);
      Press("SaveToFile");
    });
    return QImage(QString::fromStdString(path));
  }
  std::vector<std::string> Printed() {
    OpenPage([&](QDialog&) {
      ThenChoosePrinter(0);
      Press("Print");
    });
    return printers.documents.back()->page.calls;
  }
};

TEST_F(NightPaper, StaysWhiteUnderNightColoursAndOnADarkDesktop) {
  const QImage day = SheetWithCurves();
  EXPECT_EQ(day.pixel(day.width() / 2, day.height() - 4) & 0xFFFFFF, 0xFFFFFFu);
  job.session.NightColours = true;
  EXPECT_EQ(SheetWithCurves(), day);
  const test::DarkDesktop dark;
  EXPECT_EQ(SheetWithCurves(), day);
}

TEST_F(NightPaper, IsSavedInTheColoursOfTheDay) {
  const QImage day = SavedAs("day.bmp");
  ASSERT_FALSE(day.isNull());
  EXPECT_EQ(day.pixel(2, day.height() - 3) & 0xFFFFFF, 0xFFFFFFu);
  job.session.NightColours = true;
  const test::DarkDesktop dark;
  EXPECT_EQ(SavedAs("night.bmp"), day);
}

TEST_F(NightPaper, IsPrintedInTheColoursOfTheDay) {
  const std::vector<std::string> day = Printed();
  ASSERT_FALSE(day.empty());
  job.session.NightColours = true;
  const test::DarkDesktop dark;
  EXPECT_EQ(Printed(), day);
}

}  // namespace
}  // namespace velk
