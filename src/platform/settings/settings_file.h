#pragma once

#include <string>

#include "base/operator_text.h"
#include "platform/settings/ini_file.h"

namespace velk {

/// The file of one application of the settings as it stands in memory. All functions raise file errors with the path.
struct SettingsFile {
  std::string path;
  IniFile ini;
  bool exists = false;   ///< on the disk
  bool changed = false;  ///< since it was read or written
  bool readable = true;  ///< its bytes could be had
  OperatorText lost;     ///< what is wrong with it, for the operator; empty where nothing is
  bool whole = true;     ///< whatever is wrong, no value is in doubt
  bool keep = false;     ///< to be put aside before anything is written over it, as a damaged one is in any case
  std::string bytes;     ///< as they were read
  std::string aside;     ///< where it was put aside
};

/// Reads what is there; never fails, the damage is told in `lost`.
SettingsFile ReadSettingsFile(const std::string& path);

/// Keeps the file as it was read under a name of its own, `path` and ".damaged" (then .damaged-2, ...), and gives it. A
/// copy that is there already is not made again. A file whose bytes could not be had gives up its name. Gives nothing
/// where there was no file.
std::string PutAside(SettingsFile& file);

/// Replaces the file as a whole on the disk, or removes it where it holds nothing any more. One that is damaged or to
/// be kept is put aside first.
void WriteSettingsFile(SettingsFile& file);

}  // namespace velk
