#include "graphs/windows/graph_windows_mdi.h"

#include <QEvent>
#include <QMdiSubWindow>
#include <QScrollBar>
#include <utility>

#include "graphs/window_tiling.h"

namespace velk {

GraphWindowsMdi::GraphWindowsMdi(Session& session, Platform& platform, const Translation& translation, QMdiArea& area,
                                 const ScreenRefresh& refresh, std::function<void()> onHeaderChanged, OpenLog* log)
    : session_(session),
      platform_(platform),
      translation_(translation),
      area_(area),
      onHeaderChanged_(std::move(onHeaderChanged)),
      log_(log),
      refresh_(refresh) {
  area_.viewport()->installEventFilter(this);
}

void GraphWindowsMdi::CreateGraphWindows() {
  for (int graph = 1; graph <= kMaxParameters; ++graph) Unload(graph);
  if (log_ != nullptr) log_->Release();
  std::vector<int> graphs;
  for (int k = 1; k <= session_.GraphCount; ++k) graphs.push_back(session_.GraphList[k]);
  PlaceWindows(graphs, [this](int graph, const QRect& place) { Create(graph, place, 0); });
}

void GraphWindowsMdi::PlaceWindows(const std::vector<int>& graphs,
                                   const std::function<void(int graph, const QRect& place)>& put) {
  const bool fills = session_.FitGraphsToWindows;
  const ChartMeasures measures = MeasuresOf(session_);
  std::vector<int> heights;
  for (const int graph : graphs) {
    const int curves = session_.GraphCurveCount[graph];
    heights.push_back(fills ? ChartView::LeastHeight(measures, curves) : ChartView::WantedHeight(measures, curves));
  }
  for (QScrollBar* bar : {area_.horizontalScrollBar(), area_.verticalScrollBar()}) bar->setValue(0);
  const QSize room = area_.viewport()->size();
  const auto places =
      fills ? FillWithWindows(room.width(), room.height(), heights) : TileWindows(room.width(), room.height(), heights);
  for (std::size_t i = 0; i < graphs.size(); ++i) {
    const WindowPlace& place = places[i];
    placed_[graphs[i]] = QRect(place.x, place.y, place.width, place.height);
    put(graphs[i], placed_[graphs[i]]);
  }
}

bool GraphWindowsMdi::StandWherePlaced() const {
  const QPoint scrolled(area_.horizontalScrollBar()->value(), area_.verticalScrollBar()->value());
  bool any = false;
  for (int graph = 1; graph <= kMaxParameters; ++graph) {
    const GraphFormNew* form = Form(graph);
    if (form == nullptr) continue;
    const QWidget* window = form->parentWidget();
    any = true;
    if (window->isMaximized() || window->isMinimized()) return false;
    if (window->geometry().translated(scrolled) != placed_[graph]) return false;
  }
  return any;
}

bool GraphWindowsMdi::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize && StandWherePlaced()) FollowSoon();
  return QObject::eventFilter(watched, event);
}

/// Behind the area's own work on its new size.
void GraphWindowsMdi::FollowSoon() {
  if (std::exchange(willFollow_, true)) return;
  QMetaObject::invokeMethod(
      this, [this] { FollowArea(); }, Qt::QueuedConnection);
}

void GraphWindowsMdi::FollowArea() {
  willFollow_ = false;
  if (!StandWherePlaced()) return;
  std::vector<int> graphs;
  for (int k = 1; k <= session_.GraphCount; ++k)
    if (Form(session_.GraphList[k]) != nullptr) graphs.push_back(session_.GraphList[k]);
  PlaceWindows(graphs, [this](int graph, const QRect& place) { Form(graph)->parentWidget()->setGeometry(place); });
}

void GraphWindowsMdi::FollowLooks() {
  const bool followsArea = StandWherePlaced();
  for (int graph = 1; graph <= kMaxParameters; ++graph)
    if (GraphFormNew* form = Form(graph)) form->FollowLooks();
  if (followsArea) FollowArea();
}

void GraphWindowsMdi::UnloadAll() {
  for (int graph = 1; graph <= kMaxParameters; ++graph) {
    if (forms_[graph].isNull()) continue;
    Unload(graph);
    platform_.clock.Yield();
  }
  if (log_ != nullptr) log_->Release();
}

void GraphWindowsMdi::Rebuild(int graphNumber) {
  const QPointer<GraphFormNew> form = forms_[graphNumber];
  if (form.isNull() || session_.GraphForms[graphNumber] == nullptr) return;
  const QRect place = form->parentWidget()->geometry();
  const double timeOrigin = form->TimeOrigin();
  Unload(graphNumber);
  if (session_.GraphCurveCount[graphNumber] > 0) Create(graphNumber, place, timeOrigin);
}

GraphFormNew* GraphWindowsMdi::Form(int graphNumber) const {
  return session_.GraphForms[graphNumber] != nullptr ? forms_[graphNumber].data() : nullptr;
}

void GraphWindowsMdi::Open(int graphNumber, const QRect& place, double timeOrigin) {
  placed_[graphNumber] = place;
  Create(graphNumber, place, timeOrigin);
}

void GraphWindowsMdi::Create(int graphNumber, const QRect& place, double timeOrigin) {
  auto* form = new GraphFormNew(session_, platform_, translation_, graphNumber, refresh_, onHeaderChanged_, log_);
  QMdiSubWindow* window = area_.addSubWindow(form);
  // The window itself says when it may be deleted.
  window->setAttribute(Qt::WA_DeleteOnClose, false);
  window->setGeometry(place);
  // One that filled the area goes back to where it stood, while the area may have another size.
  connect(window, &QMdiSubWindow::windowStateChanged, this, [this](Qt::WindowStates before, Qt::WindowStates now) {
    if ((before ^ now) & (Qt::WindowMaximized | Qt::WindowMinimized)) FollowSoon();
  });
  forms_[graphNumber] = form;
  if (onCreated) onCreated(*form);
  form->Load(timeOrigin);
  window->show();
}

void GraphWindowsMdi::Unload(int graphNumber) {
  const QPointer<GraphFormNew> form = forms_[graphNumber];
  forms_[graphNumber] = nullptr;
  // A window that the user has closed is on its way out already.
  if (form.isNull() || session_.GraphForms[graphNumber] == nullptr) return;
  form->parentWidget()->close();
}

}  // namespace velk
