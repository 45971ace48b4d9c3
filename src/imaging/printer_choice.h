#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/printing/system_printers.h"

namespace velk {

/// The entry behind the system's printers: a document becomes a file. No queue of the system can have this name, since
/// theirs have no blanks.
inline constexpr const char* kPrintToFile = "Print to File (PDF)";

/// The printer that the program prints to: a choice of the process, which changes nothing of the system, so that there
/// is nothing to put back at the end. It begins with the system's default; where there is none, with the file. The
/// system is asked when the choice is: a print service that doesn't answer would hold up the start.
class PrinterChoice {
 public:
  /// The system's printers outlive the choice.
  explicit PrinterChoice(const SystemPrinters& system) : system_(system) {}

  /// The system's printers, and kPrintToFile as the last.
  std::vector<std::string> Names() const;
  /// What the choice began with.
  const std::string& GetOriginalPrinter() const;
  const std::string& PrinterName() const { return name_ ? *name_ : GetOriginalPrinter(); }
  bool PrintsToFile() const { return PrinterName() == kPrintToFile; }

  /// False, and nothing changes, for an empty name and for one that is not in the list.
  bool SetPrinterAsDefault(const std::string& name);
  /// Back to a choice that stood before, whatever has become of that printer.
  void Restore(const std::string& name) { name_ = name; }

  /// A document for the printer; `file` is where it goes when it becomes one.
  std::unique_ptr<Printer> MakePrinter(const std::string& file) const;

 private:
  const SystemPrinters& system_;
  mutable std::optional<std::string> OriginalPrinter;
  std::optional<std::string> name_;
};

/// PrinterPixelsPerUnit: pixels for each inch of a width that is rounded to whole inches. A sheet of A4 counts as 8
/// inches, which makes 210 mm as wide as 26.25 times 8 of the page's units.
float PrinterScaleFactor(const Printer& printer);

}  // namespace velk
