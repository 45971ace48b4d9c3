#include "store/windows/frm_inc_param_in_sum.h"

#include <QGuiApplication>
#include <QScreen>
#include <QStyle>

#include "ui_frm_inc_param_in_sum.h"

namespace velk {

namespace {

constexpr int kColumns = 2;

/// A name as a caption: "&" is not the mark of a key.
QString Caption(const std::string& name) {
  return QString::fromStdString(name).replace(QLatin1Char('&'), QLatin1String("&&"));
}

}  // namespace

frmIncParamInSum::frmIncParamInSum(const SummaryInclusion& inclusion, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmIncParamInSum>()), inclusion_(inclusion) {
  ui_->setupUi(this);
  text1_ = {ui_->Text1_0, ui_->Text1_1, ui_->Text1_2, ui_->Text1_3};
  for (std::size_t i = 0; i < text1_.size() && i < inclusion_.extraFields.size(); ++i)
    text1_[i]->setText(QString::fromStdString(inclusion_.extraFields[i]));
  AddCheckBoxes();
  FitToScreen();
  connect(ui_->cmdClose, &QPushButton::clicked, this, &frmIncParamInSum::cmdClose_Click);
}

frmIncParamInSum::~frmIncParamInSum() = default;

/// Down the first column, then down the next, as names in a list are read.
void frmIncParamInSum::AddCheckBoxes() {
  const int count = static_cast<int>(inclusion_.parameters.size());
  const int rows = (count + kColumns - 1) / kColumns;
  QWidget* before = ui_->scrollArea;
  for (const SummaryInclusion::Entry& entry : inclusion_.parameters) {
    auto* box = new QCheckBox(Caption(entry.name), ui_->parameters);
    box->setObjectName(QStringLiteral("chk_%1").arg(entry.parameter));
    box->setChecked(entry.included);
    const int place = static_cast<int>(chk_.size());
    ui_->parametersLayout->addWidget(box, place % rows, place / rows);
    setTabOrder(before, box);
    before = box;
    chk_.push_back(box);
  }
  // Made last, they would be reached last.
  setTabOrder(before, text1_.front());
  ui_->parametersLayout->setRowStretch(rows, 1);
  if (!chk_.empty()) chk_.front()->setFocus();
}

/// As tall as its boxes where the screen has room; the boxes scroll where it hasn't.
void frmIncParamInSum::FitToScreen() {
  const QScreen* screen = QGuiApplication::primaryScreen();
  const QSize room = screen == nullptr ? QSize(800, 600) : screen->availableSize() * 0.85;
  const QSize bar(style()->pixelMetric(QStyle::PM_ScrollBarExtent) + 2 * ui_->scrollArea->frameWidth(), 0);
  const QSize boxes = ui_->parameters->sizeHint() + bar;
  const QSize wanted = boxes.expandedTo(ui_->scrollArea->minimumSize()) + sizeHint() - ui_->scrollArea->sizeHint();
  resize(wanted.expandedTo(minimumSizeHint()).boundedTo(room));
}

void frmIncParamInSum::cmdClose_Click() {
  for (std::size_t i = 0; i < chk_.size(); ++i) inclusion_.parameters[i].included = chk_[i]->isChecked();
  inclusion_.extraFields.clear();
  for (const QLineEdit* box : text1_)
    if (!box->text().isEmpty()) inclusion_.extraFields.push_back(box->text().toStdString());
  accept();
}

}  // namespace velk
