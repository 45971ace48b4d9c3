// Instruments that are asked, and answer wrong, late or not at all: what the operator is told, and that the recording
// goes on.

#include <gtest/gtest.h>

#include "ui/instrument_job.h"

namespace velk {
namespace {

using test::Instrument;
using test::InstrumentJob;

/// The instrument of the protocol as it stands in the list, with a fault.
Instrument With(const char* name, const char* serialData, std::vector<std::string> fault) {
  for (Instrument instrument : test::Instruments()) {
    if (instrument.serialData != std::string(serialData)) continue;
    instrument.name = name;
    instrument.arguments.insert(instrument.arguments.end(), fault.begin(), fault.end());
    return instrument;
  }
  return {};
}

// --- Sent when requested ---

/// Every eighth answer, of two a line, does not come, or does not end.
void ExpectTimeOutsThatResumeGoesOnBehind(const char* name, std::vector<std::string> fault) {
  Instrument instrument = With(name, "sent when requested", std::move(fault));
  instrument.samplingSeconds = 0.4;
  instrument.leastAccepted = 9;
  InstrumentJob job(instrument);
  job.rig.Set("General", "TheTimeOut", "3");  // sampling intervals
  job.Begin();
  for (const int rows : {3, 6}) {
    job.rig.dialogs.Expect("Time Out Error, check hardware settings", Answer::Ok);
    EXPECT_TRUE(job.rig.RunUntil([&] { return job.rig.Status() == "Acquiring Paused"; }, 20'000));
    EXPECT_EQ(job.rig.Rows(), rows);
    job.rig.Press("Pause");
    EXPECT_EQ(job.rig.Status(), "Acquiring Data");
  }
  job.RunAndEnd([&] { return job.rig.Rows() >= 9; });
  job.ExpectLogOfTheAcceptedLines();
}

TEST(ARequestedInstrument, ThatIsSilentIsToldAndResumeGoesOn) {
  ExpectTimeOutsThatResumeGoesOnBehind("RequestedSilent", {"--silent-every", "8"});
}

TEST(ARequestedInstrument, ThatDoesNotEndItsAnswerIsToldAndResumeGoesOn) {
  ExpectTimeOutsThatResumeGoesOnBehind("RequestedWithoutEnd", {"--cut-every", "8"});
}

// --- Networked units ---

constexpr const char* kTrend = "HPT - Honeywell eZtrend";
constexpr const char* kPanel = "ORBEN LUMO through HMI";

/// A job whose every ninth page, of 21, is faulty. `boxes` come, each answered by `answer` after some ticks of the
/// page's timer.
void ExpectRowsAfterFaultyPages(const char* name, const char* serialData, const char* fault, int boxes,
                                const char* boxText, Answer answer = Answer::Retry) {
  Instrument instrument = With(name, serialData, {"--fault", fault, "--fault-every", "9"});
  instrument.samplingSeconds = test::kNeverDue;
  instrument.leastAccepted = 6;
  InstrumentJob job(instrument);
  job.Begin();
  for (int i = 0; i < boxes; ++i) job.rig.dialogs.Expect(boxText, answer, [&] { job.rig.RunFor(1200); });
  job.RunAndEnd([&] { return job.rig.Journal().size() >= 21; });
  EXPECT_EQ(job.rig.dialogs.shown.size(), static_cast<std::size_t>(boxes) + 1) << "and the question at the exit";
  job.ExpectLogOfTheAcceptedLines();
}

TEST(ATrendRecorder, ThatRedirectsIsFollowed) {
  ExpectRowsAfterFaultyPages("TrendRedirect", kTrend, "redirect", 0, "");
}

TEST(ATrendRecorder, ThatRedirectsElsewhereIsToldOnceAPageAndRowsGoOn) {
  ExpectRowsAfterFaultyPages("TrendElsewhere", kTrend, "redirect-elsewhere", 2, " - Timer4_Timer");
}

TEST(ATrendRecorder, WhosePageHasNoCellsGivesNoRowForIt) {
  ExpectRowsAfterFaultyPages("TrendNoCells", kTrend, "no-cells", 0, "");
}

TEST(ATrendRecorder, WhosePageDoesNotEndIsToldOnceAPageAndRowsGoOn) {
  ExpectRowsAfterFaultyPages("TrendEndless", kTrend, "endless", 2, " - Timer4_Timer");
}

TEST(AnOperatorPanel, ThatRedirectsIsFollowed) {
  ExpectRowsAfterFaultyPages("PanelRedirect", kPanel, "redirect", 0, "");
}

TEST(AnOperatorPanel, WhosePageHasNoCellsIsToldOnceAPageAndRowsGoOn) {
  ExpectRowsAfterFaultyPages("PanelNoCells", kPanel, "no-cells", 2, " - Timer5_Timer");
}

TEST(AnOperatorPanel, WhosePageDoesNotEndIsToldOnceAPageAndRowsGoOn) {
  ExpectRowsAfterFaultyPages("PanelEndless", kPanel, "endless", 2, " - Timer5_Timer");
}

TEST(AnOperatorPanel, IsAskedAgainSomeSecondsAfterItsFaultWasCancelled) {
  Instrument instrument = With("PanelCancelled", kPanel, {"--fault", "error", "--fault-every", "10"});
  instrument.samplingSeconds = test::kNeverDue;
  instrument.leastAccepted = 6;
  InstrumentJob job(instrument);
  std::size_t atCancel = 0;
  job.Begin();
  job.rig.dialogs.Expect(" - Timer5_Timer", Answer::Cancel, [&] { atCancel = job.rig.Journal().size(); });
  job.RunAndEnd([&] { return job.rig.Journal().size() >= 17; });
  EXPECT_EQ(atCancel, 10U);
  const auto journal = job.rig.Journal();
  EXPECT_GE(journal[10].sentAt - journal[9].sentAt, 9.9);
  job.ExpectLogOfTheAcceptedLines();
}

// --- No driver ---

TEST(AProtocolWithoutADriver, IsToldAtConnectAndLogsNothing) {
  test::ProgramRig rig;
  rig.SetChannels(2);
  rig.Set("Protocol", "SerialData", "via dll function call");
  rig.StartProgram();
  rig.dialogs.Expect("This protocol has no driver: no values will come.", Answer::Ok);
  rig.Connect();
  EXPECT_EQ(rig.Status(), "Ready to Acquire");
  rig.StartJob();
  EXPECT_EQ(rig.Status(), "Acquiring Data");
  rig.RunFor(500);
  rig.StopJob();
  rig.Exit();
  EXPECT_TRUE(rig.LogRows().empty());
  std::printf("| ViaDllFunctionCall | via dll function call | none | 0 | 0 | 0 | 0 |\n");
}

}  // namespace
}  // namespace velk
