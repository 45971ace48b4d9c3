#include "model/help_topics.h"
#include "settings/windows/clear_settings.h"
#include "settings/windows/frm_user_options.h"
#include "windows/every_window.h"

namespace velk::test {
namespace {

std::shared_ptr<QWidget> OpenClearSettings(const std::string& language) {
  return Hosted<ClearSettings>(MakeJob(language));
}

std::shared_ptr<QWidget> OpenUserOptions(const std::string& language) {
  return Hosted<frmUserOptions>(MakeJob(language), UserOptionTexts{"120", "15", "3600", "10", "64"});
}

const WindowsOf kSettings([] {
  return std::vector<ListedWindow>{
      {"ClearSettings", "", topic::Templates, {}, OpenClearSettings},
      {"frmUserOptions", "", topic::StripChart, {}, OpenUserOptions},
  };
});

}  // namespace
}  // namespace velk::test
