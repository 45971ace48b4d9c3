#include "wells/windows/frm_3d_well.h"

#include <QActionGroup>
#include <QCheckBox>
#include <QLineEdit>
#include <QMenuBar>
#include <QPointer>
#include <QSignalBlocker>
#include <algorithm>
#include <cmath>

#include "base/dates.h"
#include "base/number_entry.h"
#include "base/numbers.h"
#include "base/text_qt.h"
#include "i18n/windows/translate_form.h"
#include "imaging/windows/frm_printer_select.h"
#include "model/help_topics.h"
#include "model/select_file.h"
#include "settings/page_lines.h"
#include "ui_frm_3d_well.h"
#include "wells/scene_page.h"
#include "wells/texts.h"
#include "wells/windows/well_picture.h"

namespace velk {

namespace {

enum Box { kTilt, kAzimuth, kDistance, kFocalEast, kFocalNorth, kFocalDepth, kFirstShift };

constexpr int kHalfTurn = 180;
constexpr double kDistanceStep = 1000;
constexpr int kSpinMilliseconds = 50;
constexpr double kDegreesPerPixel = 0.5;
/// So much nearer or farther a step of the wheel.
constexpr double kZoom = 1.1;

/// Within a turn, where bars stand.
int Wrapped(double degrees) {
  return static_cast<int>(std::lround(std::remainder(degrees, 2 * kHalfTurn)));
}

}  // namespace

frm3DWell::frm3DWell(WindowHost& host, const WellAccess& access)
    : QDialog(host.Parent()),
      host_(host),
      access_(access),
      ui_(std::make_unique<Ui::frm3DWell>()),
      timer1_(access.platform.clock.MakeTimer()) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Wells);
  text1_ = {ui_->Text1_0, ui_->Text1_1, ui_->Text1_2, ui_->Text1_3, ui_->Text1_4,
            ui_->Text1_5, ui_->Text1_6, ui_->Text1_7, ui_->Text1_8};
  check1_ = {ui_->Check1_0, ui_->Check1_1, ui_->Check1_2};
  picture_ = new WellPicture(this);
  picture_->setObjectName(QStringLiteral("Picture1"));
  ui_->pictureRow->insertWidget(0, picture_);
  for (int size = 0; size <= 9; ++size) ui_->cmbCasingSize->addItem(QString::number(size));
  MakeMenus();
  TranslateForm(*this, host.Words());
  const auto text = [&](const OperatorText& words) { return ToQt(host.Words().Translator.In(words)); };
  for (const MessageText& choice : {text::SpinNot, text::SpinBoth, text::SpinDown, text::SpinAcross})
    ui_->cmdScroll->addItem(text(choice));
  // Its room must not depend on the width that its text wraps at.
  ui_->lblHint->setMinimumHeight(2 * ui_->lblHint->fontMetrics().lineSpacing());
  timer1_->SetInterval(kSpinMilliseconds);
  timer1_->SetHandler([this] { Timer1_Timer(); });
  LookAtAll();
  ConnectControls();
  ConnectMouse();
  cmdRedraw_Click();
}

frm3DWell::~frm3DWell() = default;

void frm3DWell::MakeMenus() {
  auto* bar = new QMenuBar(this);
  layout()->setMenuBar(bar);
  bar->addMenu(ui_->mnuFile);
  bar->addMenu(ui_->mnuRedraw);
  mnuPrint_ = ui_->mnuPrint;
  mnuPrint_->setEnabled(false);
  mnuRedrawTrue_ = ui_->mnuRedrawTrue;
  auto* group = new QActionGroup(this);
  group->addAction(ui_->mnuRedrawTrue);
  group->addAction(ui_->mnuRedrawFalse);
  connect(mnuPrint_, &QAction::triggered, this, &frm3DWell::mnuPrint_Click);
  connect(ui_->mnuClose, &QAction::triggered, this, &QDialog::hide);
  connect(mnuRedrawTrue_, &QAction::toggled, this, &frm3DWell::DrawSoon);
}

void frm3DWell::ConnectControls() {
  connect(ui_->cmdRedraw, &QPushButton::clicked, this, &frm3DWell::cmdRedraw_Click);
  connect(ui_->HScroll1, &QScrollBar::valueChanged, this, &frm3DWell::Bars_Change);
  connect(ui_->VScroll1, &QScrollBar::valueChanged, this, &frm3DWell::Bars_Change);
  connect(ui_->UpDown1_0, &QToolButton::clicked, this, [this] { UpDown1_Change(1); });
  connect(ui_->UpDown1_1, &QToolButton::clicked, this, [this] { UpDown1_Change(-1); });
  connect(ui_->cmdScroll, &QComboBox::currentIndexChanged, this, &frm3DWell::cmdScroll_Change);
  for (QLineEdit* box : text1_) connect(box, &QLineEdit::editingFinished, this, &frm3DWell::Boxes_Change);
  for (QCheckBox* check : check1_) connect(check, &QCheckBox::toggled, this, &frm3DWell::DrawSoon);
  connect(ui_->chkCasing, &QCheckBox::toggled, this, &frm3DWell::DrawSoon);
  connect(ui_->cmbCasingSize, &QComboBox::currentIndexChanged, this, &frm3DWell::DrawSoon);
}

/// A drag to the right turns the well to the right; one with another button takes it along. The picture follows at
/// once: its boxes are what is drawn.
void frm3DWell::ConnectMouse() {
  picture_->onTurn = [this](QPointF by) {
    SetValue(kAzimuth, Wrapped(Value(kAzimuth) + by.x() * kDegreesPerPixel));
    SetValue(kTilt, std::clamp(std::round(Value(kTilt) - by.y() * kDegreesPerPixel), 0.0, double{kHalfTurn}));
    Boxes_Change();
  };
  picture_->onMove = [this](QPointF by) {
    // What a pixel is at the focal point: a quarter of the distance is half of the picture.
    const double step = Value(kDistance) / 2 / picture_->width();
    const double turn = WellRadians(Value(kAzimuth));
    SetValue(kFocalEast, std::round(Value(kFocalEast) + by.x() * step * std::cos(turn)));
    SetValue(kFocalNorth, std::round(Value(kFocalNorth) - by.x() * step * std::sin(turn)));
    SetValue(kFocalDepth, std::round(Value(kFocalDepth) + by.y() * step));
    Boxes_Change();
  };
  picture_->onZoom = [this](double steps) {
    SetValue(kDistance, std::max(1.0, std::round(Value(kDistance) * std::pow(kZoom, -steps))));
    Boxes_Change();
  };
}

/// The whole frame in view, its middle in the middle.
void frm3DWell::LookAtAll() {
  const FrameSize frame = FrameOf(access_.well.Path.stations);
  const WellView preset;
  SetValue(kTilt, preset.tilt);
  SetValue(kAzimuth, preset.azimuth);
  SetValue(kDistance, 1000 * std::ceil(6 * std::max(1.5 * frame.width, frame.depth / 2)));
  SetValue(kFocalDepth, -frame.depth * 1000 / 2);
  for (const int box : {int{kFocalEast}, int{kFocalNorth}, int{kFirstShift}, kFirstShift + 1, kFirstShift + 2})
    SetValue(box, 0);
  ui_->HScroll1->setValue(static_cast<int>(preset.azimuth) + kHalfTurn);
  ui_->VScroll1->setValue(static_cast<int>(preset.tilt));
}

double frm3DWell::Value(int box) const {
  return Val(WithDecimalPoint(FromQt(text1_[static_cast<std::size_t>(box)]->text())));
}

void frm3DWell::SetValue(int box, double value) {
  text1_[static_cast<std::size_t>(box)]->setText(ToQt(Format(value, "#####0")));
}

WellView frm3DWell::ReadView() const {
  WellView view;
  view.tilt = Value(kTilt);
  view.azimuth = Value(kAzimuth);
  view.distance = Value(kDistance);
  view.focalEast = Value(kFocalEast);
  view.focalNorth = Value(kFocalNorth);
  view.focalDepth = Value(kFocalDepth);
  for (std::size_t i = 0; i < kWellSurfaces; ++i) {
    view.shift[i] = Value(kFirstShift + static_cast<int>(i));
    view.hidden[i] = check1_[i]->isChecked();
  }
  view.casing = ui_->chkCasing->isChecked();
  view.casingSize = ui_->cmbCasingSize->currentIndex();
  return view;
}

// --- Drawing ---

void frm3DWell::cmdRedraw_Click() {
  const auto text = [this](const OperatorText& words) { return ToQt(host_.Words().Translator.In(words)); };
  const Well& well = access_.well;
  setWindowTitle(text(text::SceneWindowTitle + FileOfWell(well)));
  ui_->lblUnits->setText(text(text::DepthUnitsAre + DepthUnitLabel(well.Units, well.SurveyFileUnits)));
  ui_->lblHint->setText(well.Path.stations.empty() ? text(text::NoPathYet) : text(text::SceneHint));
  scene_.Build(well.Path.stations, well.Sections, ReadView());
  picture_->DrawScene(scene_, host_.Words().Translator);
  mnuPrint_->setEnabled(true);
}

void frm3DWell::DrawSoon() {
  if (mnuRedrawTrue_->isChecked()) cmdRedraw_Click();
}

void frm3DWell::Refresh() {
  if (isVisible()) DrawSoon();
}

void frm3DWell::Bars_Change() {
  SetValue(kAzimuth, ui_->HScroll1->value() - kHalfTurn);
  SetValue(kTilt, ui_->VScroll1->value());
  DrawSoon();
}

void frm3DWell::Boxes_Change() {
  const QSignalBlocker across(ui_->HScroll1), down(ui_->VScroll1);
  ui_->HScroll1->setValue(Wrapped(Value(kAzimuth)) + kHalfTurn);
  ui_->VScroll1->setValue(static_cast<int>(std::clamp(Value(kTilt), 0.0, double{kHalfTurn})));
  DrawSoon();
}

void frm3DWell::UpDown1_Change(int steps) {
  SetValue(kDistance, std::max(0.0, Value(kDistance) + steps * kDistanceStep));
  DrawSoon();
}

// --- Spinning ---

void frm3DWell::cmdScroll_Change(int choice) {
  timer1_->SetEnabled(choice > 0);
}

/// Behind the last place of a bar comes its first one.
void frm3DWell::Timer1_Timer() {
  const auto step = [](QScrollBar& bar) {
    const QSignalBlocker still(bar);
    bar.setValue(bar.value() == bar.maximum() ? bar.minimum() : bar.value() + 1);
  };
  const int choice = ui_->cmdScroll->currentIndex();
  if (choice == 1 || choice == 2) step(*ui_->VScroll1);
  if (choice == 1 || choice == 3) step(*ui_->HScroll1);
  Bars_Change();
}

/// Nothing turns where nobody looks.
void frm3DWell::hideEvent(QHideEvent* event) {
  QDialog::hideEvent(event);
  ui_->cmdScroll->setCurrentIndex(0);
}

// --- Printing ---

void frm3DWell::mnuPrint_Click() {
  const QPointer<frm3DWell> alive(this);
  RunProcedure({host_.Boxes(), "mnuPrint_Click"}, [&](const Statements& run) {
    PrinterChoice& choice = access_.printer();
    if (!host_.Ask<frmPrinterSelect>(choice) || !alive) return;
    std::string file;
    if (choice.PrintsToFile()) {
      constexpr std::array<std::string_view, 1> kExtensions = {"pdf"};
      const auto path =
          SelectFile(host_.Boxes(), {text::SaveProfileTitle, text::ProfilePdfFiles, access_.session.DefaultDirectory},
                     kExtensions, FileUse::Save, access_.beep);
      if (!path || !alive) return;
      file = *path;
    }
    const PageLines lines = ReadPageLines(access_.platform.settings);
    const SceneHead head{WordsOf(lines, PageLine::Client), WordsOf(lines, PageLine::Well),
                         FormatDate(access_.platform.clock.Now(), "dd-mmm-yyyy"),
                         DepthUnitLabel(access_.well.Units, access_.well.SurveyFileUnits), access_.session.CurrentFont};
    run([&] { PrintScene(*choice.MakePrinter(file), scene_, head, host_.Words().Translator); });
  });
}

}  // namespace velk
