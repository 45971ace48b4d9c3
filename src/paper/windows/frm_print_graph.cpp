#include "paper/windows/frm_print_graph.h"

#include <QFileInfo>
#include <QPainter>
#include <QSignalBlocker>
#include <algorithm>
#include <cmath>

#include "base/dates.h"
#include "base/scope.h"
#include "base/text_qt.h"
#include "i18n/windows/translate_form.h"
#include "imaging/picture_file.h"
#include "imaging/texts.h"
#include "imaging/windows/copy_to_clipboard.h"
#include "imaging/windows/frm_printer_select.h"
#include "imaging/windows/print_target.h"
#include "model/help_topics.h"
#include "paper/texts.h"
#include "paper/windows/frm_image.h"
#include "paper/windows/page_view.h"
#include "platform/drawing/painted_surface.h"
#include "ui_frm_print_graph.h"

namespace velk {

namespace {

constexpr double kOfParent = 0.85;  ///< height of the sheet at 50 %, of the main window's
constexpr double kLeastHeight = 300;
constexpr int kPictureDots = 150;  ///< an inch of a saved picture
constexpr int kPdfDots = 300;
constexpr int kJpegQuality = 90;
constexpr double kPaperPoints = 10;
constexpr double kLeastLogoPixels = 200;  ///< wide, in its own window
constexpr const char* kMoment = "dd-mmm-yyyy hh:mm:ss";
constexpr int kWholePage = 2;  ///< the entry of the zoom at which the page fits

}  // namespace

MessageBox LogoUnreadableBox(const std::string& file) {
  return {text::LogoUnreadable + file, text::PageTitle, Buttons::Ok, BoxIcon::Exclamation};
}

frmPrintGraph::frmPrintGraph(WindowHost& host, const PageAccess& access, PageComposer& composer)
    : QDialog(host.Parent()),
      ui_(std::make_unique<Ui::frmPrintGraph>()),
      host_(host),
      access_(access),
      composer_(composer),
      view_(new PageView(this)),
      zoom_(kWholePage) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Printing);
  ui_->Scroll->setWidget(view_);
  for (const char* percent : {"100 %", "75 %", "50 %"}) ui_->Zoom->addItem(QString::fromLatin1(percent));
  ui_->Zoom->setCurrentIndex(zoom_);
  view_->logo = [this] { return composer_.LogoBox(); };
  view_->words = [this] { return composer_.TextBox(); };
  composer_.runStep = [this](const char* procedure, const auto& step) { RunStep(procedure, step); };
  const auto dropped = [this](void (PageComposer::*place)(double, double)) {
    return [this, place](double left, double top) { Place([=, this] { (composer_.*place)(left, top); }); };
  };
  view_->onLogoDropped = dropped(&PageComposer::MoveLogo);
  view_->onWordsDropped = dropped(&PageComposer::MoveText);
  view_->onLogoResized = [this] { ui_->Resize->click(); };
  view_->onMouse = [this](double y) { ShowTime(y); };
  Bind(ui_->Print, &frmPrintGraph::Print_Click);
  Bind(ui_->Printer, &frmPrintGraph::Printer_Click);
  Bind(ui_->SaveToFile, &frmPrintGraph::SaveToFile_Click);
  Bind(ui_->DrawCurves, &frmPrintGraph::DrawCurves_Click);
  Bind(ui_->Comments, &frmPrintGraph::Comments_Click);
  Bind(ui_->Logo, &frmPrintGraph::Logo_Click);
  Bind(ui_->InsertText, &frmPrintGraph::InsertText_Click);
  Bind(ui_->Resize, &frmPrintGraph::Resize_Click);
  Bind(ui_->ChangeFont, &frmPrintGraph::ChangeFont_Click);
  Bind(ui_->Copy, &frmPrintGraph::Copy_Click);
  Bind(ui_->AutoScale, &frmPrintGraph::AutoScale_Click);
  Bind(ui_->FullView, &frmPrintGraph::FullView_Click);
  connect(ui_->Zoom, &QComboBox::currentIndexChanged, this, [this] { RefreshPicture1(); });
  connect(ui_->cmdClose, &QPushButton::clicked, this, &QDialog::reject);
  ConnectPlaces();
  TranslateForm(*this, host.Words());
  RefreshPicture1();
  const int bar = 4 * ui_->Scroll->frameWidth();
  ui_->Scroll->setMinimumSize(view_->size().boundedTo(QSize(700, 640)) + QSize(bar, bar));
}

frmPrintGraph::~frmPrintGraph() {
  composer_.runStep = nullptr;
}

void frmPrintGraph::Bind(QAbstractButton* key, void (frmPrintGraph::*work)(Run)) {
  connect(key, &QAbstractButton::clicked, this, [this, work] {
    // A long task lets events run: nothing is begun a second time meanwhile.
    if (!drawing_) {
      drawing_ = true;
      RunProcedure({access_.platform.dialogs, "Toolbar1_ButtonClick", text::PageTitle},
                   [&](Run run) { (this->*work)(run); });
      drawing_ = false;
    }
    UpdateKeys();
  });
}

double frmPrintGraph::ZoomPercent() const {
  return ui_->Zoom->currentText().section(QLatin1Char(' '), 0, 0).toDouble();
}

std::string frmPrintGraph::Family() const {
  const std::string& family = access_.session.CurrentFont;
  return family.empty() ? "MS Sans Serif" : family;
}

/// The sheet as a picture so many pixels high; `points` count on the screen.
QImage frmPrintGraph::DrawSheet(double height, double ratio, double points) {
  const QSizeF size(height * kSheetWidth / kSheetHeight, height);
  QImage image((size * ratio).toSize(), QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  const double dotsPerInch = height * ratio / kSheetHeight * PerInch(Unit::Millimetre);
  PaintedSurface sheet(painter, Unit::Millimetre, kSheetWidth, kSheetHeight, dotsPerInch);
  // A small sheet gets no larger letters than paper has.
  const double pagePoints = std::min(kPaperPoints, points * PerInch(Unit::Pixel) * ratio / dotsPerInch);
  composer_.Paint(sheet, PageTarget::Preview, dotsPerInch, {Family(), pagePoints}, {curvesDrawn_, commentsDrawn_});
  painter.end();
  image.setDevicePixelRatio(ratio);
  return image;
}

void frmPrintGraph::RefreshPicture1(const std::function<void()>& change) {
  RunProcedure({access_.platform.dialogs, "RefreshPicture1", text::PageTitle}, [&](Run run) { Change(run, change); });
  UpdateKeys();
}

/// A change of the page, and what it takes to show it. Where that is left, or fails, all is as it was.
void frmPrintGraph::Change(Run run, const std::function<void()>& change) {
  const PageComposer::State page = composer_.Present();
  const bool curves = curvesDrawn_, comments = commentsDrawn_, autoScale = access_.autoScaleTime;
  try {
    change();
    Redraw(run);
  } catch (...) {
    composer_.PutBack(page);
    curvesDrawn_ = curves;
    commentsDrawn_ = comments;
    access_.autoScaleTime = autoScale;
    const QSignalBlocker quiet(ui_->Zoom);
    ui_->Zoom->setCurrentIndex(zoom_);
    throw;
  }
  zoom_ = ui_->Zoom->currentIndex();
}

void frmPrintGraph::Redraw(Run run) {
  const QWidget* parent = parentWidget();
  const double fit = std::max(kLeastHeight, kOfParent * (parent ? parent->height() : kLeastHeight));
  const double points = std::max(1.0, std::floor(5 * ZoomPercent() / 50));
  run([&] { view_->Show(DrawSheet(fit * ZoomPercent() / 50, devicePixelRatioF(), points)); });
}

void frmPrintGraph::UpdateKeys() {
  const Language& language = access_.platform.language;
  const auto show = [&](QAbstractButton* key, bool on, const MessageText& ifOn, const MessageText& ifOff) {
    key->setChecked(on);
    key->setToolTip(ToQt(language.In(on ? ifOn : ifOff)));
  };
  ui_->DrawCurves->setChecked(curvesDrawn_);
  ui_->Comments->setChecked(commentsDrawn_);
  show(ui_->Logo, composer_.LogoBox().isThere, text::RemoveLogo, text::InsertLogo);
  show(ui_->InsertText, access_.session.TextInserted, text::RemoveHeader, text::InsertHeader);
  show(ui_->AutoScale, access_.autoScaleTime, text::AutoScaling, text::ManualScaling);
  ui_->Logo->setEnabled(composer_.HasLogoFile());
  ShowPlaces();
  ui_->lblNote->setText(ToQt(language.In(composer_.Missing())));
  const PrinterChoice& printer = access_.printer;
  ui_->lblPrinter->setText(ToQt(language.In(text::PrintingTo) +
                                (printer.PrintsToFile() ? language.In(text::PrintToFile) : printer.PrinterName())));
}

void frmPrintGraph::ShowTime(double y) {
  const PageLayout layout = composer_.Layout(PageTarget::Preview);
  if (!(y >= layout.plotTop && y <= layout.bottom)) return ui_->Label1->clear();
  const PageTimes& times = composer_.Times();
  const double time = times.start + (y - layout.plotTop) * 4 * times.step / (layout.bottom - layout.plotTop);
  ui_->Label1->setText(ToQt(FormatDate(time, "dd/mm/yy hh:mm:ss")));
}

/// A step under its own name: what fails is shown with it, and Cancel leaves the page as Cancel there does.
void frmPrintGraph::RunStep(const char* procedure, const std::function<void()>& step) {
  if (!RunProcedure({access_.platform.dialogs, procedure, text::PageTitle}, [&](Run run) { run(step); }))
    throw LeaveProcedure{};
}

void frmPrintGraph::DrawCurves_Click(Run run) {
  Change(run, [&] { curvesDrawn_ = !curvesDrawn_; });
}

void frmPrintGraph::Comments_Click(Run run) {
  Change(run, [&] { commentsDrawn_ = !commentsDrawn_; });
}

void frmPrintGraph::Logo_Click(Run run) {
  Change(run, [&] {
    const bool insert = !composer_.LogoBox().isThere;
    if (insert && !composer_.LoadLogo()) {
      access_.platform.dialogs.Message(LogoUnreadableBox(access_.session.CompanyLogoFile));
      throw LeaveProcedure{};
    }
    access_.session.LogoInserted = insert;
  });
  access_.keepSettings();
}

void frmPrintGraph::InsertText_Click(Run run) {
  Change(run, [&] {
    bool& inserted = access_.session.TextInserted;
    if (!inserted) RunStep("FillPicture3Info", [&] { FillPicture3Info(); });
    inserted = !inserted;
  });
  access_.keepSettings();
}

void frmPrintGraph::FillPicture3Info() {
  PageLines lines = composer_.StoredLines();
  constexpr MessageText kPrompts[] = {text::ClientLine, text::FieldLine, text::WellLine, text::JobLine};
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const auto entered = access_.platform.dialogs.Input(kPrompts[i], text::PageTitle, lines[i]);
    if (!entered) throw LeaveProcedure{};
    lines[i] = *entered;
  }
  composer_.StoreLines(lines);
}

std::optional<double> frmPrintGraph::AskForTime(const MessageText& prompt, double present) {
  const std::string shown = FormatDate(present, kMoment);
  const auto entered = access_.platform.dialogs.Input(prompt, text::StartTitle, shown);
  // What was offered is the present time, with its fraction of a second.
  if (!entered || *entered == shown) return std::nullopt;
  try {
    return CDate(*entered);
  } catch (const RuntimeError&) {
    return std::nullopt;
  }
}

/// Takes the entries that are times; the present ones stay for others. False where the page would have no length.
bool frmPrintGraph::AskForTimes() {
  const PageTimes before = composer_.Times();
  const double start = AskForTime(text::EnterStart, before.start).value_or(before.start);
  const double end = AskForTime(text::EnterEnd, before.End()).value_or(before.End());
  composer_.SetTimes(start, end);
  if (composer_.Times().IsSound()) return true;
  composer_.SetTimes(before.start, before.End());
  access_.platform.dialogs.Message({text::EndNotBehindStart, text::PageTitle, Buttons::Ok, BoxIcon::Exclamation});
  return false;
}

void frmPrintGraph::FilesAndTime(bool autoScale) {
  RunStep("FilesAndTime", [&] {
    if (composer_.FilesAndTime(autoScale)) return;
    access_.platform.dialogs.Message({composer_.WhyNoPage(), text::PageTitle, Buttons::Ok, BoxIcon::Exclamation});
    throw LeaveProcedure{};
  });
  access_.autoScaleTime = autoScale;
}

void frmPrintGraph::AutoScale_Click(Run run) {
  Change(run, [&] {
    if (!access_.autoScaleTime) return FilesAndTime(true);
    if (!AskForTimes()) throw LeaveProcedure{};
    access_.autoScaleTime = false;
  });
}

/// All times of the log on a page that is seen as a whole.
void frmPrintGraph::FullView_Click(Run run) {
  Change(run, [&] {
    FilesAndTime(false);
    const QSignalBlocker quiet(ui_->Zoom);
    ui_->Zoom->setCurrentIndex(kWholePage);
  });
}

Bitmap frmPrintGraph::SheetAsPicture() {
  const OnLeaving previewAgain([&, page = composer_.Present()] { composer_.PutBack(page); });
  const double height = kSheetHeight / PerInch(Unit::Millimetre) * kPictureDots;
  const QImage sheet = DrawSheet(height, 1, kPaperPoints * kPictureDots / PerInch(Unit::Pixel));
  Bitmap image;
  image.CreateFromPicture({reinterpret_cast<const std::uint32_t*>(sheet.constBits()),
                           static_cast<std::size_t>(sheet.bytesPerLine()) / 4, sheet.width(), sheet.height()});
  return image;
}

void frmPrintGraph::SaveToFile_Click(Run run) {
  const auto path = AskForFile(access_.platform.dialogs, access_.session.DefaultDirectory, text::SavePictureTitle,
                               text::PictureFilter, {".jpg", ".bmp", ".jpeg"});
  if (!path) return;
  run([&] {
    const Bitmap image = SheetAsPicture();
    if (QFileInfo(ToQt(*path)).suffix().toLower() == "bmp")
      SaveBMP(image, *path, kPictureDots);
    else
      SaveJPG(image, *path, kJpegQuality, kPictureDots);
  });
}

void frmPrintGraph::Copy_Click(Run run) {
  if (!run([&] { return CopyToClipboard(SheetAsPicture()); }))
    access_.platform.dialogs.Message({text::NotToClipboard, text::PageTitle, Buttons::Ok, BoxIcon::Exclamation});
}

void frmPrintGraph::Printer_Click(Run) {
  host_.Ask<frmPrinterSelect>(access_.printer);
}

void frmPrintGraph::Print_Click(Run run) {
  const auto file = AskForPrinter(host_, access_.printer, access_.session.DefaultDirectory);
  if (file) run([&] { PrintOn(*access_.printer.MakePrinter(*file)); });
}

void frmPrintGraph::PrintOn(Printer& printer) {
  const OnLeaving previewAgain([&, page = composer_.Present()] { composer_.PutBack(page); });
  if (!marginsTold_ && composer_.LiesInMargins(printer.Sheet())) {
    access_.platform.dialogs.Message({text::MarginsHide, text::PageTitle, Buttons::Ok, BoxIcon::Information});
    marginsTold_ = true;
  }
  const double dots =
      access_.printer.PrintsToFile() ? kPdfDots : PaperDots(static_cast<double>(PrinterScaleFactor(printer)));
  Surface& page = printer.Begin(composer_.File().substr(composer_.File().rfind('/') + 1), Unit::Millimetre);
  composer_.Paint(page, PageTarget::Paper, dots, {Family(), kPaperPoints}, {true, commentsDrawn_});
  printer.End();
}

// --- Places and looks of what stands above the frame ---

void frmPrintGraph::ConnectPlaces() {
  const QString millimetres = ToQt(access_.platform.language.In(text::Millimetres));
  const auto follow = [&](QDoubleSpinBox* entry, const std::function<void(double)>& place) {
    entry->setSuffix(millimetres);
    connect(entry, &QDoubleSpinBox::valueChanged, this, [this, place](double value) { Place([&] { place(value); }); });
  };
  follow(ui_->LogoLeft, [this](double left) { composer_.MoveLogo(left, composer_.LogoBox().top); });
  follow(ui_->LogoTop, [this](double top) { composer_.MoveLogo(composer_.LogoBox().left, top); });
  follow(ui_->LogoWidth, [this](double width) { composer_.SizeLogo(width, composer_.LogoBox().height); });
  follow(ui_->LogoHeight, [this](double height) { composer_.SizeLogo(composer_.LogoBox().width, height); });
  follow(ui_->HeaderLeft, [this](double left) { composer_.MoveText(left, composer_.TextBox().top); });
  follow(ui_->HeaderTop, [this](double top) { composer_.MoveText(composer_.TextBox().left, top); });
}

void frmPrintGraph::Place(const std::function<void()>& place) {
  RefreshPicture1(place);
  access_.keepSettings();
}

void frmPrintGraph::ShowPlaces() {
  const auto show = [](QDoubleSpinBox* entry, double value, double most, bool on) {
    const QSignalBlocker quiet(entry);
    entry->setMaximum(most);
    entry->setValue(value);
    entry->setEnabled(on);
  };
  const PageBox logo = composer_.LogoBox(), words = composer_.TextBox();
  show(ui_->LogoLeft, logo.left, kSheetWidth, logo.isThere);
  show(ui_->LogoTop, logo.top, kEndOfHead, logo.isThere);
  show(ui_->LogoWidth, logo.width, kSheetWidth, logo.isThere);
  show(ui_->LogoHeight, logo.height, kEndOfHead, logo.isThere);
  show(ui_->HeaderLeft, words.left, kSheetWidth, words.isThere);
  show(ui_->HeaderTop, words.top, kEndOfHead, words.isThere);
  ui_->Resize->setEnabled(logo.isThere);
}

/// The picture in a window of its own, as large as on the page at 100 %: its size follows that of the window.
void frmPrintGraph::Resize_Click(Run) {
  const PageBox box = composer_.LogoBox();
  const double pixels = std::max(100 / (ZoomPercent() * view_->MillimetresPerPixel()),  // a millimetre
                                 kLeastLogoPixels / box.width);
  host_.Show<frmImage>(
      composer_.Logo(), QSizeF(box.width * pixels, box.height * pixels).toSize(),
      [&](double wide, double high) { Place([&] { composer_.SizeLogo(box.width * wide, box.height * high); }); });
}

void frmPrintGraph::ChangeFont_Click(Run run) {
  const auto chosen = access_.platform.dialogs.Font({.family = Family()});
  if (!chosen) return;
  Change(run, [&] { access_.session.CurrentFont = chosen->family; });
  access_.keepSettings();
}

}  // namespace velk
