#include "model/select_file.h"

#include <algorithm>

#include "base/text.h"
#include "model/texts.h"
#include "platform/files/file_errors.h"

namespace velk {

namespace {

std::string NameOf(const std::string& path) {
  return path.substr(path.rfind('/') + 1);
}

/// The letters behind the last point of the name; a point at its front begins the name of a hidden file.
std::string ExtensionOf(const std::string& path) {
  const std::string name = NameOf(path);
  const std::size_t point = name.rfind('.');
  return point == std::string::npos || point == 0 ? "" : name.substr(point + 1);
}

bool IsAllowed(const std::string& extension, std::span<const std::string_view> extensions) {
  return std::any_of(extensions.begin(), extensions.end(), [&](std::string_view allowed) {
    return allowed == "*" ? !extension.empty() : UpperCase(allowed) == UpperCase(extension);
  });
}

/// Why a name can't stand; empty where it can.
OperatorText FaultOf(const std::string& path, FileUse use) {
  if (path.ends_with('/')) return text::FileNameIncompleteBefore + path + text::FileNameIncompleteAfter;
  if (ExtensionOf(path).empty()) return text::NoExtensionBefore + path + text::NoExtensionAfter;
  if (use == FileUse::Open && !FileExists(path)) return text::NoSuchFileBefore + path + text::NoSuchFileAfter;
  return {};
}

}  // namespace

std::optional<std::string> SelectFile(Dialogs& dialogs, FileQuestion question,
                                      std::span<const std::string_view> extensions, FileUse use,
                                      const std::function<void()>& beep) {
  for (;;) {
    auto path = use == FileUse::Open ? dialogs.OpenFile(question) : dialogs.SaveFile(question);
    if (!path) return std::nullopt;
    if (!path->ends_with('/') && !IsAllowed(ExtensionOf(*path), extensions) && extensions.front() != "*")
      *path += "." + std::string(extensions.front());
    question.directory = FolderOf(*path);
    question.name = NameOf(*path);
    if (const OperatorText fault = FaultOf(*path, use); !fault.IsEmpty()) {
      beep();
      dialogs.Message({fault, {}, Buttons::Ok, BoxIcon::Exclamation});
      continue;
    }
    if (use == FileUse::Open || !FileExists(*path)) return path;
    if (dialogs.Message({text::ReplaceFileBefore + *path + text::ReplaceFileAfter,
                         {},
                         Buttons::YesNo,
                         BoxIcon::Question,
                         {},
                         {},
                         true}) == Answer::Yes)
      return path;
    if (dialogs.IsEnding()) return std::nullopt;
  }
}

}  // namespace velk
