#include "platform/windows/progress_window.h"

#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <algorithm>

#include "ui_progress_window.h"

namespace velk {

namespace {

constexpr int kWholeBar = 1000;

}  // namespace

ProgressWindow::ProgressWindow(const QString& title, const QString& cancel, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::ProgressWindow>()) {
  ui_->setupUi(this);
  setWindowTitle(title);
  // The frame shows the whole title beside its buttons, as far as the screen has room.
  const int buttons = 3 * style()->pixelMetric(QStyle::PM_TitleBarHeight);
  setMinimumWidth(
      std::min(fontMetrics().horizontalAdvance(title) + buttons, screen()->availableSize().width() * 3 / 4));
  ui_->cmdCancel->setText(cancel);
  ui_->barDone->setAccessibleName(title);
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  setWindowModality(Qt::WindowModal);
  // Shown to the toolkit, which keeps clicks and keys from the windows below, and not yet to the operator.
  setAttribute(Qt::WA_DontShowOnScreen);
  show();
}

ProgressWindow::~ProgressWindow() = default;

void ProgressWindow::Appear() {
  hide();
  setAttribute(Qt::WA_DontShowOnScreen, false);
  show();
}

void ProgressWindow::ShowDone(const QString& doing, double share) {
  ui_->lblDoing->setText(doing);
  ui_->barDone->setMaximum(share < 0 ? 0 : kWholeBar);
  if (share >= 0) ui_->barDone->setValue(static_cast<int>(share * kWholeBar));
}

void ProgressWindow::reject() {
  cancelled_ = true;
  ui_->cmdCancel->setEnabled(false);
}

// --- As a box ---

StandingProgress::StandingProgress(const QString& title, const QString& cancel, QWidget* owner, const char* name,
                                   int helpTopic)
    : window_(new ProgressWindow(title, cancel, owner)) {
  window_->setObjectName(QLatin1String(name));
  if (helpTopic != 0) window_->setProperty("helpTopic", helpTopic);
}

StandingProgress::~StandingProgress() {
  delete window_;
}

void StandingProgress::Appear() {
  if (window_) window_->Appear();
}

void StandingProgress::Show(const std::string& doing, double share) {
  if (window_) window_->ShowDone(QString::fromStdString(doing), share);
}

}  // namespace velk
