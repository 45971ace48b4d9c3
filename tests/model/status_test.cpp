#include "model/status.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "core/texts.h"
#include "model/texts.h"
#include "support/recording_view.h"

namespace velk {
namespace {

using test::RecordingView;

struct Expectation {
  const char* item;
  const char* states;  ///< Ready, Ready to Acquire, Acquiring, Paused, Ready to Playback, Playing Back, its pause
};

/// '1' on, '0' off, '.' untouched by the status (what every change forces comes through).
constexpr Expectation kTable[] = {
    {"mnuFileRecord", "1100000"},       {"mnuFilePlayback", "1000000"},       {"mnuFileExit", "1000101"},
    {"mnuEditSerialPort", "1000000"},   {"mnuEditTable", "0100100"},          {"mnuToolsDefine", "0100100"},
    {"mnuToolsRemove", "0100100"},      {"mnuToolsInclude", "0100100"},       {"mnuToolsCalibrate", "0100000"},
    {"mnuToolsReset", "0111000"},       {"mnuToolsOrbenHardware", "1101.0."}, {"mnuEditLoadTemplate", "1000000"},
    {"mnuEditSaveTemplate", "1101101"}, {"mnuEditDeleteTemplate", "1101101"}, {"mnuEditUserOptions", "1000000"},
    {"mnuEditLanguage", "1000000"},     {"mnuEditAutoDetect", "1000000"},     {"mnuEditClear", "1000000"},
    {"mnuImprtLiveData", "1......"},    {"mnuAcquireConnect", "1000000"},     {"mnuAcquireStart", "....111"},
    {"mnuAcquireStop", "....111"},
};

constexpr MessageText kStatuses[] = {
    text::StatusReady,           text::StatusReadyToAcquire, text::StatusAcquiringData,    text::StatusAcquiringPaused,
    text::StatusReadyToPlayback, text::StatusPlayingBack,    text::StatusPlayingBackPaused};

TEST(Status, ForcesEveryMenuItemAsTheTableSays) {
  for (int column = 0; column < 7; ++column) {
    Session session;
    RecordingView view;
    ChangeCurrentStatus(session, view, kStatuses[column]);
    for (const Expectation& row : kTable) {
      const auto found = view.menuEnabled.find(row.item);
      if (row.states[column] == '.')
        EXPECT_EQ(found, view.menuEnabled.end()) << row.item << " in " << session.CurrentStatus.english;
      else
        EXPECT_TRUE(found != view.menuEnabled.end() && found->second == (row.states[column] == '1'))
            << row.item << " in " << session.CurrentStatus.english;
    }
  }
}

TEST(Status, ForcesNothingOutsideTheTableButTheSummaryReport) {
  std::set<std::string> known = {"mnuViewSummaryReport"};
  for (const Expectation& row : kTable) known.insert(row.item);
  for (const MessageText status : kStatuses) {
    Session session;
    RecordingView view;
    ChangeCurrentStatus(session, view, status);
    for (const auto& [item, enabled] : view.menuEnabled) EXPECT_EQ(known.count(item), 1u) << item;
    EXPECT_TRUE(view.buttonEnabled.empty() && view.buttonVisible.empty());
  }
}

TEST(Status, ForcesFourItemsEvenWhereTheTableHasNoColumn) {
  for (const MessageText status : {text::StatusCheckingHardware, text::StatusConfirmingFileFormat}) {
    Session session;
    RecordingView view;
    ChangeCurrentStatus(session, view, status);
    const std::map<std::string, bool> expected = {{"mnuEditClear", false},
                                                  {"mnuEditDeleteTemplate", true},
                                                  {"mnuEditSaveTemplate", true},
                                                  {"mnuEditAutoDetect", false}};
    EXPECT_EQ(view.menuEnabled, expected);
  }
}

TEST(Status, StoresTheWordShowsItAndResetsPointerAndCaption) {
  Session session;
  RecordingView view;
  view.hourglass = true;
  ChangeCurrentStatus(session, view, text::StatusReadyToAcquire);
  EXPECT_EQ(session.CurrentStatus.english, "Ready to Acquire");
  EXPECT_EQ(view.panels[1], "Ready to Acquire");
  EXPECT_FALSE(view.hourglass);
  EXPECT_EQ(view.captionResets, 1);
  EXPECT_TRUE(StatusIs(session, text::StatusReadyToAcquire));
  EXPECT_FALSE(StatusIs(session, text::StatusReady));
}

TEST(Status, HidesConnectAndRenamesTheMenuOnlyInPlayback) {
  for (int column = 0; column < 7; ++column) {
    Session session;
    RecordingView view;
    ChangeCurrentStatus(session, view, kStatuses[column]);
    EXPECT_EQ(view.menuVisible["mnuAcquireConnect"], column < 4) << column;
    EXPECT_EQ(view.menuCaption["mnuAcquire"], column < 4 ? "&Data Acquisition" : "Playback") << column;
  }
}

TEST(Status, NamesPauseAndResumeOnMenuAndButton) {
  Session session;
  session.CurrentFile = "/jobs/frac.mdb";
  RecordingView view;
  ChangeCurrentStatus(session, view, text::StatusAcquiringData);
  EXPECT_EQ(view.menuCaption["mnuAcquireStart"], "Pause");
  EXPECT_EQ(view.toolTips["Pause"], "Pause");
  EXPECT_EQ(view.panels[2], "Current File: /jobs/frac.mdb");
  ChangeCurrentStatus(session, view, text::StatusAcquiringPaused);
  EXPECT_EQ(view.menuCaption["mnuAcquireStart"], "Resume");
  EXPECT_EQ(view.toolTips["Pause"], "Resume");
}

TEST(Status, OffersTheSummaryReportInReadyOnlyWithALogFile) {
  Session session;
  RecordingView view;
  session.LogFileInUse = "x";
  ChangeCurrentStatus(session, view, text::StatusReady);
  EXPECT_FALSE(view.menuEnabled["mnuViewSummaryReport"]);
  session.LogFileInUse = "xy";
  ChangeCurrentStatus(session, view, text::StatusReady);
  EXPECT_TRUE(view.menuEnabled["mnuViewSummaryReport"]);
  session.LogFileInUse.clear();
  ChangeCurrentStatus(session, view, text::StatusReadyToPlayback);
  EXPECT_TRUE(view.menuEnabled["mnuViewSummaryReport"]);
}

}  // namespace
}  // namespace velk
