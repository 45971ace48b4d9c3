#include "base/dates.h"
#include "base/text_qt.h"
#include "graphs/coordinates.h"
#include "graphs/texts.h"
#include "graphs/windows/frm_ext_graph_form.h"

namespace velk {

void frmExtGraphForm::StartReading() {
  timer1_->SetEnabled(true);
  pieces_->SetEnabled(follower_->IsReading() || page_.read);
  TellState();
}

void frmExtGraphForm::StopReading() {
  timer1_->SetEnabled(false);
  pieces_->SetEnabled(page_.read != nullptr && !ended_);
  TellState();
}

void frmExtGraphForm::Timer1_Timer() {
  follower_->Begin(live_);
  pieces_->SetEnabled(follower_->IsReading());
  TellState();
}

/// A page that somebody waits for comes first.
void frmExtGraphForm::ReadPiece() {
  const Stay stay(*this);
  if (page_.read)
    ReadPastPiece();
  else if (timer1_->Enabled())
    ReadPollPiece();
  const bool goesOn = page_.read || (timer1_->Enabled() && follower_->IsReading());
  pieces_->SetEnabled(goesOn && !ended_);
}

void frmExtGraphForm::ReadPollPiece() {
  if (follower_->ReadPiece()) {
    TellLeftOut();
    view_->ScheduleRefresh();
  }
  if (!follower_->IsReading()) TellState();
}

void frmExtGraphForm::FrameStep(double start, double end) {
  StripChart& chart = view_->Chart();
  Operation("Picture2_Update", [&] { chart.Picture2_Update(start, end); });
  UpdateScroll(end);
  Operation("WriteDate", [&] { chart.WriteDate(start, end); });
  InsertCommentsOf(chart, start, end);
}

/// A curve that can't be drawn is told once, and costs itself only.
void frmExtGraphForm::TellLeftOut() {
  while (const int slot = plot_->TakeLeftOut()) {
    const Parameter curve = curves_.Curve(slot);
    handle_error("PlotValue", [&] { ValueToX(0, ScaleLimits(curve.min, curve.max), kLeftMargin, kLeftMargin); });
  }
}

void frmExtGraphForm::TellState() {
  const std::string file = live_.DBaseName.substr(live_.DBaseName.rfind('/') + 1) + ", " + live_.TableName;
  OperatorText told = (timer1_->Enabled() ? text::FollowedTable : text::FollowingPaused) + file;
  if (!follower_->Fault().IsEmpty())
    told = text::NotReadTriedAgain + follower_->Fault();
  else if (plot_->HasRows())
    told += text::LastRowAt + FormatDate(plot_->LastRead(), "dd-mmm-yyyy hh:mm:ss");
  else
    told += text::NoRowSince + FormatDate(plot_->FormStart(), "hh:mm");
  state_->setText(ToQt(access_.platform.language.In(told)));
  if (!loaded_ || ended_ || StateHeight() == state_->height()) return;
  LayOutChart();
  RefreshForm();
  Repaint();
}

}  // namespace velk
