#include "settings/page_lines.h"

#include "settings/settings_keys.h"

namespace velk {

namespace {

constexpr std::string_view kPageSection = "PrintGraph";
constexpr std::string_view kLineKeys[kPageLines] = {"Client", "Field", "Well", "Job"};

}  // namespace

PageLines ReadPageLines(SettingsStore& store) {
  PageLines lines;
  for (std::size_t i = 0; i < kPageLines; ++i) lines[i] = store.Get(kLiveSettings, kPageSection, kLineKeys[i], "");
  return lines;
}

void SavePageLines(SettingsStore& store, const PageLines& lines) {
  for (std::size_t i = 0; i < kPageLines; ++i) store.Save(kLiveSettings, kPageSection, kLineKeys[i], lines[i]);
}

}  // namespace velk
