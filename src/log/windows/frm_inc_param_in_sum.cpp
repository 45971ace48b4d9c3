#include "log/windows/frm_inc_param_in_sum.h"

#include <QGuiApplication>
#include <QScreen>
#include <QStyle>
#include <algorithm>

#include "i18n/windows/translate_form.h"
#include "model/help_topics.h"
#include "ui_frm_inc_param_in_sum.h"

namespace velk {

namespace {

/// What a window may take of the screen.
QSize Room() {
  const QScreen* screen = QGuiApplication::primaryScreen();
  return screen == nullptr ? QSize(800, 600) : screen->availableSize() * 0.9;
}

/// A name as a caption: "&" is not the mark of a key.
QString Caption(const std::string& name) {
  return QString::fromStdString(name).replace(QLatin1Char('&'), QLatin1String("&&"));
}

}  // namespace

frmIncParamInSum::frmIncParamInSum(WindowHost& host, const SummaryInclusion& inclusion)
    : QDialog(host.Parent()), ui_(std::make_unique<Ui::frmIncParamInSum>()), inclusion_(inclusion) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Recording);
  text1_ = {ui_->Text1_0, ui_->Text1_1, ui_->Text1_2, ui_->Text1_3};
  for (std::size_t i = 0; i < text1_.size() && i < inclusion_.extraFields.size(); ++i)
    text1_[i]->setText(QString::fromStdString(inclusion_.extraFields[i]));
  AddCheckBoxes();
  TranslateForm(*this, host.Words());
  for (QLineEdit* box : text1_) box->setAccessibleName(ui_->Label1->text());
  FitToScreen();
  connect(ui_->cmdClose, &QPushButton::clicked, this, &frmIncParamInSum::cmdClose_Click);
}

frmIncParamInSum::~frmIncParamInSum() = default;

/// Two columns where the names leave room for them, one else; down the first, then down the second.
void frmIncParamInSum::AddCheckBoxes() {
  int widest = 0;
  QWidget* before = ui_->scrollArea;
  for (const SummaryInclusion::Entry& entry : inclusion_.parameters) {
    auto* box = new QCheckBox(Caption(entry.name), ui_->parameters);
    box->setObjectName(QStringLiteral("chk_%1").arg(entry.parameter));
    box->setChecked(entry.included);
    widest = std::max(widest, box->sizeHint().width());
    setTabOrder(before, box);
    before = box;
    chk_.push_back(box);
  }
  // Made last, they would be reached last.
  setTabOrder(before, text1_.front());

  const int count = static_cast<int>(chk_.size());
  const int columns = widest * 5 / 2 < Room().width() ? 2 : 1;
  const int rows = std::max(1, (count + columns - 1) / columns);
  for (int i = 0; i < count; ++i)
    ui_->parametersLayout->addWidget(chk_[static_cast<std::size_t>(i)], i % rows, i / rows);
  ui_->parametersLayout->setRowStretch(rows, 1);
  if (!chk_.empty()) chk_.front()->setFocus();
}

/// As large as its boxes where the screen has room; the boxes scroll where it hasn't.
void frmIncParamInSum::FitToScreen() {
  const int frame = 2 * ui_->scrollArea->frameWidth();
  const QSize bar(style()->pixelMetric(QStyle::PM_ScrollBarExtent) + frame, frame);
  const QSize boxes = ui_->parameters->sizeHint() + bar;
  const QSize wanted = boxes.expandedTo(ui_->scrollArea->minimumSize()) + sizeHint() - ui_->scrollArea->sizeHint();
  resize(wanted.expandedTo(minimumSizeHint()).boundedTo(Room()));
}

void frmIncParamInSum::cmdClose_Click() {
  for (std::size_t i = 0; i < chk_.size(); ++i) inclusion_.parameters[i].included = chk_[i]->isChecked();
  inclusion_.extraFields.clear();
  for (const QLineEdit* box : text1_)
    if (!box->text().isEmpty()) inclusion_.extraFields.push_back(box->text().toStdString());
  accept();
}

}  // namespace velk
