#include "windows/sample_job.h"

#include <QMdiSubWindow>
#include <QScrollBar>
#include <cmath>

#include "base/text.h"
#include "formula/additional_parameters.h"
#include "model/graph_map.h"
#include "support/window_texts.h"

namespace velk::test {

namespace {

constexpr int kGraph = 1;
constexpr std::int32_t kRed = 0x0000FF, kBlue = 0xFF0000, kGreen = 0x008000, kBlack = 0x000000, kYellow = 0x00FFFF;

}  // namespace

SampleJob::SampleJob(const std::string& language) {
  if (language == "Russian") translation = RussianWindows();
  session.Current_language = language;
  session.DefaultDirectory = Pick("/home/operator/jobs", "/home/operator/работы");
  session.Times.GraphTimeStep = session.SamplingRate;
  const FormulaReport report{dialogs, translation.Translator, {}};
  Add(Pick("Pump Pressure", "Давление на входе насоса"), Pick("bar", "бар"), kRed, 1204.5F);
  Add(Pick("Flow Rate", "Расход"), Pick("l/min", "л/мин"), kBlue, 812.25F);
  Add(Pick("Hook load & torque", "Нагрузка & момент"), Pick("kN", "кН"), kGreen, -17.5F);
  Add(kBlankName, "", kBlack, 0);
  Add(Pick("Temperature", "Температура"), "°C", kYellow, 86);
  ReadFormulae(session, report, "({" + LowerCase(session.CurrentParameters[1].name) + "}-100)*2.5");
  ReadFormulae(session, report, "avg({" + LowerCase(session.CurrentParameters[2].name) + "})");
  session.AdditionalParameters[1].name = session.CurrentParameters[6].name = Pick("Net Pressure", "Перепад давлений");
  for (const int alarmed : {1, 3, 7}) session.AlarmTriggered[alarmed] = true;
  HideBlank(session, session.TotalParameters);
  BuildGraphMap(session, session.TotalParameters);
}

void SampleJob::Add(const std::string& name, const std::string& units, std::int32_t color, float value) {
  const int index = session.TotalParameters + 1;
  Parameter& parameter = session.CurrentParameters[index];
  parameter.name = name;
  parameter.units = units;
  parameter.max = 100;
  parameter.color = color;
  parameter.format = "#0.00";
  parameter.FormIndex = kGraph;
  parameter.GraphVisible = true;
  parameter.CommandString = "D" + std::to_string(index) + "\r\n";
  parameter.ResetCommand = "R" + std::to_string(index) + "=\r";
  session.Parameters[index] = parameter;
  session.CurrentValue[index] = value;
  session.NumberOfParameters = session.TotalParameters = static_cast<std::int16_t>(index);
}

QWidget& SampleJob::OpenGraph(QSize size) {
  area.resize(size);
  area.show();
  graphWindows.CreateGraphWindows();
  auto& graph = dynamic_cast<GraphFormNew&>(*session.GraphForms[kGraph]);
  for (int i = 1; i <= session.TotalParameters; ++i) {
    const AlarmSide side = i == 3 ? AlarmSide::Low : AlarmSide::High;
    graph.ShowAlarm(i, session.AlarmTriggered[i] ? side : AlarmSide::None);
  }
  clock.Advance(1000);
  return graph;
}

QWidget& SampleJob::OpenComment(QSize size) {
  Record(0);
  auto& graph = dynamic_cast<GraphFormNew&>(OpenGraph(size));
  graph.EnableToolbar();
  graph.AddComment();
  return graph;
}

QWidget& SampleJob::OpenHistory(QSize size) {
  session.StartTime = clock.Now();
  session.Times.BlockPairsPerPage = session.SampleSeconds = 1;
  session.RecordToDB = true;
  Record(8);
  Transaction all(*log.Writing());
  log.OpenLogRecordset();
  for (int second = 0; second < 600; ++second) {
    std::vector<double> values;
    for (int i = 1; i <= session.NumberOfParameters; ++i)
      values.push_back(50 + 45 * std::sin((second + 60 * i) / 35.0));
    log.AppendLogRow({session.StartTime + second / 86400.0, values});
  }
  all.Commit();
  auto& graph = dynamic_cast<GraphFormNew&>(OpenGraph(size));
  graph.EnableToolbar();
  graph.UpdateScroll(session.StartTime + 600 / 86400.0);
  graph.findChild<QScrollBar*>("VScroll1")->setValue(2);
  clock.Advance(100);
  return graph;
}

void SampleJob::Record(int lines) {
  for (const int included : {1, 2, 5}) session.CurrentParameters[included].IncludeInSummary = true;
  session.SummaryExtraFields = {Pick("Crew", "Бригада"), Pick("Water, bbl", "Вода, м³")};
  session.AcquisitionMode = true;
  const std::string path = folder.File(Pick("Well 1042.mdb", "Скважина 1042.mdb"));
  log.CreateLogFile(path);
  log.ConnectLogFile(path);
  session.LogFileInUse = path;
  for (int line = 1; line <= lines; ++line) {
    clock.Advance(60'000);
    open.AddSummaryRow(Pick("Stage ", "Этап ") + std::to_string(line) +
                       Pick(": pump 2 on, pressure steady", ": насос 2 включён, давление устойчиво"));
  }
}

}  // namespace velk::test
