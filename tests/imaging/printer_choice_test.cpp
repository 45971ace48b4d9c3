#include "imaging/printer_choice.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "platform/drawing/units.h"
#include "platform/printing/pdf_printer.h"
#include "support/fake_printers.h"
#include "support/temporary_folder.h"

namespace velk {
namespace {

using List = std::vector<std::string>;

/// A printer that only has a sheet and a resolution.
class BareSheet : public Printer {
 public:
  explicit BareSheet(double dotsPerInch) : dotsPerInch_(dotsPerInch) {}
  Paper Sheet() const override { return {}; }
  double DotsPerInch() const override { return dotsPerInch_; }
  Surface& Begin(const std::string&, Unit) override { throw std::logic_error("no pages"); }
  void NewPage() override {}
  void End() override {}

 private:
  double dotsPerInch_;
};

TEST(PrinterChoiceTest, BeginsWithTheSystemsDefault) {
  const FakePrinters system;
  const PrinterChoice choice(system);
  EXPECT_EQ(choice.PrinterName(), "Cabin");
  EXPECT_EQ(choice.GetOriginalPrinter(), "Cabin");
  EXPECT_EQ(choice.Names(), (List{"Office", "Cabin", "Print to File (PDF)"}));
}

TEST(PrinterChoiceTest, BeginsWithTheFileWhereTheSystemHasNoDefaultThatIsThere) {
  FakePrinters system;
  for (const char* preset : {"", "Removed"}) {
    system.preset = preset;
    EXPECT_TRUE(PrinterChoice(system).PrintsToFile()) << preset;
  }
}

TEST(PrinterChoiceTest, PrintsToTheChosenPrinter) {
  const FakePrinters system;
  PrinterChoice choice(system);
  EXPECT_TRUE(choice.SetPrinterAsDefault("Office"));
  EXPECT_EQ(choice.PrinterName(), "Office");
  EXPECT_EQ(choice.GetOriginalPrinter(), "Cabin");
  choice.MakePrinter("unused.pdf");
  ASSERT_EQ(system.documents.size(), 1u);
  EXPECT_EQ(system.documents[0]->printer, "Office");
}

TEST(PrinterChoiceTest, RefusesANameThatIsNotInTheListAndKeepsWhatStood) {
  FakePrinters system;
  PrinterChoice choice(system);
  for (const char* name : {"", "Nobody", "office", "Cabin "}) EXPECT_FALSE(choice.SetPrinterAsDefault(name)) << name;
  EXPECT_EQ(choice.PrinterName(), "Cabin");
  system.names = {"Office"};
  EXPECT_FALSE(choice.SetPrinterAsDefault("Cabin")) << "it was removed meanwhile";
}

TEST(PrinterChoiceTest, GoesBackToTheChoiceThatStood) {
  const FakePrinters system;
  PrinterChoice choice(system);
  const std::string before = choice.PrinterName();
  choice.SetPrinterAsDefault("Office");
  choice.Restore(before);
  EXPECT_EQ(choice.PrinterName(), "Cabin");
}

TEST(PrinterChoiceTest, PrintsToAFileOnAMachineWithoutPrinters) {
  FakePrinters system;
  system.names.clear();
  system.preset.clear();
  const PrinterChoice choice(system);
  const test::TemporaryFolder folder;
  const auto printer = choice.MakePrinter(folder.File("page.pdf"));
  printer->Begin("", Unit::Millimetre);
  printer->End();
  EXPECT_TRUE(std::filesystem::exists(folder.File("page.pdf")));
  EXPECT_TRUE(system.documents.empty());
}

/// 210 mm are 8.268 inches: 4960.6 pixels at 600 dots an inch, by 8.
TEST(PrinterChoiceTest, CountsPixelsForAWholeNumberOfInches) {
  EXPECT_NEAR(PrinterScaleFactor(BareSheet(600)), 620.08, 0.01);
  EXPECT_NEAR(PrinterScaleFactor(BareSheet(72)), 74.409, 0.001);
}

/// The rough value over 26.25 is a millimetre: 190 of the page's units lie where 190 mm do.
TEST(PrinterChoiceTest, MakesAMillimetreOfTheRoughValue) {
  for (const double dots : {72.0, 300.0, 600.0, 1200.0})
    EXPECT_NEAR(190 * PrinterScaleFactor(BareSheet(dots)) / 26.25,
                Convert(190, Unit::Millimetre, Unit::Pixel) / 96 * dots, 1e-3 * dots);
}

}  // namespace
}  // namespace velk
