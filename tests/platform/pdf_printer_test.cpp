#include "platform/printing/pdf_printer.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "base/errors.h"
#include "support/file_size_limit.h"
#include "support/temporary_folder.h"

namespace velk {
namespace {

std::string Bytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

int CountOf(const std::string& bytes, const std::string& part) {
  int count = 0;
  for (std::size_t at = bytes.find(part); at != std::string::npos; at = bytes.find(part, at + 1)) ++count;
  return count;
}

class PdfPrinterTest : public testing::Test {
 protected:
  /// A document of two pages in millimetres.
  static void PrintTwoPages(Printer& printer) {
    Surface& page = printer.Begin("Job 17, Скважина", Unit::Millimetre);
    page.SetFont({"DejaVu Sans", 12, false});
    page.Print(20, 20, "First page", 0);
    page.Line(20, 30, 190, 277, 0x0000FF);
    printer.NewPage();
    page.Print(20, 20, "Вторая страница", 0);
    printer.End();
  }

  test::TemporaryFolder folder_;
  const std::string path_ = folder_.File("job.pdf");
};

TEST_F(PdfPrinterTest, WritesTwoPagesOfA4WithTheirTexts) {
  PrintTwoPages(*MakePdfPrinter(path_));
  const std::string bytes = Bytes(path_);
  EXPECT_TRUE(bytes.starts_with("%PDF-"));
  EXPECT_EQ(CountOf(bytes, "/Type /Page\n"), 2);
  EXPECT_EQ(CountOf(bytes, "/MediaBox [0 0 595"), 2) << "210 mm";
  EXPECT_GE(CountOf(bytes, "/Type /Font\n"), 1) << "texts stay texts";
}

TEST_F(PdfPrinterTest, GivesASurfaceOfTheWholeSheetInTheUnitThatIsAsked) {
  const auto printer = MakePdfPrinter(path_);
  Surface& page = printer->Begin("", Unit::Point);
  EXPECT_NEAR(page.Width(), 595.28, 0.01);
  EXPECT_NEAR(page.Height(), 841.89, 0.01);
  EXPECT_EQ(printer->Sheet().left, 0);
}

TEST_F(PdfPrinterTest, LeavesNothingOfADocumentThatWasNotEnded) {
  {
    const auto printer = MakePdfPrinter(path_);
    printer->Begin("", Unit::Millimetre).Line(0, 0, 10, 10, 0);
    printer->NewPage();
  }
  EXPECT_TRUE(std::filesystem::is_empty(folder_.Path()));
}

TEST_F(PdfPrinterTest, KeepsTheDocumentOfBeforeUntilTheNewOneEnds) {
  std::ofstream(path_) << "before";
  const auto printer = MakePdfPrinter(path_);
  printer->Begin("", Unit::Millimetre);
  EXPECT_EQ(Bytes(path_), "before");
  printer->End();
  EXPECT_TRUE(Bytes(path_).starts_with("%PDF-"));
}

TEST_F(PdfPrinterTest, RaisesAnErrorThatNamesTheFileWhereThereIsNoSuchFolder) {
  const auto printer = MakePdfPrinter(folder_.File("missing/job.pdf"));
  try {
    printer->Begin("", Unit::Millimetre);
    FAIL() << "nothing was raised";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), ErrorNumber::DeviceIOError);
    EXPECT_NE(std::string(error.what()).find("job.pdf"), std::string::npos) << error.what();
  }
}

TEST_F(PdfPrinterTest, RaisesAnErrorAtTheEndWhereTheDiskIsFullAndKeepsTheDocumentOfBefore) {
  std::ofstream(path_) << "before";
  const auto printer = MakePdfPrinter(path_);
  const test::FileSizeLimit full(100);
  EXPECT_THROW(PrintTwoPages(*printer), RuntimeError);
  EXPECT_EQ(Bytes(path_), "before");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_.Path()), {}), 1) << "nothing is left beside it";
}

}  // namespace
}  // namespace velk
