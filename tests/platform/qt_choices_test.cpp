// Lists, colours, fonts and progress on the screen.

#include <gtest/gtest.h>

#include <QApplication>
#include <QColorDialog>
#include <QDialogButtonBox>
#include <QFontDialog>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>

#include "platform/dialogs/long_task.h"
#include "platform/loop/system_clock.h"
#include "platform/windows/list_input_box.h"
#include "platform/windows/progress_window.h"
#include "platform/windows/qt_dialogs.h"
#include "support/in_english.h"
#include "support/window_driving.h"

namespace velk {
namespace {

using test::FindControl;

/// Runs `act` once a box of the kind stands; a box that never comes leaves the test's own expectation unmet.
template <class Box>
void WhenShown(std::function<void(Box&)> act) {
  QTimer::singleShot(0, [act = std::move(act)] {
    auto* box = qobject_cast<Box*>(QApplication::activeModalWidget());
    if (box && box->isVisible())
      act(*box);
    else
      WhenShown<Box>(act);
  });
}

class QtChoices : public testing::Test {
 protected:
  QtChoices() { dialogs.SetParent(&parent); }

  QWidget parent;
  Gate gate;
  SystemClock clock{gate};
  test::InBrackets language;
  QtDialogs dialogs{gate, language};
};

TEST_F(QtChoices, GiveTheEntryThatWasChosenFromAList) {
  const ListQuestion question{MessageText{1, "Load"}, "Which?", {"Job", "Цементирование"}};
  WhenShown<ListInputBox>([](ListInputBox& box) {
    EXPECT_EQ(box.windowTitle(), "<Load>");
    FindControl<QListWidget>(box, "List1")->setCurrentRow(1);
    test::Click(box, "cmdOK");
  });
  EXPECT_EQ(dialogs.Choose(question), "Цементирование");
  WhenShown<ListInputBox>([](ListInputBox& box) { QTest::keyClick(&box, Qt::Key_Escape); });
  EXPECT_EQ(dialogs.Choose(question), std::nullopt);
}

TEST_F(QtChoices, GiveAColourInTheProgramsOrderOfBytes) {
  WhenShown<QColorDialog>([](QColorDialog& box) {
    EXPECT_EQ(box.windowTitle(), "Select a color for Flow");
    EXPECT_EQ(box.currentColor(), QColor(0x33, 0x22, 0x11));
    EXPECT_EQ(box.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->text(), "<OK>");
    box.setCurrentColor(QColor(1, 2, 3));
    box.accept();
  });
  EXPECT_EQ(dialogs.Colour("Select a color for Flow", 0x112233), 0x030201);
  WhenShown<QColorDialog>([](QColorDialog& box) { box.reject(); });
  EXPECT_EQ(dialogs.Colour("", 0), std::nullopt);
}

TEST_F(QtChoices, GiveAFont) {
  const FontChoice initial{QApplication::font().family().toStdString(), 14, true, false};
  WhenShown<QFontDialog>([](QFontDialog& box) { box.accept(); });
  EXPECT_EQ(dialogs.Font(initial), initial);
  WhenShown<QFontDialog>([](QFontDialog& box) { box.reject(); });
  EXPECT_EQ(dialogs.Font(initial), std::nullopt);
}

TEST_F(QtChoices, AreNotAskedAtTheEndOfTheProgram) {
  dialogs.SetEnding();
  EXPECT_EQ(dialogs.Choose({}), std::nullopt);
  EXPECT_EQ(dialogs.Colour("", 0), std::nullopt);
  EXPECT_EQ(dialogs.Font({}), std::nullopt);
}

// --- Progress ---

TEST_F(QtChoices, ALongTaskTakesTheWindowBelowFromItsFirstMoment) {
  parent.show();
  const Dialogs::Progress progress(dialogs, "Importing");
  auto* box = parent.findChild<ProgressWindow*>();
  ASSERT_NE(box, nullptr);
  EXPECT_EQ(QApplication::activeModalWidget(), box);
  EXPECT_TRUE(box->testAttribute(Qt::WA_DontShowOnScreen)) << "and nothing flickers";
  EXPECT_FALSE(dialogs.TopIsAnswered());
}

TEST_F(QtChoices, ALongTaskShowsHowFarItIs) {
  Dialogs::Progress progress(dialogs, "Importing");
  progress.Appear();
  progress.Show(MessageText{2, "Reading"}, 0.25);
  auto* box = parent.findChild<ProgressWindow*>();
  EXPECT_TRUE(box->isVisible());
  EXPECT_FALSE(box->testAttribute(Qt::WA_DontShowOnScreen));
  EXPECT_EQ(box->windowTitle(), "Importing");
  EXPECT_EQ(FindControl<QLabel>(*box, "lblDoing")->text(), "<Reading>");
  EXPECT_EQ(FindControl<QProgressBar>(*box, "barDone")->value(), 250);
  progress.Show("Reading", -1);
  EXPECT_EQ(FindControl<QProgressBar>(*box, "barDone")->maximum(), 0) << "nobody knows";
}

TEST_F(QtChoices, ALongTaskIsCancelledByItsButtonByEscapeAndByTheFrame) {
  for (int way = 0; way < 3; ++way) {
    Dialogs::Progress progress(dialogs, "Importing");
    progress.Appear();
    auto* box = parent.findChild<ProgressWindow*>();
    EXPECT_FALSE(progress.IsCancelled());
    if (way == 0) test::Click(*box, "cmdCancel");
    if (way == 1) QTest::keyClick(box, Qt::Key_Escape);
    if (way == 2) box->close();
    EXPECT_TRUE(progress.IsCancelled()) << way;
    EXPECT_TRUE(box->isVisible()) << "it stays until the task has seen it";
  }
}

TEST_F(QtChoices, ALongTaskEndsWithTheProgramAndWithTheWindowBelow) {
  auto owner = std::make_unique<QWidget>();
  dialogs.SetParent(owner.get());
  Dialogs::Progress progress(dialogs, "Importing");
  owner.reset();
  EXPECT_TRUE(progress.IsCancelled());
  progress.Show("gone", 0.5);
  dialogs.SetParent(&parent);
  Dialogs::Progress standing(dialogs, "Importing");
  dialogs.SetEnding();
  EXPECT_TRUE(standing.IsCancelled());
}

// The machine's own clock: what is tested is the time until a press is seen.
TEST_F(QtChoices, ALongTaskSeesCancelWithinASecond) {
  parent.show();
  QTimer::singleShot(350, [&] {
    auto* box = parent.findChild<ProgressWindow*>();
    ASSERT_NE(box, nullptr);
    EXPECT_FALSE(box->testAttribute(Qt::WA_DontShowOnScreen)) << "it has appeared";
    test::Click(*box, "cmdCancel");
  });
  const std::int64_t began = clock.Ticks();
  const auto work = [&] {
    LongTask task(dialogs, clock, "Importing");
    for (long long i = 0; clock.Ticks() - began < 10'000; ++i) task.Step(static_cast<double>(i), 0);
  };
  EXPECT_THROW(work(), TaskCancelled);
  EXPECT_LT(clock.Ticks() - began, 350 + 1000);
}

}  // namespace
}  // namespace velk
