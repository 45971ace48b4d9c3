#pragma once

#include <string>

#include "platform/drawing/surface.h"
#include "platform/drawing/units.h"

namespace velk {

/// A sheet and the edges of it that a printer leaves white, in millimetres.
struct Paper {
  double width = 210;
  double height = 297;
  double left = 0, top = 0, right = 0, bottom = 0;  ///< margins
};

/// Prints one document page by page. Each operation raises DeviceIOError where the device refuses.
class Printer {
 public:
  virtual ~Printer() = default;

  virtual Paper Sheet() const = 0;
  virtual double DotsPerInch() const = 0;

  /// Begins a document and its first page, on which it gives a surface that begins at the corner of the sheet, margins
  /// or not. Places on it are in `unit`; it is good until End.
  virtual Surface& Begin(const std::string& title, Unit unit) = 0;
  /// Ends the page; what is drawn from now on stands on the next one.
  virtual void NewPage() = 0;
  /// Ends the document. One that was not ended is given up with its printer.
  virtual void End() = 0;
};

}  // namespace velk
