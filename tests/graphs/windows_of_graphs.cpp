#include "graphs/windows/frm_ext_graph_form.h"
#include "model/help_topics.h"
#include "platform/database/connection.h"
#include "windows/every_window.h"

namespace velk::test {
namespace {

/// The chart of a table of another program, with three minutes of it, or where it can't be read.
std::shared_ptr<QWidget> OpenExternal(const std::string& language, bool isThere) {
  const Job job = MakeJob(language);
  LiveImport live{true, job->folder.File("rig 7.mdb"), "Readings", "Day", "Clock", {}};
  const auto add = [&](const char* name, const std::string& shown, const char* unit, double max, std::int32_t colour) {
    LiveField field;
    field.Name = name;
    field.DisplayName = shown;
    field.Unit = unit;
    field.max = max;
    field.Colour = colour;
    field.format = "#0.0";
    live.Fields.push_back(field);
  };
  add("Hook", job->Pick("Hook load", "Нагрузка на крюке"), "t", 250, 0x2E10C8);
  add("Depth", job->Pick("Bit depth", "Глубина долота"), "m", 3000, 0xB85700);
  add("Pump", job->Pick("Pump pressure", "Давление насоса"), "MPa", 40, 0x3B7F1B);
  if (isThere)
    Connection::Open(live.DBaseName, OpenMode::CreateNew)
        ->Execute(
            "CREATE TABLE Readings (Day DATE, Clock DATE, Hook DOUBLE, Depth DOUBLE, Pump DOUBLE);"
            "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 180)"
            "INSERT INTO Readings SELECT 46095, (34200 + i) / 86400.0, 120 + 40 * ((i / 9) % 3), 2000 + i * 2,"
            "18 + (i * 7) % 5 FROM n");
  auto window = Hosted<frmExtGraphForm>(
      job,
      ExternalAccess{job->session, job->platform, job->open, {}, [](const LiveImport&) {}, [](const LiveImport&) {}},
      live);
  static_cast<frmExtGraphForm&>(*window).StartReading();
  job->clock.Advance(7200);
  return window;
}

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
      {"frmExtGraphForm",
       "",
       topic::Exchange,
       {"Label*", "lblState"},
       [](const std::string& language) { return OpenExternal(language, true); }},
      {"frmExtGraphForm",
       "unreadable",
       topic::Exchange,
       {"Label*", "lblState"},
       [](const std::string& language) { return OpenExternal(language, false); }},
      {"GraphFormNew", "", topic::StripChart, {"GraphFormNew", "Label*"}, graph({1300, 760})},
      {"GraphFormNew", "low", topic::StripChart, {"GraphFormNew", "Label*"}, graph({900, 260})},
      {"GraphFormNew", "comment", topic::StripChart, {"GraphFormNew", "Label*", "CommentHint"}, comment({1300, 760})},
      {"GraphFormNew", "history", topic::StripChart, {"GraphFormNew", "Label*"}, history({1300, 760})},
  };
});

}  // namespace
}  // namespace velk::test
