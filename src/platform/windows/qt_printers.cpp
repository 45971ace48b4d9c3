#include "platform/windows/qt_printers.h"

#include <cups/cups.h>

#include <QLibrary>
#include <QPrinter>
#include <QPrinterInfo>
#include <QTemporaryDir>
#include <optional>

#include "base/errors.h"
#include "base/text_qt.h"
#include "platform/drawing/units.h"
#include "platform/printing/pdf_printer.h"
#include "platform/texts.h"

namespace velk {

namespace {

constexpr int kDotsPerInch = 600;

QPrinterInfo InfoOf(const std::string& name) {
  return QPrinterInfo::printerInfo(ToQt(name));
}

/// What the printer leaves white of a sheet of A4.
Paper SheetOf(const std::string& name) {
  const QPrinter device(InfoOf(name), QPrinter::HighResolution);
  const QMarginsF points = device.pageLayout().minimumMargins();
  const auto mm = [](double length) { return Convert(length, Unit::Point, Unit::Millimetre); };
  Paper sheet;
  sheet.left = mm(points.left());
  sheet.top = mm(points.top());
  sheet.right = mm(points.right());
  sheet.bottom = mm(points.bottom());
  return sheet;
}

/// The library of the print service. It is loaded when something is printed, since with all that it needs itself it
/// takes 3 MB, which a job that runs for weeks would carry along. Whoever has a queue has the library: the toolkit
/// finds the queues by it.
class PrintLibrary {
 public:
  /// The service's words where it did not take the document, else nothing.
  std::optional<std::string> Print(const std::string& queue, const std::string& file, const std::string& title) const {
    if (!library_.isLoaded()) return FromQt(library_.errorString());
    // Sheets of A4, and pages at their own size, whatever the queue does by itself.
    cups_option_t* options = nullptr;
    int count = addOption_("media", "A4", 0, &options);
    count = addOption_("print-scaling", "none", count, &options);
    const bool taken = printFile_(queue.c_str(), file.c_str(), title.c_str(), count, options) != 0;
    freeOptions_(count, options);
    if (taken) return std::nullopt;
    return lastError_();
  }

 private:
  template <class Function>
  Function* Find(const char* name) {
    return reinterpret_cast<Function*>(library_.resolve(name));
  }

  QLibrary library_{QStringLiteral("cups"), 2};
  decltype(cupsAddOption)* const addOption_ = Find<decltype(cupsAddOption)>("cupsAddOption");
  decltype(cupsFreeOptions)* const freeOptions_ = Find<decltype(cupsFreeOptions)>("cupsFreeOptions");
  decltype(cupsPrintFile)* const printFile_ = Find<decltype(cupsPrintFile)>("cupsPrintFile");
  decltype(cupsLastErrorString)* const lastError_ = Find<decltype(cupsLastErrorString)>("cupsLastErrorString");
};

/// A document for a queue of the system: a file until it ends, so that one that is given up never reaches the queue.
/// The print service is handed it here, since the toolkit tells nobody whether the service took it.
class QueuePrinter : public Printer {
 public:
  explicit QueuePrinter(std::string name)
      : name_(std::move(name)), sheet_(SheetOf(name_)), pages_(MakePdfPrinter(Path(), kDotsPerInch)) {}

  Paper Sheet() const override { return sheet_; }
  double DotsPerInch() const override { return pages_->DotsPerInch(); }

  Surface& Begin(const std::string& title, Unit unit) override {
    if (InfoOf(name_).isNull()) Refuse({});
    if (!folder_.isValid())
      throw RuntimeError(ErrorNumber::DeviceIOError,
                         SystemText(ErrorNumber::DeviceIOError, FromQt(folder_.errorString())));
    title_ = title;
    return pages_->Begin(title, unit);
  }
  void NewPage() override { pages_->NewPage(); }
  void End() override {
    pages_->End();
    if (const auto words = PrintLibrary().Print(name_, Path(), title_)) Refuse(*words);
  }

 private:
  std::string Path() const { return FromQt(folder_.filePath(QStringLiteral("pages.pdf"))); }
  [[noreturn]] void Refuse(const std::string& words) const {
    OperatorText told = text::PrinterGoneBefore + name_ + text::PrinterGoneAfter;
    if (!words.empty()) told += " (" + words + ")";
    throw RuntimeError(ErrorNumber::DeviceUnavailable, told);
  }

  const std::string name_;
  const Paper sheet_;
  const QTemporaryDir folder_;
  const std::unique_ptr<Printer> pages_;
  std::string title_;
};

}  // namespace

std::vector<std::string> QtPrinters::Names() const {
  std::vector<std::string> names;
  for (const QString& name : QPrinterInfo::availablePrinterNames()) names.push_back(FromQt(name));
  return names;
}

std::string QtPrinters::Default() const {
  return FromQt(QPrinterInfo::defaultPrinterName());
}

std::unique_ptr<Printer> QtPrinters::Make(const std::string& name) const {
  return std::make_unique<QueuePrinter>(name);
}

}  // namespace velk
