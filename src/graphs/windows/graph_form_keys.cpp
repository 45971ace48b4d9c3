#include <QApplication>
#include <QKeyEvent>
#include <QStatusTipEvent>
#include <algorithm>

#include "base/text_qt.h"
#include "graphs/chart_comments.h"
#include "graphs/texts.h"
#include "graphs/windows/graph_form_new.h"
#include "log/texts.h"
#include "model/help_topics.h"
#include "platform/dialogs/dialogs.h"
#include "platform/dialogs/procedure.h"
#include "platform/drawing/units.h"
#include "platform/loop/clock.h"

namespace velk {

namespace {

constexpr int kBesideComment = 8;  ///< pixels
constexpr int kLeastCommentWidth = 240;

}  // namespace

void GraphFormNew::BindToolbar() {
  const auto bind = [this](const char* key, void (GraphFormNew::*work)()) {
    toolbar_->Bind(key, [this, work] { RunKey("Toolbar1_ButtonClick", work); });
  };
  bind("AddComment", &GraphFormNew::AddComment);
  bind("ReadValue", &GraphFormNew::ReadValue);
  commentBox_->onDone = [this](const QString& comment) {
    const Stay stay(*this);
    setFocus();
    AddTheComment(FromQt(comment));
    if (log_ != nullptr && log_->onReportChanged) log_->onReportChanged();
    platform_.clock.Yield();
  };
}

void GraphFormNew::EnableToolbar() {
  toolbar_->Release();
  FollowLog();
}

/// A value can be read only where a log is open.
void GraphFormNew::FollowLog() {
  const bool isOpen = history_->Log() != nullptr;
  if (!isOpen && readValue_->IsOn()) ReadValue();
  toolbar_->SetEnabled("ReadValue", isOpen);
}

void GraphFormNew::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_F7 && !(event->key() == Qt::Key_Escape && readValue_->IsOn()))
    return QWidget::keyPressEvent(event);
  RunKey("Form_KeyUp", event->key() == Qt::Key_F7 ? &GraphFormNew::AddComment : &GraphFormNew::ReadValue);
}

void GraphFormNew::RunKey(const char* procedure, void (GraphFormNew::*work)()) {
  const Stay stay(*this);
  RunProcedure({platform_.dialogs, procedure}, [&](const Statements& run) { run([&] { (this->*work)(); }); });
}

/// The window comes to the front.
void GraphFormNew::Form_Activate() {
  RunStatement("Form_Activate", [this] { FollowLog(); });
}

void GraphFormNew::ReadValue() {
  const Stay stay(*this);
  readValue_->Press();
  toolbar_->SetPressed("ReadValue", readValue_->IsOn());
}

/// A graph that fills the area has no caption of its own: what is read stands in the status bar then.
void GraphFormNew::SetCaption(const std::optional<std::string>& text) {
  if (parentWidget() != nullptr && parentWidget()->isMaximized()) {
    QStatusTipEvent inStatusBar(ToQt(text.value_or("")));
    QApplication::sendEvent(this, &inStatusBar);
  }
  if (text)
    setWindowTitle(ToQt(*text));
  else if (curves_.Count() > 0)
    setWindowTitle(ToQt(curves_.Curve(1).name));
}

void GraphFormNew::AddComment() {
  if (history_->Log() == nullptr) {
    platform_.dialogs.Message(
        {.text = text::MustSupplyFileName, .icon = BoxIcon::Exclamation, .helpTopic = topic::Recording});
    return;
  }
  const MessageText& hint = session_.AcquisitionMode ? text::CommentHint : text::CommentHintInPlayback;
  const QWidget& plot = view_->PlotArea();
  const QPoint corner = plot.mapTo(this, QPoint(static_cast<int>(kLeftMargin / kTwipsPerPixel), 0));
  const int right = std::min(plot.mapTo(this, QPoint(plot.width(), 0)).x(), width()) - kBesideComment;
  const int wide = std::max(right - corner.x() - kBesideComment, kLeastCommentWidth);
  commentBox_->Begin(ToQt(platform_.language.In(hint)),
                     QRect(std::max(right - wide, 0), corner.y() + kBesideComment, wide, 0));
}

void GraphFormNew::AddTheComment(const std::string& comment) {
  if (comment.empty() || log_ == nullptr) return;
  if (!RunStatement(
          "AddTheComment", [&] { log_->AddSummaryRow(comment); }, text::SummaryReportError))
    return;
  StripChart& chart = view_->Chart();
  RunStatement("AddTheComment", [&] { PrintTheComment(chart, comment, session_.SampleTime); });
  view_->ScheduleRefresh();
}

}  // namespace velk
