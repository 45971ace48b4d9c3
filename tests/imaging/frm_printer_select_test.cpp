#include "imaging/windows/frm_printer_select.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QListWidget>
#include <QPushButton>

#include "support/fake_printers.h"
#include "support/host.h"
#include "support/window_script.h"

namespace velk {
namespace {

class PrinterSelect : public testing::Test {
 protected:
  /// What the dialog answers when `act` is done to it; nothing where it was left.
  std::optional<std::string> Ask(const std::function<void(QDialog&)>& act) {
    script_.Then("frmPrinterSelect", act);
    return host_.windows.Ask<frmPrinterSelect>(choice);
  }
  static QListWidget& List(QDialog& dialog) { return *dialog.findChild<QListWidget*>("List1"); }
  static QString Said(QDialog& dialog) { return dialog.findChild<QLabel*>("lblSaid")->text(); }
  static void Press(QDialog& dialog, const char* button) { dialog.findChild<QPushButton*>(button)->click(); }

  FakePrinters system;
  PrinterChoice choice{system};

 private:
  test::Host host_;
  test::WindowScript script_;
};

TEST_F(PrinterSelect, ListsThePrintersWithThePresentOneSelected) {
  const auto chosen = Ask([](QDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Select Printer");
    ASSERT_EQ(List(dialog).count(), 3);
    EXPECT_EQ(List(dialog).currentItem()->text(), "Cabin");
    EXPECT_EQ(List(dialog).item(2)->text(), "Print to File (PDF)");
    Press(dialog, "Command1");
  });
  EXPECT_EQ(chosen, "Cabin");
}

TEST_F(PrinterSelect, SetsTheChoiceAtOnceAndSaysSo) {
  Ask([&](QDialog& dialog) {
    List(dialog).setCurrentRow(0);
    EXPECT_EQ(choice.PrinterName(), "Office");
    EXPECT_EQ(Said(dialog), "Office has been selected");
    Press(dialog, "Command1");
  });
  EXPECT_EQ(choice.PrinterName(), "Office");
}

TEST_F(PrinterSelect, CancelPutsBackWhatStood) {
  const auto chosen = Ask([&](QDialog& dialog) {
    List(dialog).setCurrentRow(2);
    EXPECT_TRUE(choice.PrintsToFile());
    Press(dialog, "Command2");
  });
  EXPECT_FALSE(chosen);
  EXPECT_EQ(choice.PrinterName(), "Cabin");
}

TEST_F(PrinterSelect, SaysWhereAPrinterIsGoneAndKeepsTheChoice) {
  Ask([&](QDialog& dialog) {
    system.names = {"Cabin"};
    List(dialog).setCurrentRow(0);
    EXPECT_EQ(Said(dialog), "Office has failed to be set as the default printer.");
    EXPECT_EQ(choice.PrinterName(), "Cabin");
    dialog.reject();
  });
}

TEST_F(PrinterSelect, AsksForAPrinterWhereThePresentOneIsNotInTheList) {
  ASSERT_EQ(choice.PrinterName(), "Cabin");
  system.names = {"Office"};
  Ask([&](QDialog& dialog) {
    EXPECT_EQ(List(dialog).currentRow(), -1);
    Press(dialog, "Command1");
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(Said(dialog), "Please select a printer from the list.");
    List(dialog).setCurrentRow(0);
    Press(dialog, "Command1");
  });
  EXPECT_EQ(choice.PrinterName(), "Office");
}

}  // namespace
}  // namespace velk
