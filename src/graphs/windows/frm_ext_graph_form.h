#pragma once

#include <QLabel>
#include <QWidget>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "exchange/import_data.h"
#include "graphs/external_follower.h"
#include "graphs/external_plot.h"
#include "graphs/windows/chart_view.h"
#include "graphs/windows/comment_box.h"
#include "graphs/windows/graph_toolbar.h"
#include "i18n/windows/window_host.h"
#include "log/open_log.h"
#include "model/session.h"
#include "platform/loop/clock.h"
#include "platform/platform.h"

namespace velk {

/// What the chart of another program's data works with; all outlives it.
struct ExternalAccess {
  const Session& session;
  Platform platform;
  OpenLog& log;  ///< where comments go
  JetTools tools;
  std::function<void(const LiveImport& live)> keep;   ///< brings edited curves to the disk
  std::function<void(const LiveImport& live)> print;  ///< opens the page of the table
};

/// A strip chart of a table that another program fills. It looks every 7 s for new rows, a few milliseconds at a time,
/// and has a time base of its own: the session's charts don't know of it. What can't be read stands in its line below
/// the chart, and the next look tries again.
class frmExtGraphForm : public QWidget {
  Q_OBJECT

 public:
  frmExtGraphForm(WindowHost& host, const ExternalAccess& access, const LiveImport& live);
  ~frmExtGraphForm() override;

  void StartReading();
  void StopReading();
  bool IsReading() const { return timer1_->Enabled(); }

  const LiveImport& Live() const { return live_; }
  /// Whether it can go on with another choice: the rows are the same, only how they are drawn may differ.
  bool Fits(const LiveImport& live) const;
  /// Goes on with such a choice.
  void Follow(const LiveImport& live);
  /// FitGraphsToWindows or NightColours has changed.
  void FollowLooks();
  /// The window goes, once nothing of it is on the stack.
  void End();

  ChartView& View() { return *view_; }

 protected:
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  /// Keeps the window to the end of a scope in which events run: one may close it.
  class Stay {
   public:
    explicit Stay(frmExtGraphForm& form) : form_(form) { ++form_.standing_; }
    ~Stay() {
      if (--form_.standing_ == 0 && form_.ended_) form_.deleteLater();
    }
    Stay(const Stay&) = delete;
    Stay& operator=(const Stay&) = delete;

   private:
    frmExtGraphForm& form_;
  };

  /// What a page of the past is read and drawn by.
  struct Past {
    std::unique_ptr<ForeignRead> read;  ///< null once its rows are there
    double start = 0;                   ///< of the page that the bar asks for
    double end = 0;
    std::vector<ForeignRow> rows;
    OperatorText note;  ///< in place of the curves
  };

  void BindToolbar();
  void BindEditor();
  void Form_Load();
  void IntilizeTime();
  void RefreshForm();
  void FillLabels();
  void LayOutChart();
  int StateHeight() const;
  QSize WindowSize() const;
  bool Operation(const char* procedure, const std::function<void()>& statement);
  /// A key of the toolbar or of the window.
  void RunKey(const char* procedure, void (frmExtGraphForm::*work)());
  bool handle_error(const char* procedure, const std::function<void()>& statement);
  void Tell(const OperatorText& text);

  // Following
  void Timer1_Timer();
  void ReadPiece();
  void ReadPollPiece();
  void FrameStep(double start, double end);
  void TellLeftOut();
  void TellState();

  // Looking back
  void UpdateScroll(double upTo);
  void MoveBarToEnd();
  void VScroll1_Change();
  void PlotScrolledGraph();
  void BeginPastRead(const ForeignStart& start);
  void ReadPastPiece();
  void EndPastRead();
  void DrawPast();
  void ReturnToPresent();
  void Repaint();
  void RepaintLivePage();
  void InsertCommentsOf(StripChart& chart, double from, double to);

  // Read Value and comments
  void ReadValue();
  void EndReadValue();
  std::string TextAt(double y) const;
  void AddComment();
  void AddTheComment(const std::string& comment);
  void Print();

  WindowHost& host_;
  const ExternalAccess access_;
  LiveImport live_;
  const ChartMeasures measures_;
  const double sampleSeconds_;
  ImportData importReader_;  ///< of pages of the past
  ExternalCurves curves_;
  TimeBase times_;
  TimeBase pastTimes_;
  ScreenRefresh refresh_;
  std::unique_ptr<ChartView> view_;
  std::unique_ptr<StripChart> past_;  ///< draws on the visible surfaces, whatever the live chart draws on
  std::unique_ptr<ExternalPlot> plot_;
  std::unique_ptr<ExternalFollower> follower_;
  GraphToolbar* toolbar_;
  CommentBox* commentBox_;
  QLabel* state_;
  std::unique_ptr<Timer> timer1_;
  std::unique_ptr<Timer> pieces_;     ///< while something is read
  std::unique_ptr<Timer> pageWaits_;  ///< of a bar that is dragged
  Past page_;
  int readSlot_ = 0;  ///< of Read Value; 0: off
  bool liveView_ = true;
  bool scrollGuard_ = false;
  bool loaded_ = false;
  int standing_ = 0;
  bool ended_ = false;
};

}  // namespace velk
