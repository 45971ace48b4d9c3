#include "graphs/windows/graph_windows_mdi.h"

#include <QMdiSubWindow>

#include "graphs/window_tiling.h"

namespace velk {

GraphWindowsMdi::GraphWindowsMdi(Session& session, Platform& platform, const Translation& translation, QMdiArea& area,
                                 std::function<void()> onHeaderChanged, OpenLog* log)
    : session_(session),
      platform_(platform),
      translation_(translation),
      area_(area),
      onHeaderChanged_(std::move(onHeaderChanged)),
      log_(log) {
}

void GraphWindowsMdi::CreateGraphWindows() {
  for (int graph = 1; graph <= kMaxParameters; ++graph) Unload(graph);
  if (log_ != nullptr) log_->Release();
  std::vector<int> heights;
  for (int k = 1; k <= session_.GraphCount; ++k)
    heights.push_back(ChartView::WantedHeight(MeasuresOf(session_), session_.GraphCurveCount[session_.GraphList[k]]));
  const QSize room = area_.viewport()->size();
  const auto places = TileWindows(room.width(), room.height(), heights);
  for (int k = 1; k <= session_.GraphCount; ++k) {
    const WindowPlace& place = places[k - 1];
    Create(session_.GraphList[k], QRect(place.x, place.y, place.width, place.height), 0);
  }
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

void GraphWindowsMdi::Create(int graphNumber, const QRect& place, double timeOrigin) {
  auto* form = new GraphFormNew(session_, platform_, translation_, graphNumber, onHeaderChanged_, log_);
  QMdiSubWindow* window = area_.addSubWindow(form);
  // The window itself says when it may be deleted.
  window->setAttribute(Qt::WA_DeleteOnClose, false);
  window->setGeometry(place);
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
