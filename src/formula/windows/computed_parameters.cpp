#include "formula/windows/computed_parameters.h"

#include <QScreen>
#include <QStyle>

#include "base/text_qt.h"
#include "i18n/windows/translate_form.h"
#include "model/help_topics.h"
#include "ui_computed_parameters.h"

namespace velk {

ComputedParameters::ComputedParameters(WindowHost& host, std::vector<ComputedChannel> channels,
                                       std::function<void()> showParameters)
    : QDialog(host.Parent()), ui_(std::make_unique<Ui::ComputedParameters>()), channels_(std::move(channels)) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Formulas);
  TranslateForm(*this, host.Words());
  AddCheckBoxes();
  FitToScreen();
  connect(ui_->cmdParameters, &QPushButton::clicked, this, std::move(showParameters));
  connect(ui_->cmdClose, &QPushButton::clicked, this, &QDialog::accept);
}

ComputedParameters::~ComputedParameters() = default;

void ComputedParameters::AddCheckBoxes() {
  QWidget* before = ui_->scrollArea;
  for (const ComputedChannel& channel : channels_) {
    // "&" in a name is not the mark of a key.
    const QString caption = ToQt(channel.name).replace(QLatin1Char('&'), QLatin1String("&&"));
    auto* box = new QCheckBox(caption, ui_->channels);
    box->setObjectName(QStringLiteral("Check1_%1").arg(check1_.size() + 1));
    box->setChecked(channel.included);
    ui_->channelsLayout->addWidget(box);
    setTabOrder(before, box);
    before = box;
    check1_.push_back(box);
  }
  ui_->channelsLayout->addStretch();
  setTabOrder(before, ui_->cmdParameters);
  if (!check1_.empty()) check1_.front()->setFocus();
}

/// As tall as its boxes where the screen has room; the boxes scroll where it hasn't.
void ComputedParameters::FitToScreen() {
  const QSize room = screen()->availableSize() * 0.85;
  const QSize bar(style()->pixelMetric(QStyle::PM_ScrollBarExtent) + 2 * ui_->scrollArea->frameWidth(),
                  2 * ui_->scrollArea->frameWidth());
  const QSize boxes = (ui_->channels->sizeHint() + bar).expandedTo(ui_->scrollArea->minimumSize());
  const QSize around = sizeHint() - ui_->scrollArea->sizeHint().expandedTo(ui_->scrollArea->minimumSize());
  resize((boxes + around).expandedTo(minimumSizeHint()).boundedTo(room));
}

std::vector<ComputedChannel> ComputedParameters::Answer() const {
  std::vector<ComputedChannel> channels = channels_;
  for (std::size_t i = 0; i < channels.size(); ++i) channels[i].included = check1_[i]->isChecked();
  return channels;
}

}  // namespace velk
