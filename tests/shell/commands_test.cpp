#include "shell/commands.h"

#include <gtest/gtest.h>

#include <QMenu>
#include <set>
#include <stdexcept>
#include <string>

#include "model/texts.h"
#include "shell/shell_rig.h"

namespace velk {
namespace {

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
    {"mnuAcquireStop", "....111"},      {"mnuAcquireRecord", "0111000"},      {"mnuAcquireComment", "0111111"},
    {"mnuEditOPCServer", "1000000"},
};

constexpr MessageText kStatuses[] = {
    text::StatusReady,           text::StatusReadyToAcquire, text::StatusAcquiringData,    text::StatusAcquiringPaused,
    text::StatusReadyToPlayback, text::StatusPlayingBack,    text::StatusPlayingBackPaused};

std::map<std::string_view, bool> Forced(const MessageText& status, const Session& session = {}) {
  return ForcedStates(CommandTable(), status, session);
}

// --- What a status forces ---

TEST(CommandTable, ForcesEveryMenuItemAsTheStatusSays) {
  for (std::size_t column = 0; column < std::size(kStatuses); ++column) {
    const auto forced = Forced(kStatuses[column]);
    for (const Expectation& row : kTable) {
      const auto found = forced.find(row.item);
      if (row.states[column] == '.')
        EXPECT_EQ(found, forced.end()) << row.item << " in " << kStatuses[column].english;
      else
        EXPECT_TRUE(found != forced.end() && found->second == (row.states[column] == '1'))
            << row.item << " in " << kStatuses[column].english;
    }
  }
}

TEST(CommandTable, ForcesNothingElseButTheSummaryReport) {
  std::set<std::string_view> known = {"mnuViewSummaryReport"};
  for (const Expectation& row : kTable) known.insert(row.item);
  for (const MessageText& status : kStatuses)
    for (const auto& [name, on] : Forced(status)) EXPECT_TRUE(known.contains(name)) << name;
}

TEST(CommandTable, ForcesFourItemsEvenInAStatusWithoutAColumn) {
  for (const MessageText& status : {text::StatusCheckingHardware, text::StatusConfirmingFileFormat}) {
    const std::map<std::string_view, bool> expected = {{"mnuEditClear", false},
                                                       {"mnuEditDeleteTemplate", true},
                                                       {"mnuEditSaveTemplate", true},
                                                       {"mnuEditAutoDetect", false}};
    EXPECT_EQ(Forced(status), expected);
  }
}

TEST(CommandTable, OffersTheSummaryReportInReadyOnlyWithALogFile) {
  Session session;
  session.LogFileInUse = "x";
  EXPECT_FALSE(Forced(text::StatusReady, session).at("mnuViewSummaryReport"));
  session.LogFileInUse = "xy";
  EXPECT_TRUE(Forced(text::StatusReady, session).at("mnuViewSummaryReport"));
  EXPECT_TRUE(Forced(text::StatusReadyToPlayback).at("mnuViewSummaryReport"));
}

TEST(CommandTable, NamesEachCommandOnce) {
  std::set<std::string_view> names;
  for (const CommandRow& row : CommandTable()) {
    EXPECT_TRUE(names.insert(row.Name()).second) << row.Name();
    EXPECT_EQ(row.states.size(), std::size(kStatuses)) << row.Name();
  }
}

// --- On menus and buttons ---

class CommandsTest : public testing::Test {
 protected:
  CommandsTest() {
    for (const char* name : {"mnuGo", "mnuMark", "mnuAsk"}) items[name] = menu.addAction(name);
    items["mnuMark"]->setCheckable(true);
    items["mnuMenu"] = menu.menuAction();
    for (const char* key : {"Go", "Free"}) buttons[key] = menu.addAction(key);
  }

  QMenu menu;
  ActionsByName items, buttons;
  Session session;
  const std::vector<CommandRow> table = {
      {.item = "mnuGo", .key = "Go", .states = "10.....", .keyFollows = true},
      {.item = "mnuMark", .whileConnecting = true},
      {.item = "mnuAsk", .states = "1......", .condition = [](const Session& asked) { return asked.AskOnExit; }},
      {.key = "Free"},
  };
  int runs = 0;
};

TEST_F(CommandsTest, AreOffUntilTheirWorkIsThere) {
  Commands commands(items, buttons, session, test::English(), table);
  EXPECT_FALSE(items["mnuGo"]->isEnabled() || buttons["Go"]->isEnabled() || buttons["Free"]->isEnabled());
  commands.ShowStatus(text::StatusReady);
  EXPECT_FALSE(items["mnuGo"]->isEnabled()) << "the status offers nothing that isn't there";
  commands.Bind("mnuGo", [this] { ++runs; });
  commands.Bind("Free", [this] { ++runs; });
  EXPECT_TRUE(items["mnuGo"]->isEnabled() && buttons["Go"]->isEnabled() && buttons["Free"]->isEnabled());
  for (QAction* action : {items["mnuGo"], buttons["Go"], buttons["Free"]}) action->trigger();
  EXPECT_EQ(runs, 3);
}

TEST_F(CommandsTest, AreOnAndOffWithTheStatusTogetherWithTheButtonThatFollows) {
  Commands commands(items, buttons, session, test::English(), table);
  commands.Bind("mnuGo", [this] { ++runs; });
  commands.ShowStatus(text::StatusReadyToAcquire);
  EXPECT_FALSE(items["mnuGo"]->isEnabled() || buttons["Go"]->isEnabled());
  buttons["Go"]->trigger();
  EXPECT_EQ(runs, 0);
  commands.ShowStatus(text::StatusReady);
  EXPECT_TRUE(items["mnuGo"]->isEnabled() && buttons["Go"]->isEnabled());
}

TEST_F(CommandsTest, AreAlsoOnWhereAnotherConditionHolds) {
  Commands commands(items, buttons, session, test::English(), table);
  commands.Bind("mnuAsk", [] {});
  commands.ShowStatus(text::StatusReady);
  bool holds = false;
  commands.AllowAlso("mnuAsk", [&] { return holds; });
  session.AskOnExit = false;
  emit menu.aboutToShow();
  EXPECT_FALSE(items["mnuAsk"]->isEnabled());
  holds = true;
  emit menu.aboutToShow();
  EXPECT_TRUE(items["mnuAsk"]->isEnabled());
  session.AskOnExit = true;
  holds = false;
  emit menu.aboutToShow();
  EXPECT_TRUE(items["mnuAsk"]->isEnabled());
  EXPECT_THROW(commands.AllowAlso("mnuGo", [] { return true; }), std::logic_error);
}

TEST_F(CommandsTest, AskTheirConditionWhenTheirMenuOpens) {
  Commands commands(items, buttons, session, test::English(), table);
  commands.Bind("mnuAsk", [] {});
  session.AskOnExit = false;
  emit menu.aboutToShow();
  EXPECT_FALSE(items["mnuAsk"]->isEnabled());
  session.AskOnExit = true;
  emit menu.aboutToShow();
  EXPECT_TRUE(items["mnuAsk"]->isEnabled());
}

TEST_F(CommandsTest, RunWithEachChangeOfAMark) {
  Commands commands(items, buttons, session, test::English(), table);
  commands.Bind("mnuMark", [this] { ++runs; });
  items["mnuMark"]->trigger();
  items["mnuMark"]->setChecked(false);
  EXPECT_EQ(runs, 2);
}

TEST_F(CommandsTest, DontWorkWhileConnectIsUnderWayUnlessTheyAreToldTo) {
  Commands commands(items, buttons, session, test::English(), table);
  commands.isConnecting = [] { return true; };
  for (const char* name : {"mnuGo", "mnuMark", "Free"}) commands.Bind(name, [this] { ++runs; });
  items["mnuGo"]->trigger();
  buttons["Free"]->trigger();
  EXPECT_EQ(runs, 0);
  items["mnuMark"]->trigger();
  EXPECT_EQ(runs, 1);
}

// --- Names that nobody knows ---

TEST_F(CommandsTest, FailAtTheStartForANameThatNobodyKnows) {
  const auto make = [&](const std::vector<CommandRow>& rows) {
    Commands(items, buttons, session, test::English(), rows);
  };
  auto rows = table;
  rows.push_back({.item = "mnuNowhere"});
  EXPECT_THROW(make(rows), std::logic_error) << "a row without its menu item";
  rows.back() = {.key = "Nowhere"};
  EXPECT_THROW(make(rows), std::logic_error) << "a row without its button";
  rows.pop_back();
  EXPECT_NO_THROW(make(rows));
  rows.erase(rows.begin() + 1);
  EXPECT_THROW(make(rows), std::logic_error) << "a menu item without a row";
  Commands commands(items, buttons, session, test::English(), table);
  EXPECT_THROW(commands.Bind("mnuNowhere", [] {}), std::logic_error);
  commands.Bind("mnuGo", [] {});
  EXPECT_THROW(commands.Bind("mnuGo", [] {}), std::logic_error) << "bound twice";
}

// --- The whole program ---

TEST(CommandsOfTheProgram, FollowTheStatusWhereTheyHaveTheirWork) {
  test::ShellRig rig;
  rig.Start();
  rig.Window().SetButtonVisible("RecordToDB", true);  // its item is off where the button is hidden
  for (std::size_t column = 0; column < std::size(kStatuses); ++column) {
    rig.Window().ShowStatus(kStatuses[column]);
    for (const Expectation& row : kTable) {
      if (row.states[column] == '.') continue;
      EXPECT_EQ(rig.Window().MenuItem(row.item)->isEnabled(),
                row.states[column] == '1' && rig.Window().Table().HasWork(row.item))
          << row.item << " in " << kStatuses[column].english;
    }
  }
}

TEST(CommandsOfTheProgram, HaveTheWorkThatIsBuilt) {
  test::ShellRig rig;
  rig.Start();
  std::set<std::string_view> without;
  for (const CommandRow& row : CommandTable())
    if (!rig.Window().Table().HasWork(row.Name())) without.insert(row.Name());
  EXPECT_EQ(without, std::set<std::string_view>());
}

TEST(CommandsOfTheProgram, LetRecordAndExitButtonsFollowTheirMenuItems) {
  test::ShellRig rig;
  rig.Start();
  EXPECT_TRUE(rig.Window().Button("Record")->isEnabled());
  EXPECT_TRUE(rig.Window().Button("Exit")->isEnabled());
  rig.Window().ShowStatus(text::StatusAcquiringData);
  EXPECT_FALSE(rig.Window().Button("Record")->isEnabled());
  EXPECT_FALSE(rig.Window().Button("Exit")->isEnabled());
  EXPECT_TRUE(rig.Window().Button("Acquire")->isEnabled()) << "it tells why it can't connect now";
}

TEST(CommandsOfTheProgram, RefuseAnItemOrAButtonThatIsNotThere) {
  test::ShellRig rig;
  rig.Start();
  MainForm& form = rig.Window();
  EXPECT_THROW(form.SetMenuEnabled("mnuNothing", true), std::logic_error);
  EXPECT_THROW(form.SetMenuCaption("mnuNothing", text::Pause), std::logic_error);
  EXPECT_THROW(form.SetButtonImage("Nothing", 1), std::logic_error);
  EXPECT_THROW(form.SetButtonVisible("Nothing", true), std::logic_error);
  EXPECT_THROW(form.SetButtonEnabled("Nothing", true), std::logic_error);
  EXPECT_THROW(form.SetButtonToolTip("Nothing", text::Pause), std::logic_error);
}

}  // namespace
}  // namespace velk
