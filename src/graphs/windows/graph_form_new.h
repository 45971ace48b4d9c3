#pragma once

#include <QWidget>
#include <functional>
#include <memory>

#include "graphs/parameter_curves.h"
#include "graphs/windows/chart_view.h"
#include "graphs/windows/comment_box.h"
#include "graphs/windows/graph_history.h"
#include "graphs/windows/graph_toolbar.h"
#include "graphs/windows/read_value_mode.h"
#include "i18n/translation.h"
#include "model/graph_window.h"
#include "model/session.h"
#include "platform/loop/clock.h"
#include "platform/platform.h"

namespace velk {

/// A strip-chart window of the session: a chart view with the curves of one graph number. It says when something is
/// drawn, carries edited curves back, has its header stored in the log, and tells of what fails. Behind its bar, its
/// Read Value and its comments is the log that is open (GraphHistory).
///
/// Made by GraphWindowsMdi, which puts it into the client area, sizes it and calls Load. Closing it unloads it.
class GraphFormNew : public QWidget, public GraphWindow {
  Q_OBJECT

 public:
  /// `graphNumber`, 1 to 64, becomes FormIndex. `onHeaderChanged` is called whenever the header was drawn anew: it
  /// stores the curves' settings in the log, where one is open. `log` is what it looks back into; null: nothing.
  GraphFormNew(Session& session, Platform& platform, const Translation& translation, int graphNumber,
               const ScreenRefresh& refresh, std::function<void()> onHeaderChanged, OpenLog* log = nullptr);
  ~GraphFormNew() override;

  /// Lays the window out and draws it. Where `timeOrigin` is not 0 the frame of the first block from there is drawn
  /// too.
  void Load(double timeOrigin);
  /// The window has other curves than before: lays labels, header and plot out anew. What was drawn stays.
  void LoadAgain();
  /// Carries edited curves back and takes the window out of the session; no operation may follow.
  void Unload();

  void Picture2_Update(double blockStart, double blockEnd) override;
  void WriteDate(double blockStart, double blockEnd) override;
  /// Sets the range of VScroll1, which goes along with the present until it is moved back.
  void UpdateScroll(double upTo) override;
  void WriteValuesToLabels(int parameter, float value) override;
  void PlotValue(double previousTime, double time, float previousValue, float value, double min, double max,
                 std::int32_t colour, bool wrapping) override;
  void ShowAlarm(int parameter, AlarmSide side) override;
  void ShowValuesStale(bool stale) override;
  double TimeOrigin() const override { return view_->Chart().TimeOrigin(); }
  void EnableToolbar() override;
  void RefreshForm() override;
  /// FitGraphsToWindows or NightColours has changed.
  void FollowLooks();
  void UpdateParametersDefs() override;

  /// Draws the header band and carries the curves' settings back.
  void InitialHeader();

  int FormIndex() const { return formIndex_; }
  /// Pixels that the window has to be high for a plot below its header.
  QSize LeastSize() const {
    return {ChartView::LeastWidth(), ChartView::LeastHeight(MeasuresOf(session_), curves_.Count())};
  }
  const ParameterCurves& Curves() const { return curves_; }
  ChartView& View() { return *view_; }
  GraphToolbar& Toolbar() { return *toolbar_; }

  /// Asks for a comment over the chart; tells where no log is open.
  void AddComment();

 protected:
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  /// Keeps the window alive to the end of a scope in which events run: one may close it.
  class Stay {
   public:
    explicit Stay(GraphFormNew& form) : form_(form) { ++form_.standing_; }
    ~Stay() {
      if (--form_.standing_ == 0 && form_.deleteWhenDone_) form_.DeleteWindow();
    }
    Stay(const Stay&) = delete;
    Stay& operator=(const Stay&) = delete;

   private:
    GraphFormNew& form_;
  };

  int SlotOf(int parameter);
  template <class Statement>
  bool Operation(const char* procedure, Statement&& statement, const OperatorText& title = {});
  bool RunStatement(const char* procedure, const std::function<void()>& statement, const OperatorText& title = {});
  template <class Statement>
  void Draw(const char* procedure, Statement&& statement);
  void DrawFirstBlock(double timeOrigin);
  void RebuildHeader();
  void FillLabels();
  void StoreHeader();
  void DeleteWindow();
  void BindToolbar();
  void ReadValue();
  void FollowLog();
  void Form_Activate();
  /// A key of the toolbar, or of the window: F7 and, while values are read, Esc.
  void RunKey(const char* procedure, void (GraphFormNew::*work)());
  void AddTheComment(const std::string& comment);
  void SetCaption(const std::optional<std::string>& text);
  QSize WindowSize() const;

  Session& session_;
  Platform& platform_;
  const Translation& translation_;
  const int formIndex_;
  std::function<void()> onHeaderChanged_;
  ParameterCurves curves_;
  std::unique_ptr<ChartView> view_;  ///< a child that fills the window
  GraphToolbar* toolbar_;
  CommentBox* commentBox_;
  OpenLog* log_;
  std::unique_ptr<GraphHistory> history_;
  std::unique_ptr<ReadValueMode> readValue_;
  std::unique_ptr<Timer> storeHeader_;  ///< a resize has settled
  int nextSlot_ = 1;                    ///< whose value comes next if the order is that of the last sample
  bool LayoutDone_ = false;             ///< the layout of the first load is finished
  bool loaded_ = false;
  int standing_ = 0;  ///< what is on the stack of this window, with events below it
  bool deleteWhenDone_ = false;
};

}  // namespace velk
