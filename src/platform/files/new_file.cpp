#include "platform/files/new_file.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <vector>

#include "platform/files/file_errors.h"

namespace velk {

namespace {

constexpr const char* kPart = ".part";

void RequireFreeName(const std::string& path) {
  for (const char* suffix : {"", "-wal", "-journal"})
    if (FileExists(path + suffix)) RaiseFileError(EEXIST, path + suffix);
}

/// Of the file that is to be replaced: they would be played into the new one.
void RemoveJournals(const std::string& path) {
  for (const char* suffix : {"-wal", "-shm", "-journal"})
    if (unlink((path + suffix).c_str()) != 0 && errno != ENOENT) RaiseFileError(errno, path + suffix);
}

/// "run.mdb.part1-journal" for a path of "run.mdb": the name of the part itself; empty for other files.
std::string PartOf(const std::string& file, const std::string& path) {
  const std::string start = path + kPart;
  if (!file.starts_with(start)) return {};
  const std::size_t behind = std::min(file.find_first_not_of("0123456789", start.size()), file.size());
  const std::string rest = file.substr(behind);
  const bool isSide = rest.empty() || rest == "-lock" || rest == "-journal" || rest == "-wal" || rest == "-shm";
  return behind == start.size() || !isSide ? std::string() : file.substr(0, behind);
}

}  // namespace

NewFile::NewFile(std::string path, IfThere ifThere) : path_(std::move(path)), ifThere_(ifThere) {
  if (ifThere_ == IfThere::Refuse) RequireFreeName(path_);
  // A name of its own each time: a part that a killed program left behind is nobody's to write on.
  for (int number = 1; !lock_ || FileExists(partName_); ++number) {
    partName_ = path_ + kPart + std::to_string(number);
    lock_ = FileLock::Take(partName_);
  }
}

NewFile::~NewFile() {
  if (!partName_.empty()) unlink(partName_.c_str());
}

bool NewFile::Complete() {
  if (ifThere_ == IfThere::Refuse)
    RequireFreeName(path_);
  else
    RemoveJournals(path_);
  const bool flushed = ifThere_ == IfThere::Refuse ? MoveIntoPlace(partName_, path_) : MoveOver(partName_, path_);
  partName_.clear();
  lock_.reset();
  return flushed;
}

std::vector<std::string> NewFile::ClearParts(const std::string& path) {
  std::error_code error;
  std::vector<std::string> left;
  for (std::filesystem::directory_iterator entry(FolderOf(path), error), end; !error && entry != end;
       entry.increment(error)) {
    const std::string file = FolderOf(path) + "/" + entry->path().filename().string();
    const std::string part = PartOf(file, path);
    if (!part.empty() && !FileLock::HolderOf(part)) left.push_back(file);
  }
  std::erase_if(left, [](const std::string& file) { return unlink(file.c_str()) == 0; });
  return left;
}

void NewFile::Check(const std::string& path) {
  RequireFreeName(path);
  if (access(FolderOf(path).c_str(), W_OK | X_OK) != 0) RaiseFileError(errno, path);
}

}  // namespace velk
