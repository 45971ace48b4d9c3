#include "shell/window_list.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>

#include "model/texts.h"
#include "shell/main_form.h"
#include "support/fake_graphs.h"
#include "support/in_english.h"
#include "support/still_screen.h"

namespace velk {
namespace {

class WindowListTest : public testing::Test {
 protected:
  WindowListTest() {
    form.resize(1280, 800);
    form.show();
  }

  QMdiSubWindow* Add(const QString& title) {
    auto* content = new QWidget;
    content->setWindowTitle(title);
    QMdiSubWindow* window = form.GraphArea().addSubWindow(content);
    window->show();
    QApplication::processEvents();
    return window;
  }
  /// The entries of the list as the menu shows them.
  QStringList Entries() {
    emit form.MenuItem("mnuWindow")->menu()->aboutToShow();
    QStringList entries;
    for (const QAction* item : List()->actions()) entries += item->text();
    return entries;
  }
  QMenu* List() { return form.MenuItem("mnuWindow1")->menu(); }
  QSize Room() { return form.GraphArea().viewport()->size(); }
  void Choose(const char* item) {
    form.MenuItem(item)->trigger();
    QApplication::processEvents();
  }

  Session session;
  test::StillScreen screen;
  MainForm form{test::English(), session, screen.refresh};
  WindowList list{form, session};
};

TEST_F(WindowListTest, NamesTheOpenWindowsAndMarksTheActiveOne) {
  EXPECT_TRUE(Entries().isEmpty());
  EXPECT_FALSE(form.MenuItem("mnuWindow1")->isEnabled()) << "there is nothing to choose";
  Add("Pressure");
  QMdiSubWindow* flow = Add("Flow & rate");
  EXPECT_EQ(Entries(), (QStringList{"&1 Pressure", "&2 Flow && rate"}));
  EXPECT_TRUE(form.MenuItem("mnuWindow1")->isEnabled());
  EXPECT_FALSE(List()->actions()[0]->isChecked());
  EXPECT_TRUE(List()->actions()[1]->isChecked());
  flow->close();
  EXPECT_EQ(Entries(), QStringList{"&1 Pressure"});
}

TEST_F(WindowListTest, MarksOnlyTheFirstNineByANumberKey) {
  for (int i = 0; i < 11; ++i) Add("Graph");
  EXPECT_EQ(Entries()[8], "&9 Graph");
  EXPECT_EQ(Entries()[9], "10 Graph");
}

TEST_F(WindowListTest, BringsTheChosenWindowToTheFrontAlsoFromAnIcon) {
  QMdiSubWindow* pressure = Add("Pressure");
  Add("Flow rate");
  pressure->showMinimized();
  Entries();
  List()->actions()[0]->trigger();
  EXPECT_EQ(form.GraphArea().activeSubWindow(), pressure);
  EXPECT_FALSE(pressure->isMinimized());
  EXPECT_EQ(form.GraphArea().subWindowList(QMdiArea::StackingOrder).last(), pressure);
}

TEST_F(WindowListTest, AnEntryWhoseWindowIsGoneDoesNothing) {
  delete Add("Pressure");
  Add("Flow rate");
  Entries();
  QAction* entry = List()->actions()[0];
  delete form.GraphArea().subWindowList().first();
  entry->trigger();
  EXPECT_EQ(form.GraphArea().activeSubWindow(), nullptr);
}

TEST_F(WindowListTest, TilesSideBySideAndBelowEachOther) {
  QMdiSubWindow* one = Add("1");
  QMdiSubWindow* two = Add("2");
  Choose("mnuWindowTileVertically");
  EXPECT_EQ(one->geometry(), QRect(0, 0, Room().width() / 2, Room().height()));
  EXPECT_EQ(two->geometry().left(), Room().width() / 2);
  EXPECT_EQ(two->geometry().right(), Room().width() - 1);
  Choose("mnuWindowTileHorizontally");
  EXPECT_EQ(one->geometry(), QRect(0, 0, Room().width(), Room().height() / 2));
  EXPECT_EQ(two->geometry().bottom(), Room().height() - 1);
}

TEST_F(WindowListTest, TilesAWindowThatFilledTheAreaToo) {
  QMdiSubWindow* one = Add("1");
  QMdiSubWindow* two = Add("2");
  two->showMaximized();
  Choose("mnuWindowTileVertically");
  EXPECT_FALSE(two->isMaximized());
  EXPECT_FALSE(one->geometry().intersects(two->geometry()));
}

TEST_F(WindowListTest, CascadesSoThatEveryTitleIsSeen) {
  QMdiSubWindow* one = Add("1");
  QMdiSubWindow* two = Add("2");
  Choose("mnuWindowCascade");
  EXPECT_NE(one->pos(), two->pos());
  EXPECT_TRUE(one->geometry().intersects(two->geometry()));
  for (const QMdiSubWindow* window : {one, two}) {
    EXPECT_GE(window->height(), Room().height() * 3 / 4) << "a title bar alone shows nothing";
    EXPECT_TRUE(QRect({0, 0}, Room()).contains(window->geometry()));
  }
}

TEST_F(WindowListTest, ArrangesIconsAlongTheBottomAndTilesAboveThem) {
  QMdiSubWindow* one = Add("1");
  QMdiSubWindow* two = Add("2");
  QMdiSubWindow* three = Add("3");
  for (QMdiSubWindow* window : {one, two}) window->showMinimized();
  one->move(300, 100);
  Choose("mnuWindowArrange");
  EXPECT_EQ(one->pos(), QPoint(0, Room().height() - one->height()));
  EXPECT_EQ(two->pos(), QPoint(one->width(), Room().height() - two->height()));
  Choose("mnuWindowTileHorizontally");
  EXPECT_EQ(three->geometry(), QRect(0, 0, Room().width(), Room().height() - one->height()));
  EXPECT_TRUE(one->isMinimized());
}

TEST_F(WindowListTest, ArrangesOneWindowAndManyIntoTheRoomThereIs) {
  const auto tiles = [this](const char* item) {
    Choose(item);
    qint64 area = 0;
    for (const QMdiSubWindow* window : form.GraphArea().subWindowList()) {
      EXPECT_TRUE(QRect({0, 0}, Room()).contains(window->geometry())) << item;
      area += qint64{window->width()} * window->height();
    }
    EXPECT_EQ(area, qint64{Room().width()} * Room().height()) << item;
  };
  QMdiSubWindow* first = Add("1");
  for (const char* item : {"mnuWindowTileVertically", "mnuWindowTileHorizontally"}) {
    tiles(item);
    EXPECT_EQ(first->geometry(), QRect({0, 0}, Room()));
  }
  for (int i = 2; i <= 12; ++i) Add(QString::number(i));
  for (const char* item : {"mnuWindowTileVertically", "mnuWindowTileHorizontally"}) tiles(item);
  Choose("mnuWindowCascade");
  for (const QMdiSubWindow* window : form.GraphArea().subWindowList())
    EXPECT_TRUE(QRect({0, 0}, Room()).intersects(window->geometry()));
}

TEST_F(WindowListTest, ArrangesNothingWhereNothingIsOpen) {
  for (const char* item :
       {"mnuWindowCascade", "mnuWindowTileVertically", "mnuWindowTileHorizontally", "mnuWindowArrange"})
    Choose(item);
  EXPECT_TRUE(form.GraphArea().subWindowList().isEmpty());
}

TEST_F(WindowListTest, OffersGraphsThatWereClosedAgain) {
  test::FakeGraphWindow open;
  session.GraphCount = 2;
  session.GraphList[1] = 3;
  session.GraphList[2] = 5;
  session.GraphForms[3] = &open;
  session.GraphSlots[1][5] = 7;
  session.CurrentParameters[7].name = "Flow & rate";
  std::vector<int> reopened;
  EXPECT_TRUE(Entries().isEmpty()) << "nobody opens them";
  list.onReopen = [&](int graph) { reopened.push_back(graph); };
  Add("Pressure");
  EXPECT_EQ(Entries(), (QStringList{"&1 Pressure", "Open Again: Flow && rate"}));
  List()->actions()[1]->trigger();
  EXPECT_EQ(reopened, std::vector<int>{5});
  session.CurrentStatus = text::StatusReady;
  EXPECT_EQ(Entries(), QStringList{"&1 Pressure"}) << "the job has ended: its graph would stay empty";
}

}  // namespace
}  // namespace velk
