#include "shell/main_place.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QScreen>

#include "graphs/windows/graph_form_new.h"
#include "shell/shell_rig.h"

namespace velk {
namespace {

const QRect kSmall(0, 0, 1024, 740), kLarge(1024, 0, 1920, 1050);
constexpr QSize kWanted(1280, 800);

TEST(MainPlaces, ComeBackFromTheirText) {
  for (const MainPlace& place : {MainPlace{{12, -5, 1280, 800}, false}, MainPlace{{-1900, 40, 1024, 700}, true}})
    EXPECT_EQ(PlaceOf(TextOf(place)), place);
  EXPECT_EQ(TextOf({{12, -5, 1280, 800}, true}), "12 -5 1280 800 maximised");
}

TEST(MainPlaces, AreNoneWhereTheTextIsNone) {
  for (const char* text : {"", "1 2 3", "a b c d", "1 2 1280 800 maximised x", "1 2 1280 800 wide", "0 0 10 10",
                           "0 0 -1280 800", "99999999 0 1280 800"})
    EXPECT_EQ(PlaceOf(text), MainPlace{}) << text;
}

TEST(FirstPlace, IsTheMiddleOfAScreenThatIsLargeEnough) {
  EXPECT_EQ(PlaceOnScreens({}, kWanted, {kLarge}), (MainPlace{{1024 + 320, 125, 1280, 800}, false}));
}

TEST(FirstPlace, FillsAScreenThatIsTooSmall) {
  const MainPlace place = PlaceOnScreens({}, kWanted, {kSmall, kLarge});
  EXPECT_TRUE(place.isMaximised);
  EXPECT_TRUE(kSmall.contains(place.normal));
}

TEST(LaterPlace, IsWhereTheWindowWasLeft) {
  const MainPlace left{{1100, 100, 1000, 700}, false};
  EXPECT_EQ(PlaceOnScreens(left, kWanted, {kSmall, kLarge}), left);
  const MainPlace filled{{1100, 100, 1000, 700}, true};
  EXPECT_EQ(PlaceOnScreens(filled, kWanted, {kSmall, kLarge}), filled);
}

TEST(LaterPlace, IsWithinTheScreenThatIsLeft) {
  // The second screen was unplugged.
  const MainPlace place = PlaceOnScreens({{1100, 100, 1000, 700}, false}, kWanted, {kSmall});
  EXPECT_TRUE(kSmall.contains(place.normal));
  EXPECT_EQ(place.normal.size(), QSize(1000, 700));
  // It reached over the edge.
  EXPECT_EQ(PlaceOnScreens({{500, 300, 1000, 700}, false}, kWanted, {kSmall}).normal, QRect(24, 40, 1000, 700));
  // It was larger than what there is.
  EXPECT_EQ(PlaceOnScreens({{0, 0, 1800, 1000}, false}, kWanted, {kSmall}).normal, kSmall);
}

TEST(AnyPlace, IsTheWantedOneWhereNoScreenIsKnown) {
  EXPECT_EQ(PlaceOnScreens({}, kWanted, {}), (MainPlace{{0, 0, 1280, 800}, false}));
}

TEST(TheMainWindow, FillsAScreenThatIsTooSmallAndComesBackWhereItWasLeft) {
  test::ShellRig rig;
  rig.staysOnItsScreen = true;
  rig.Start();
  const QRect room = rig.Window().screen()->availableGeometry();
  ASSERT_LT(room.width(), 1280) << "of the offscreen platform";
  EXPECT_TRUE(rig.Window().isMaximized());
  EXPECT_TRUE(room.contains(rig.Window().geometry()));
  rig.Window().setWindowState(Qt::WindowNoState);
  rig.Window().setGeometry(40, 60, 700, 500);
  QApplication::processEvents();
  rig.dialogs.Expect("Are you sure you want to exit VELK?", Answer::Yes);
  rig.Choose("mnuFileExit");
  rig.Start();
  EXPECT_FALSE(rig.Window().isMaximized());
  EXPECT_EQ(rig.Window().geometry(), QRect(40, 60, 700, 500));
}

TEST(TheViewMenu, SwitchesTheLooksOfChartsAndKeepsThemAtOnce) {
  test::ShellRig rig;
  rig.Start();
  rig.Connect();
  const auto onDisk = [&](const char* key) {
    SettingsStore store(rig.folder.File("settings"));
    return store.Get("VELK2", "General", key, "missing");
  };
  auto& graph = dynamic_cast<GraphFormNew&>(*rig.State().GraphForms[1]);
  EXPECT_TRUE(rig.Window().MenuItem("mnuViewFitGraphs")->isChecked());
  EXPECT_TRUE(graph.View().FillsWindow());
  rig.Choose("mnuViewFitGraphs");
  EXPECT_FALSE(graph.View().FillsWindow());
  EXPECT_EQ(onDisk("FitGraphsToWindows"), "False");
  EXPECT_FALSE(rig.Window().MenuItem("mnuViewNightColours")->isChecked());
  rig.Choose("mnuViewNightColours");
  EXPECT_EQ(graph.View().PlotArea().grab().toImage().pixel(200, 100) & 0xFFFFFF, 0x14181Du);
  EXPECT_EQ(onDisk("NightColours"), "True");
}

}  // namespace
}  // namespace velk
