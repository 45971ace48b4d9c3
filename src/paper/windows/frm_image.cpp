#include "paper/windows/frm_image.h"

#include <QPixmap>
#include <QScreen>
#include <algorithm>

#include "i18n/windows/translate_form.h"
#include "model/help_topics.h"
#include "ui_frm_image.h"

namespace velk {

namespace {

constexpr QSize kLeastPicture(16, 16);

}  // namespace

frmImage::frmImage(WindowHost& host, const QImage& picture, QSize size,
                   std::function<void(double wide, double high)> onSized)
    : QDialog(host.Parent()), ui_(std::make_unique<Ui::frmImage>()), onSized_(std::move(onSized)) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Printing);
  ui_->Picture->setPixmap(QPixmap::fromImage(picture));
  ui_->Picture->setMinimumSize(kLeastPicture);
  connect(ui_->cmdClose, &QPushButton::clicked, this, &QDialog::accept);
  TranslateForm(*this, host.Words());
  layout()->activate();
  // What the other parts need widens the picture in proportion.
  const QMargins frame = layout()->contentsMargins();
  const int sides = frame.left() + frame.right();
  const QSize least = minimumSizeHint();
  const double grown = std::max(1.0, static_cast<double>(least.width() - sides) / std::max(1, size.width()));
  const QSize begins = size * grown;
  resize(QSize(begins.width() + sides, begins.height() + least.height() - kLeastPicture.height())
             .expandedTo(least)
             .boundedTo(screen()->availableSize() * 0.9));
}

frmImage::~frmImage() = default;

void frmImage::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  layout()->activate();
  if (first_.isEmpty()) first_ = ui_->Picture->size();
}

void frmImage::resizeEvent(QResizeEvent* event) {
  QDialog::resizeEvent(event);
  layout()->activate();
  if (first_.isEmpty()) return;
  const QSizeF now = ui_->Picture->size();
  onSized_(now.width() / first_.width(), now.height() / first_.height());
}

}  // namespace velk
