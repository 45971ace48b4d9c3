#pragma once

#include <array>
#include <string>

#include "base/language.h"
#include "platform/printing/printer.h"
#include "wells/well_scene.h"

namespace velk {

/// What stands above a printed scene.
struct SceneHead {
  std::string client, well, date;
  OperatorText depthUnit;
  std::string family;  ///< of its letters
};

/// Prints the scene on a sheet of its own, below a heading.
void PrintScene(Printer& printer, const WellScene& scene, const SceneHead& head, const Language& language);

}  // namespace velk
