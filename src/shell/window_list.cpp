#include "shell/window_list.h"

#include <QAction>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPointer>
#include <QScrollBar>
#include <QStyle>
#include <algorithm>

#include "base/text_qt.h"
#include "graphs/windows/graph_form_new.h"
#include "model/status.h"
#include "model/texts.h"
#include "shell/main_form.h"
#include "shell/texts.h"
#include "shell/window_places.h"

namespace velk {

namespace {

void BringToFront(QMdiSubWindow& window) {
  if (window.isMinimized()) window.showNormal();
  window.mdiArea()->setActiveSubWindow(&window);
}

/// "&3 Pressure": the first nine can be chosen by their number. A title's own "&" is no mark.
QString Caption(qsizetype number, QString title) {
  title.replace('&', QStringLiteral("&&"));
  const QString mark = number <= 9 ? QStringLiteral("&") : QString();
  return mark + QString::number(number) + ' ' + title;
}

}  // namespace

WindowList::WindowList(MainForm& form, const Session& session)
    : form_(form), session_(session), list_(form.MenuItem("mnuWindow1")->menu()) {
  const auto bind = [this](const char* item, void (WindowList::*procedure)()) {
    form_.Table().Bind(item, [this, procedure] { (this->*procedure)(); });
  };
  bind("mnuWindowCascade", &WindowList::mnuWindowCascade_Click);
  bind("mnuWindowTileVertically", &WindowList::mnuWindowTileVertically_Click);
  bind("mnuWindowTileHorizontally", &WindowList::mnuWindowTileHorizontally_Click);
  bind("mnuWindowArrange", &WindowList::mnuWindowArrange_Click);
  bind("mnuWindowNext", &WindowList::mnuWindowNext_Click);
  bind("mnuAcquireComment", &WindowList::mnuAcquireComment_Click);
  QObject::connect(form_.MenuItem("mnuWindow")->menu(), &QMenu::aboutToShow, &form_, [this] { FillList(); });
  FillList();
}

QList<QMdiSubWindow*> WindowList::Open() const {
  QList<QMdiSubWindow*> open;
  for (QMdiSubWindow* window : form_.GraphArea().subWindowList())
    if (window->isVisible()) open += window;
  return open;
}

void WindowList::FillList() {
  list_->clear();
  const auto open = Open();
  const QMdiSubWindow* active = form_.GraphArea().activeSubWindow();
  for (QMdiSubWindow* window : open) {
    QAction* item = list_->addAction(Caption(list_->actions().size() + 1, window->windowTitle()));
    item->setCheckable(true);
    item->setChecked(window == active);
    // The window may be gone by the time that its entry is chosen.
    QObject::connect(item, &QAction::triggered, list_, [window = QPointer<QMdiSubWindow>(window)] {
      if (window) BringToFront(*window);
    });
  }
  AddClosed();
  list_->menuAction()->setEnabled(!list_->isEmpty());
}

/// By the name of the graph's first curve, which is the title of its window. The graphs of a job or playback that has
/// ended would stay empty.
void WindowList::AddClosed() {
  if (StatusIs(session_, text::StatusReady)) return;
  for (int k = 1; k <= session_.GraphCount; ++k) {
    const int graph = session_.GraphList[static_cast<std::size_t>(k)];
    if (!onReopen || session_.GraphForms[static_cast<std::size_t>(graph)] != nullptr) continue;
    const int first = session_.GraphSlots[1][static_cast<std::size_t>(graph)];
    QString name = ToQt(session_.CurrentParameters[static_cast<std::size_t>(first)].name);
    name.replace('&', QStringLiteral("&&"));
    QAction* item = list_->addAction(form_.Shown(text::ReopenGraph) + name);
    QObject::connect(item, &QAction::triggered, list_, [this, graph] { onReopen(graph); });
  }
}

void WindowList::mnuWindowCascade_Click() {
  const QList<QMdiSubWindow*> windows = Arranged();
  if (windows.isEmpty()) return;
  const int title = windows.first()->style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, windows.first());
  QSize room = form_.GraphArea().viewport()->size();
  room.rheight() -= ArrangeIcons();
  Place(windows, CascadePlaces(room, static_cast<int>(windows.size()), title));
  for (QMdiSubWindow* window : windows) window->raise();
  form_.GraphArea().setActiveSubWindow(windows.last());
}

void WindowList::mnuWindowTileVertically_Click() {
  Tile(Qt::Vertical);
}

void WindowList::mnuWindowTileHorizontally_Click() {
  Tile(Qt::Horizontal);
}

void WindowList::mnuWindowArrange_Click() {
  ArrangeIcons();
}

void WindowList::mnuWindowNext_Click() {
  form_.GraphArea().activateNextSubWindow();
}

void WindowList::mnuAcquireComment_Click() {
  const QMdiSubWindow* active = form_.GraphArea().activeSubWindow();
  if (auto* graph = active ? qobject_cast<GraphFormNew*>(active->widget()) : nullptr) graph->AddComment();
}

/// The places begin at the area's top, and stand beside the bar by which those beyond its bottom are reached.
void WindowList::Tile(Qt::Orientation direction) {
  QMdiArea& area = form_.GraphArea();
  for (QScrollBar* bar : {area.verticalScrollBar(), area.horizontalScrollBar()}) bar->setValue(0);
  const QList<QMdiSubWindow*> windows = Arranged();
  QSize least;
  for (const QMdiSubWindow* window : windows)
    if (const auto* graph = qobject_cast<const GraphFormNew*>(window->widget()))
      least = least.expandedTo(graph->LeastSize());
  const auto places = [&](QSize room) { return TilePlaces(room, static_cast<int>(windows.size()), direction, least); };
  const QSize room = area.maximumViewportSize() - QSize(0, ArrangeIcons());
  std::vector<QRect> found = places(room);
  const bool scrolls = !found.empty() && found.back().bottom() >= room.height();
  if (scrolls) found = places(room - QSize(area.verticalScrollBar()->sizeHint().width(), 0));
  Place(windows, found);
}

/// Those that are no icons.
QList<QMdiSubWindow*> WindowList::Arranged() const {
  QList<QMdiSubWindow*> windows = Open();
  windows.removeIf([](const QMdiSubWindow* window) { return window->isMinimized(); });
  return windows;
}

void WindowList::Place(const QList<QMdiSubWindow*>& windows, const std::vector<QRect>& places) {
  for (qsizetype i = 0; i < windows.size(); ++i) {
    if (windows[i]->isMaximized()) windows[i]->showNormal();
    windows[i]->setGeometry(places[static_cast<std::size_t>(i)]);
  }
}

int WindowList::ArrangeIcons() {
  QList<QMdiSubWindow*> icons = Open();
  icons.removeIf([](const QMdiSubWindow* window) { return !window->isMinimized(); });
  if (icons.isEmpty()) return 0;
  const QSize room = form_.GraphArea().viewport()->size();
  const auto places = IconPlaces(room, static_cast<int>(icons.size()), icons.first()->size());
  for (qsizetype i = 0; i < icons.size(); ++i) icons[i]->move(places[static_cast<std::size_t>(i)].topLeft());
  return room.height() - places.back().top();
}

}  // namespace velk
