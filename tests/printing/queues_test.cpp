// Run by tests/support/private_cups, which makes the queues and removes them.

#include <gtest/gtest.h>

#include <algorithm>

#include "base/errors.h"
#include "imaging/printer_choice.h"
#include "printing/queue_fixture.h"

namespace velk {
namespace {

namespace fs = std::filesystem;

using test::OutputOf;
using Names = std::vector<std::string>;

class Queues : public test::QueueFixture {
 protected:
  static void Print(Printer& printer) {
    Surface& page = printer.Begin("Job 17, Скважина", Unit::Millimetre);
    page.SetFont({"DejaVu Sans", 12, false});
    page.Print(20, 20, "First page", 0);
    printer.NewPage();
    page.Print(20, 20, "Вторая страница", 0);
    printer.End();
  }
};

TEST_F(Queues, AreListedWithTheDefaultOfTheSystem) {
  Names names = printers_.Names();
  std::sort(names.begin(), names.end());
  EXPECT_EQ(names, (Names{"One", "Raw", "Two"}));
  EXPECT_EQ(printers_.Default(), "Raw");
}

TEST_F(Queues, GetAllPagesAsTexts) {
  Print(*printers_.Make("One"));
  const std::string document = Arrived();
  ASSERT_NE(document, "");
  const std::string words = OutputOf("pdftotext '" + document + "' -");
  EXPECT_NE(words.find("First page"), std::string::npos) << words;
  EXPECT_NE(words.find("Вторая страница"), std::string::npos) << words;
  const std::string about = OutputOf("pdfinfo '" + document + "'");
  EXPECT_NE(about.find("Pages:           2"), std::string::npos) << about;
  EXPECT_NE(about.find("A4"), std::string::npos) << about;
}

TEST_F(Queues, AreAskedForA4AndNotToScaleThePages) {
  Print(*printers_.Make("One"));
  const std::string document = Arrived();
  ASSERT_NE(document, "");
  const fs::path job = fs::path(std::getenv("VELK_JOB_OPTIONS")) / fs::path(document).stem();
  const std::string options = " " + OutputOf("cat '" + job.string() + "'");
  EXPECT_NE(options.find(" media=A4"), std::string::npos) << options;
  EXPECT_NE(options.find(" print-scaling=none"), std::string::npos) << options;
}

TEST_F(Queues, TellWhereThereIsNoRoomForADocument) {
  const char* const before = std::getenv("TMPDIR");
  const std::string kept = before ? before : "";
  ASSERT_EQ(setenv("TMPDIR", "/dev/null", 1), 0);
  try {
    Print(*printers_.Make("One"));
    ADD_FAILURE() << "nothing was raised";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), ErrorNumber::DeviceIOError) << error.what();
  }
  before ? setenv("TMPDIR", kept.c_str(), 1) : unsetenv("TMPDIR");
  EXPECT_TRUE(fs::is_empty(folder_));
}

TEST_F(Queues, TellTheirMarginsAndTheWholeSheet) {
  const auto printer = printers_.Make("One");
  const Paper sheet = printer->Sheet();
  EXPECT_EQ(sheet.width, 210);
  EXPECT_EQ(sheet.height, 297);
  EXPECT_NEAR(sheet.left, 12 / 72.0 * 25.4, 0.1) << "of its description, in points";
  EXPECT_NEAR(sheet.bottom, 24 / 72.0 * 25.4, 0.1);
  EXPECT_NEAR(sheet.right, 12 / 72.0 * 25.4, 0.1);
  EXPECT_NEAR(sheet.top, 24 / 72.0 * 25.4, 0.1);
  EXPECT_NEAR(printer->Begin("", Unit::Millimetre).Width(), 210, 1e-9);
}

TEST_F(Queues, GetNothingOfADocumentThatIsGivenUp) {
  {
    const auto printer = printers_.Make("One");
    printer->Begin("given up", Unit::Millimetre).Line(0, 0, 10, 10, 0);
  }
  Print(*printers_.Make("Raw"));
  ASSERT_NE(Arrived(), "");
  EXPECT_EQ(std::distance(fs::directory_iterator(folder_), {}), 1) << "the later document alone";
}

TEST_F(Queues, ThatAreNotThereRefuseWithTheirName) {
  try {
    printers_.Make("Nobody")->Begin("", Unit::Millimetre);
    FAIL() << "nothing was raised";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), ErrorNumber::DeviceUnavailable);
    EXPECT_NE(std::string(error.what()).find("[Nobody]"), std::string::npos) << error.what();
  }
}

TEST_F(Queues, ThatAreRemovedInTheMiddleOfADocumentRefuseItsEnd) {
  const auto printer = printers_.Make("Two");
  printer->Begin("", Unit::Millimetre).Line(0, 0, 10, 10, 0);
  ASSERT_EQ(std::system("lpadmin -x Two"), 0);
  EXPECT_THROW(printer->End(), RuntimeError);
  EXPECT_TRUE(fs::is_empty(folder_));
}

TEST_F(Queues, ThatTakeNoDocumentsSayWhy) {
  ASSERT_EQ(std::system("cupsreject -r 'Out of paper until Monday' One"), 0);
  try {
    Print(*printers_.Make("One"));
    ADD_FAILURE() << "nothing was raised";
  } catch (const RuntimeError& error) {
    EXPECT_NE(std::string(error.what()).find("printer [One] is not there or takes no documents"), std::string::npos)
        << error.what();
  }
  EXPECT_EQ(std::system("cupsaccept One"), 0);
  EXPECT_TRUE(fs::is_empty(folder_));
}

TEST_F(Queues, KeepTheSystemsDefaultWhateverTheProgramChooses) {
  PrinterChoice choice(printers_);
  EXPECT_EQ(choice.GetOriginalPrinter(), "Raw");
  EXPECT_TRUE(choice.SetPrinterAsDefault("One"));
  Print(*choice.MakePrinter(""));
  EXPECT_NE(Arrived(), "");
  EXPECT_EQ(OutputOf("lpstat -d"), "system default destination: Raw\n");
}

}  // namespace
}  // namespace velk
