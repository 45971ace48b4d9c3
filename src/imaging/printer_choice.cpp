#include "imaging/printer_choice.h"

#include <algorithm>
#include <cmath>

#include "base/errors.h"
#include "platform/drawing/units.h"
#include "platform/printing/pdf_printer.h"

namespace velk {

namespace {

bool Contains(const std::vector<std::string>& names, const std::string& name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

/// A default that the system names but doesn't list is of no use.
std::string PrinterAtStart(const SystemPrinters& system) {
  const std::string name = system.Default();
  return Contains(system.Names(), name) ? name : kPrintToFile;
}

}  // namespace

const std::string& PrinterChoice::GetOriginalPrinter() const {
  if (!OriginalPrinter) OriginalPrinter = PrinterAtStart(system_);
  return *OriginalPrinter;
}

std::vector<std::string> PrinterChoice::Names() const {
  std::vector<std::string> names = system_.Names();
  names.emplace_back(kPrintToFile);
  return names;
}

bool PrinterChoice::SetPrinterAsDefault(const std::string& name) {
  if (name.empty() || !Contains(Names(), name)) return false;
  name_ = name;
  return true;
}

std::unique_ptr<Printer> PrinterChoice::MakePrinter(const std::string& file) const {
  return PrintsToFile() ? MakePdfPrinter(file) : system_.Make(PrinterName());
}

float PrinterScaleFactor(const Printer& printer) {
  const double inches = printer.Sheet().width / PerInch(Unit::Millimetre);
  return ToSingle(Divide(inches * printer.DotsPerInch(), std::nearbyint(inches)));
}

}  // namespace velk
