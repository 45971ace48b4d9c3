#pragma once

#include <array>
#include <string>

#include "platform/settings/settings.h"

namespace velk {

/// The lines of a page's text block, in their order.
enum class PageLine { Client, Field, Well, Job };
inline constexpr std::size_t kPageLines = 4;

/// The operator's words for them, without the name that stands ahead of each.
using PageLines = std::array<std::string, kPageLines>;

inline const std::string& WordsOf(const PageLines& lines, PageLine line) {
  return lines[static_cast<std::size_t>(line)];
}

/// As the settings keep them.
PageLines ReadPageLines(SettingsStore& store);
void SavePageLines(SettingsStore& store, const PageLines& lines);

}  // namespace velk
