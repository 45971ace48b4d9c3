#include "platform/windows/qt_printers.h"

#include <cups/cups.h>

#include <QPrinter>
#include <QPrinterInfo>
#include <QTemporaryDir>

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

/// What a job asks for, whatever the queue does by itself: sheets of A4, and pages at their own size.
class PageOptions {
 public:
  PageOptions() {
    count_ = cupsAddOption("media", "A4", count_, &options_);
    count_ = cupsAddOption("print-scaling", "none", count_, &options_);
  }
  ~PageOptions() { cupsFreeOptions(count_, options_); }
  PageOptions(const PageOptions&) = delete;
  PageOptions& operator=(const PageOptions&) = delete;

  int Count() const { return count_; }
  cups_option_t* All() const { return options_; }

 private:
  int count_ = 0;
  cups_option_t* options_ = nullptr;
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
    const PageOptions options;
    if (cupsPrintFile(name_.c_str(), Path().c_str(), title_.c_str(), options.Count(), options.All()) == 0)
      Refuse(cupsLastErrorString());
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
