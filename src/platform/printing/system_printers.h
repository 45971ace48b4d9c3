#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/printing/printer.h"

namespace velk {

/// The printers that the system knows at this moment.
class SystemPrinters {
 public:
  virtual ~SystemPrinters() = default;

  virtual std::vector<std::string> Names() const = 0;
  /// What the system names as its default; empty where it names none.
  virtual std::string Default() const = 0;
  /// A document for one of them. Its operations raise DeviceUnavailable, with its name, once the printer is gone.
  virtual std::unique_ptr<Printer> Make(const std::string& name) const = 0;
};

}  // namespace velk
