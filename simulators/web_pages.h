#pragma once

#include <string>

#include "samples.h"

namespace sim {

/// How a page is written: in the odd ways of the units' own servers.
struct PageStyle {
  bool headerBytes = false;  ///< bytes ahead of the page that belong to no text
  bool oddCapitals = false;  ///< the tags around the values in capitals too
  bool cells = true;         ///< off: a page of the same frame without any value
};

/// "named": cells named 1Var, 2Var ...; "table": one table with its own time; "panel": the operator panel's page.
std::string PageOf(const std::string& kind, const Samples& samples, int channels, const PageStyle& style);

bool IsPageKind(std::string_view kind);

}  // namespace sim
