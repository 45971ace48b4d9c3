// An instrument that sends single lines with times of their own, on real charts.

#include <gtest/gtest.h>

#include "graphs/chart_measures.h"
#include "graphs/coordinates.h"
#include "instruments/table/protocols.h"
#include "model/graph_window.h"
#include "shell/shell_rig.h"

namespace velk {
namespace {

constexpr double kMinute = 1.0 / 1440;

class BufferedLinesOnCharts : public testing::Test {
 protected:
  void SetUp() override {
    rig.settings->Save("VELK2", "Protocol", "SerialData", protocol::Intermittent);
    rig.settings->Save("VELK2", "Protocol", "Delimiter", ",");
    rig.settings->Save("VELK2", "Protocol", "Terminator", "\n");
    rig.settings->Flush();
    rig.Start();
    rig.Press("Acquire");
    rig.dialogs.ExpectSaveFile(rig.folder.File("job.mdb"));
    rig.Press("Record");
    rig.Press("Pause");
  }
  void Send(double when) {
    rig.plainPort.Receive(FormatDate(when, "dd-mmm-yyyy hh:mm:ss") + ",1,2,3\n");
    rig.clock.RunPosted();
  }
  /// Of the latest sample, in twips down the page of a graph.
  float Place(int graph) {
    const Session& session = rig.State();
    return TimeToY(session.SampleTime, session.GraphForms[graph]->TimeOrigin(), session.pixeldivide,
                   session.Times.GraphTimeStep);
  }

  const double start = DateSerial(2026, 3, 12) + TimeOfDay(6, 7, 30);
  test::ShellRig rig;
};

TEST_F(BufferedLinesOnCharts, AreOnThePageThoughTheyAreWiderApartThanABlock) {
  const double page = PlotHeight(MeasuresOf(rig.State()));
  for (int line = 0; line < 20; ++line) {
    Send(start + line * 10 * kMinute);
    for (int graph = 1; graph <= 3; ++graph) {
      EXPECT_GE(Place(graph), 0) << "line " << line;
      EXPECT_LT(Place(graph), page) << "line " << line;
    }
  }
  // A block is two minutes, and from some scrolls on each takes half a page away: two blocks.
  EXPECT_GT(rig.State().PageCount, 40);
  rig.Press("Stop");
}

}  // namespace
}  // namespace velk
