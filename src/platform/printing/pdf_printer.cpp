#include "platform/printing/pdf_printer.h"

#include <QFile>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>
#include <optional>

#include "base/errors.h"
#include "base/text_qt.h"
#include "platform/drawing/painted_surface.h"

namespace velk {

namespace {

class PdfPrinter : public Printer {
 public:
  PdfPrinter(const std::string& path, int dotsPerInch) : file_(QFile::decodeName(path.c_str())), writer_(&file_) {
    writer_.setResolution(dotsPerInch);
    writer_.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF()));
    writer_.setCreator(QStringLiteral("VELK"));
  }

  Paper Sheet() const override { return {}; }
  double DotsPerInch() const override { return writer_.resolution(); }

  Surface& Begin(const std::string& title, Unit unit) override {
    if (!file_.open(QIODevice::WriteOnly)) Refuse();
    writer_.setTitle(ToQt(title));
    if (!painter_.begin(&writer_)) Refuse();
    const Paper sheet = Sheet();
    return page_.emplace(painter_, unit, Convert(sheet.width, Unit::Millimetre, unit),
                         Convert(sheet.height, Unit::Millimetre, unit), DotsPerInch());
  }
  void NewPage() override {
    if (!writer_.newPage()) Refuse();
  }
  void End() override {
    page_.reset();
    painter_.end();
    // The toolkit itself takes a buffer that went to the disk in part for written.
    const bool whole = file_.flush() && file_.size() == file_.pos();
    if (!whole) file_.cancelWriting();
    if (!file_.commit()) Refuse();
  }

 private:
  [[noreturn]] void Refuse() const {
    throw RuntimeError(ErrorNumber::DeviceIOError,
                       SystemText(ErrorNumber::DeviceIOError, FromQt(file_.errorString() + ": " + file_.fileName())));
  }

  QSaveFile file_;  ///< given up, with what it holds, unless the document ends
  QPdfWriter writer_;
  QPainter painter_;
  std::optional<PaintedSurface> page_;
};

}  // namespace

std::unique_ptr<Printer> MakePdfPrinter(const std::string& path, int dotsPerInch) {
  return std::make_unique<PdfPrinter>(path, dotsPerInch);
}

}  // namespace velk
