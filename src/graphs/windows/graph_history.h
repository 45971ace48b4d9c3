#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "graphs/history_page.h"
#include "graphs/parameter_curves.h"
#include "graphs/windows/chart_view.h"
#include "log/open_log.h"
#include "model/session.h"
#include "platform/loop/clock.h"
#include "platform/platform.h"

namespace velk {

/// What a graph window shows by its bar: the live page, or a page of the log while the live one is drawn unseen.
///
///   LiveView, bar at its maximum      the chart draws on Pic2 and Picture3, and the bar goes along with it
///   history, bar below its maximum    the chart draws on Picture2 and Pic3_Hidden; the page comes from the log
class GraphHistory {
 public:
  /// Runs a statement of a procedure of that name, and tells of its failure; gives whether it succeeded. Events may run
  /// in it: what stands around the window outlives it.
  using Run = std::function<bool(const char* procedure, const std::function<void()>& statement)>;

  /// All that is given by reference outlives it. Where there is no log, nothing can be drawn again.
  GraphHistory(const Session& session, const Platform& platform, const ParameterCurves& curves, ChartView& view,
               OpenLog* log, Run run);

  bool LiveView() const { return liveView_; }
  /// The log to look into; null where none is open.
  OpenLog* Log() const { return log_ != nullptr && log_->IsOpen() ? log_ : nullptr; }
  /// The time that stands at y 0: of the live page, or of the page of history that the bar has asked for. 0 where
  /// nothing was drawn yet.
  double PageStart() const;

  /// The range of the bar once blocks are drawn up to `upTo`; off where there is no history. Live, the bar stays at its
  /// end.
  void UpdateScroll(double upTo);
  void VScroll1_Change();
  /// Draws what is in view again: the window has got another size.
  void Repaint();
  /// The comments of a block whose frame the chart has just drawn.
  void InsertCommentsOfBlock(double blockStart, double blockEnd);

 private:
  bool JobRuns() const;
  void ShowOrWait();
  void ShowWhatIsAsked();
  void MoveBarToEnd();
  void PlotScrolledGraph();
  void StepBack();
  void ReturnToPresent();
  void DrawPage();
  void DrawNextRows();
  void EndPage();
  void LeavePage();
  void PlotLeftOut();
  void RepaintLivePage();

  const Session& session_;
  Platform platform_;
  ChartView& view_;
  OpenLog* log_;
  Run run_;
  HistoryPage page_;
  double scrollStart_ = 0;     ///< of the page that the bar asks for
  double scrollEnd_ = 0;       ///< its end
  double pageShownStart_ = 0;  ///< of the page of history in view
  bool liveView_ = true;
  bool scrollGuard_ = false;  ///< the program itself moves the bar
  bool yielding_ = false;
  bool yieldsBehind_ = false;  ///< the page that is drawn was asked for by the bar
  std::unique_ptr<Timer> pageWaits_;
  std::unique_ptr<Timer> pageGoesOn_;  ///< on while the page is not whole
  std::string pageFile_;               ///< that it is read from
  std::int64_t pageTook_ = 0;          ///< milliseconds
  std::int64_t nextPage_ = 0;          ///< ticks: of a bar that is dragged, none ahead of it
};

}  // namespace velk
