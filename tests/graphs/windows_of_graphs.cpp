#include "model/help_topics.h"
#include "windows/every_window.h"

namespace velk::test {
namespace {

const WindowsOf kGraphs([] {
  const auto graph = [](QSize size) {
    return [=](const std::string& language) -> std::shared_ptr<QWidget> {
      const Job job = MakeJob(language);
      return {job, &job->OpenGraph(size)};
    };
  };
  const auto comment = [](QSize size) {
    return [=](const std::string& language) -> std::shared_ptr<QWidget> {
      const Job job = MakeJob(language);
      return {job, &job->OpenComment(size)};
    };
  };
  const auto history = [](QSize size) {
    return [=](const std::string& language) -> std::shared_ptr<QWidget> {
      const Job job = MakeJob(language);
      return {job, &job->OpenHistory(size)};
    };
  };
  return std::vector<ListedWindow>{
      {"GraphFormNew", "", topic::StripChart, {"GraphFormNew", "Label*"}, graph({1300, 760})},
      {"GraphFormNew", "low", topic::StripChart, {"GraphFormNew", "Label*"}, graph({900, 260})},
      {"GraphFormNew", "comment", topic::StripChart, {"GraphFormNew", "Label*", "CommentHint"}, comment({1300, 760})},
      {"GraphFormNew", "history", topic::StripChart, {"GraphFormNew", "Label*"}, history({1300, 760})},
  };
});

}  // namespace
}  // namespace velk::test
