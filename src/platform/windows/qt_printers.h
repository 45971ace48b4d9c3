#pragma once

#include "platform/printing/system_printers.h"

namespace velk {

/// The system's printers as the toolkit lists them: those of CUPS. None where no print service answers.
class QtPrinters : public SystemPrinters {
 public:
  std::vector<std::string> Names() const override;
  std::string Default() const override;
  std::unique_ptr<Printer> Make(const std::string& name) const override;
};

}  // namespace velk
