#include "shell/speed_bar.h"

#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <QSignalBlocker>
#include <QSlider>
#include <QStyle>
#include <algorithm>

#include "base/text_qt.h"
#include "model/help_topics.h"

namespace velk {

namespace {

constexpr int kLeast = 1;
constexpr int kMost = 1000;
constexpr int kPage = 50;
constexpr int kScaleMarks[] = {1, 250, 500, 750, 1000};
constexpr int kBarWidth = 200;

/// The numbers below the bar, each under the place at which the bar's handle stands for it.
class SpeedScale : public QWidget {
 public:
  explicit SpeedScale(const QSlider& bar, QWidget* parent) : QWidget(parent), bar_(bar) {
    QFont small = font();
    small.setPointSizeF(small.pointSizeF() * 0.8);
    setFont(small);
    setFixedHeight(QFontMetrics(small).height());
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    const int handle = bar_.style()->pixelMetric(QStyle::PM_SliderLength, nullptr, &bar_);
    for (const int mark : kScaleMarks) {
      const QString text = QString::number(mark);
      const int textWidth = fontMetrics().horizontalAdvance(text);
      const int middle = handle / 2 + QStyle::sliderPositionFromValue(kLeast, kMost, mark, width() - handle);
      const int left = std::clamp(middle - textWidth / 2, 0, std::max(0, width() - textWidth));
      painter.drawText(left, fontMetrics().ascent(), text);
    }
  }

 private:
  const QSlider& bar_;
};

}  // namespace

SpeedBar::SpeedBar(const QString& toolTip, QWidget* parent)
    : QWidget(parent), label_(new QLabel(this)), bar_(new QSlider(Qt::Horizontal, this)) {
  label_->setObjectName(QStringLiteral("lblSpeed"));
  label_->setBuddy(bar_);
  bar_->setObjectName(QStringLiteral("HScroll1"));
  bar_->setToolTip(toolTip);
  bar_->setRange(kLeast, kMost);
  bar_->setSingleStep(1);
  bar_->setPageStep(kPage);
  bar_->setFixedWidth(kBarWidth);
  bar_->setFocusPolicy(Qt::TabFocus);
  setFocusProxy(bar_);
  setProperty("helpTopic", topic::Playback);
  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(4, 0, 4, 0);
  grid->setSpacing(0);
  grid->setHorizontalSpacing(8);
  grid->addWidget(label_, 0, 0, 2, 1);
  grid->addWidget(bar_, 0, 1);
  grid->addWidget(new SpeedScale(*bar_, this), 1, 1);
  connect(bar_, &QSlider::valueChanged, this, [this](int speed) {
    if (onChange) onChange(speed);
  });
}

void SpeedBar::Show(int speed, const std::string& words) {
  const QSignalBlocker quiet(bar_);
  bar_->setValue(speed);
  label_->setText(ToQt(words));
  bar_->setAccessibleName(ToQt(words));
  // The bar stands still while the words change.
  const QString widest = ToQt(words).replace(QString::number(speed) + ':', QString::number(kMost) + ':');
  label_->setMinimumWidth(label_->fontMetrics().horizontalAdvance(widest));
}

}  // namespace velk
