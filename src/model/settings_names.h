#pragma once

#include <string>
#include <string_view>

namespace velk {

// Applications of the settings store.
inline constexpr std::string_view kLiveSettings = "VELK2";
inline constexpr std::string_view kTemplateList = "VELKTemplates";

/// The application of the store that holds a template: "VELK" and its name. Any name that is not empty is one, and two
/// that differ in case are two.
inline std::string TemplateApplication(std::string_view name) {
  const std::string application = "VELK" + std::string(name);
  // A template "2" must not be the live settings. No other template begins like this.
  if (application == kLiveSettings || application == kTemplateList) return "Template" + application;
  return application;
}

}  // namespace velk
