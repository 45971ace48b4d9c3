#pragma once

#include <memory>
#include <string>

#include "platform/printing/printer.h"

namespace velk {

/// A printer whose documents become the PDF file `path`, which takes the place of one that stood there when it ends.
/// Texts stay texts. The paper is A4 without margins.
std::unique_ptr<Printer> MakePdfPrinter(const std::string& path, int dotsPerInch = 1200);

}  // namespace velk
