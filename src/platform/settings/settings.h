#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/operator_text.h"

namespace velk {

/// The per-user store of texts, addressed by application, section and key (all compared exactly). One file an
/// application, `<directory>/<application>.ini`, with characters of the name that a file name can't hold encoded. A
/// file is read when its application is first asked for; changes are kept in memory until Flush, which replaces the
/// file as a whole, so that a reader or a power cut meets the old file or the new one.
///
/// Sections and keys that nobody asked for are written back as they were. A file that can't be read as a whole, or that
/// somebody else changed, is told by TakeProblems, and copied aside to `<application>.ini.damaged` (then .damaged-2,
/// ...) at the latest before it is first written over.
class SettingsStore {
 public:
  /// `directory`, which must have a name, is made when something is first written.
  explicit SettingsStore(std::string directory);
  ~SettingsStore();
  SettingsStore(const SettingsStore&) = delete;
  SettingsStore& operator=(const SettingsStore&) = delete;

  /// `$VELK_SETTINGS` where that is set; else `$XDG_CONFIG_HOME/VELK`, or `~/.config/VELK`.
  static std::string DefaultDirectory();
  /// Where this store's files are.
  const std::string& Directory() const;

  /// Whether the name, encoded, fits in a file name. Flush fails for what was saved under one that doesn't.
  static bool CanHold(std::string_view application);

  /// Reads the application's file again, unless changes of it wait for Flush. Raises FileNotFound where there is none,
  /// DeviceIOError, with what is wrong, where it can't be read as a whole. What puts no value in doubt is told by
  /// TakeProblems.
  void RequireWhole(std::string_view application);

  std::optional<std::string> Find(std::string_view application, std::string_view section, std::string_view key);
  std::string Get(std::string_view application, std::string_view section, std::string_view key,
                  std::string_view preset);
  void Save(std::string_view application, std::string_view section, std::string_view key, std::string_view value);
  /// A section or application that does not exist is no error.
  void Delete(std::string_view application, std::string_view section);
  void Delete(std::string_view application);

  /// All that an application holds, in the form of its file, and for some of its sections the way back to it.
  std::string TextOf(std::string_view application);
  void Restore(std::string_view application, const std::string& text, const std::vector<std::string>& sections);

  /// Drops what waits for Flush; the application's file is read again when it is next asked for.
  void Forget(std::string_view application);

  /// Writes what has changed; raises a file error that names the path, and keeps the changes for the next try.
  void Flush();

  /// The file could not be read as a whole, or is not as it was written, and has not been written anew.
  bool IsDamaged(std::string_view application);
  /// Keeps the file as it was read under a name of its own and gives that; the same one again where that is done
  /// already. Gives nothing where there was no file; raises the file errors of Flush, which tries again before it
  /// writes over the file.
  std::string PutAside(std::string_view application);

  /// What could not be read or is not as it should be, one text a file, and empties the list.
  std::vector<OperatorText> TakeProblems();

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace velk
