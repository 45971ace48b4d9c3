#pragma once

#include <string>

#include "base/errors.h"

namespace velk {

/// The run-time error that a failure of the operating system (errno) counts as.
ErrorNumber FileErrorNumber(int systemError);

/// The error's text, a colon and the path.
OperatorText FileErrorText(ErrorNumber number, const std::string& path);

/// Raises the error of a failed operation on a file; a missing file in a missing folder is PathNotFound.
[[noreturn]] void RaiseFileError(int systemError, const std::string& path);

/// Raises unless `path` is a regular file. With `create` the file is made, empty, and must not be there yet.
void CheckRegularFile(const std::string& path, bool create);

/// Whether something stands at `path`.
bool FileExists(const std::string& path);

/// The part before the last "/", without it: "/" for a file in the root, "." for a name alone.
std::string FolderOf(const std::string& path);

/// Gives the file `from` the name `to` in the same folder, and flushes the folder to the disk. Raises
/// FileAlreadyExists where something stands at `to`. False where the folder could not be flushed: the file is whole
/// under its new name, which a power cut can still take.
bool MoveIntoPlace(const std::string& from, const std::string& to);
/// The same in the place of what stands at `to`.
bool MoveOver(const std::string& from, const std::string& to);

}  // namespace velk
