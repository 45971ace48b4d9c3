#include "settings/column_widths.h"

#include <charconv>

#include "settings/table_cells.h"

namespace velk {

namespace {

constexpr const char* kApplication = "VELK2";
constexpr const char* kSection = "ParametersTable";
constexpr int kLeast = 16;
constexpr int kMost = 2000;

}  // namespace

ColumnWidths ReadColumnWidths(SettingsStore& settings) {
  ColumnWidths widths;
  for (int i = 0; i < kTableColumns; ++i) {
    const std::string heading(HeadingOf(static_cast<TableColumn>(i)).english);
    const std::string text = settings.Get(kApplication, kSection, heading, "");
    int width = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), width);
    const bool isNumber = error == std::errc() && end == text.data() + text.size();
    if (isNumber && width >= kLeast && width <= kMost) widths[heading] = width;
  }
  return widths;
}

void SaveColumnWidths(SettingsStore& settings, const ColumnWidths& widths) {
  settings.Delete(kApplication, kSection);
  for (const auto& [heading, width] : widths) settings.Save(kApplication, kSection, heading, std::to_string(width));
}

}  // namespace velk
