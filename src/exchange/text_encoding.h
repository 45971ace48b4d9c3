#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/files/input_file.h"

namespace velk {

/// What the bytes of a text mean that is no UTF-8.
enum class CodePage {
  Cyrillic,  ///< Windows-1251
  Western,   ///< Windows-1252
};

/// The code page of the files that a session of this language meets, named as the settings name it.
CodePage CodePageOf(const std::string& language);

/// A line as UTF-8. Bytes that are sound UTF-8 stay as they are, others are read by the code page; what that leaves
/// undefined becomes U+FFFD.
std::string ToUtf8(std::string_view bytes, CodePage page);

/// Whether bytes are sound UTF-8.
bool IsUtf8(std::string_view bytes);

/// Brings a text file into a form whose lines are bytes: a file that its mark shows as UTF-16 is copied as UTF-8, in
/// which `file` is read from here on. `step` is told the bytes done; it may throw to leave it. Gives where the text
/// begins, behind a mark.
std::int64_t BeginText(InputFile& file, const std::function<void(std::int64_t done)>& step);

}  // namespace velk
