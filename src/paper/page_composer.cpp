#include "paper/page_composer.h"

#include <algorithm>

#include "base/dates.h"
#include "base/errors.h"
#include "imaging/read_picture.h"
#include "paper/log_records.h"
#include "paper/texts.h"
#include "platform/database/catalog.h"
#include "platform/loop/clock.h"

namespace velk {

namespace {

constexpr MessageText kPrefixes[] = {text::ClientLine, text::FieldLine, text::WellLine, text::JobLine};

constexpr QSize kLargestLogo(2400, 2400);
constexpr double kLogoLeft = 20, kLogoTop = 10, kLogoHeight = 20, kLogoWidest = 80;
constexpr double kLeastSide = 1;
constexpr double kTextLeft = 110, kTextTop = 10;

constexpr std::size_t kDrawnKept = 4;

/// Why records from `first` to `last` make no page.
OperatorText CauseOf(double first, double last) {
  if (!IsDateTime(first) || !IsDateTime(last)) return text::NoTimeAtAnEnd;
  return last < first ? text::EndsBeforeItBegins : text::NoSpan;
}

double Within(double place, double size, double sheet) {
  return std::clamp(place, 0.0, std::max(0.0, sheet - size));
}

}  // namespace

PageComposer::PageComposer(Session& session, const Platform& platform, int graph, const std::string& log)
    : PageComposer(session, platform, std::make_unique<LogRecords>(session, platform.language, graph, log), log) {
}

PageComposer::PageComposer(Session& session, const Platform& platform, std::unique_ptr<PageRecords> records,
                           std::string log)
    : session_(session),
      platform_(platform),
      records_(std::move(records)),
      log_(std::move(log)),
      lines_(StoredLines()) {
  LoadLogo();
}

bool PageComposer::FilesAndTime(bool autoScale) {
  const auto span = records_->FirstAndLast();
  last_ = span ? span->last : 0;
  latest_ = span ? span->latest : 0;
  times_ = span ? TimesOf(span->first, span->last, autoScale) : PageTimes();
  scaling_ = autoScale ? Scaling::Round : Scaling::Whole;
  const bool isSound = times_.IsSound();
  if (!isSound) whyNoPage_ = span ? CauseOf(span->first, span->last) : OperatorText(text::NoSpan);
  return isSound;
}

OperatorText PageComposer::Missing() const {
  if (scaling_ == Scaling::Round && EndsBefore(times_, last_)) return text::PageEndsEarlier;
  if (scaling_ != Scaling::Entered && EndsBefore(times_, latest_)) return text::LaterRecordsMissing;
  return {};
}

void PageComposer::SetTimes(double start, double end) {
  times_ = TimesOf(start, end, false);
  scaling_ = Scaling::Entered;
}

bool PageComposer::LoadLogo() {
  const auto picture = ReadPicture(session_.CompanyLogoFile, kLargestLogo);
  logo_ = picture ? picture->convertToFormat(QImage::Format_ARGB32) : QImage();
  return !logo_.isNull();
}

void PageComposer::StoreLines(const PageLines& lines) {
  lines_ = lines;
  SavePageLines(platform_.settings, lines);
}

TextBlock PageComposer::Lines() const {
  TextBlock shown;
  for (std::size_t i = 0; i < shown.size(); ++i) shown[i] = platform_.language.In(kPrefixes[i]) + lines_[i];
  return shown;
}

PageBox PageComposer::LogoBox() const {
  PageBox box;
  box.isThere = session_.LogoInserted && !logo_.isNull();
  if (logo_.isNull()) return box;
  const bool isPlaced = session_.PrintGraphImageW > 0 && session_.PrintGraphImageH > 0;
  const double natural = std::min(kLogoWidest, kLogoHeight * logo_.width() / logo_.height());
  box.width = isPlaced ? std::min<double>(session_.PrintGraphImageW, kSheetWidth) : natural;
  box.height =
      isPlaced ? std::min<double>(session_.PrintGraphImageH, kEndOfHead) : natural * logo_.height() / logo_.width();
  box.left = Within(isPlaced ? session_.PrintGraphImageX : kLogoLeft, box.width, kSheetWidth);
  box.top = Within(isPlaced ? session_.PrintGraphImageY : kLogoTop, box.height, kEndOfHead);
  return box;
}

PageBox PageComposer::TextBox() const {
  PageBox box = textSize_;
  const bool isPlaced = session_.PrintGraphText1X > 0 || session_.PrintGraphText1Y > 0;
  box.isThere = session_.TextInserted;
  box.left = Within(isPlaced ? session_.PrintGraphText1X : kTextLeft, box.width, kSheetWidth);
  box.top = Within(isPlaced ? session_.PrintGraphText1Y : kTextTop, box.height, kEndOfHead);
  return box;
}

void PageComposer::MoveLogo(double left, double top) {
  const PageBox box = LogoBox();
  session_.PrintGraphImageX = static_cast<float>(Within(left, box.width, kSheetWidth));
  session_.PrintGraphImageY = static_cast<float>(Within(top, box.height, kEndOfHead));
  session_.PrintGraphImageW = static_cast<float>(box.width);
  session_.PrintGraphImageH = static_cast<float>(box.height);
}

void PageComposer::SizeLogo(double width, double height) {
  const PageBox box = LogoBox();
  session_.PrintGraphImageX = static_cast<float>(box.left);
  session_.PrintGraphImageY = static_cast<float>(box.top);
  session_.PrintGraphImageW = static_cast<float>(std::clamp(width, kLeastSide, kSheetWidth));
  session_.PrintGraphImageH = static_cast<float>(std::clamp(height, kLeastSide, kEndOfHead));
}

void PageComposer::MoveText(double left, double top) {
  // 0, 0 stands for a block that was never placed.
  session_.PrintGraphText1X = static_cast<float>(std::max(0.1, Within(left, textSize_.width, kSheetWidth)));
  session_.PrintGraphText1Y = static_cast<float>(Within(top, textSize_.height, kEndOfHead));
}

PageComposer::State PageComposer::Present() const {
  return {times_,
          scaling_,
          last_,
          latest_,
          logo_,
          lines_,
          textSize_,
          session_.LogoInserted,
          session_.TextInserted,
          session_.PrintGraphImageX,
          session_.PrintGraphImageY,
          session_.PrintGraphImageH,
          session_.PrintGraphImageW,
          session_.PrintGraphText1X,
          session_.PrintGraphText1Y,
          session_.CurrentFont};
}

void PageComposer::PutBack(const State& state) {
  times_ = state.times;
  scaling_ = state.scaling;
  last_ = state.last;
  latest_ = state.latest;
  logo_ = state.logo;
  textSize_ = state.textSize;
  if (lines_ != state.lines) StoreLines(state.lines);
  session_.LogoInserted = state.logoInserted;
  session_.TextInserted = state.textInserted;
  session_.PrintGraphImageX = state.imageX;
  session_.PrintGraphImageY = state.imageY;
  session_.PrintGraphImageH = state.imageH;
  session_.PrintGraphImageW = state.imageW;
  session_.PrintGraphText1X = state.textX;
  session_.PrintGraphText1Y = state.textY;
  session_.CurrentFont = state.font;
}

PageLayout PageComposer::Layout(PageTarget target) const {
  return LayOut(records_->Curves().Count(), LogoBox(), TextBox(), target);
}

std::shared_ptr<const PageCurves> PageComposer::Curves(PageTarget target, double dotsPerInch) {
  const PageLayout layout = Layout(target);
  const Key key{target, dotsPerInch, times_.start, times_.step, layout.plotTop};
  for (const auto& [drawnFor, curves] : drawn_)
    if (drawnFor == key) return curves;
  const auto curves = std::make_shared<PageCurves>(records_->Curves(), layout, times_, dotsPerInch);
  LongTask task(platform_.dialogs, platform_.clock, text::PageTitle);
  task.Doing(text::DrawingPage);
  records_->Draw(*curves, times_, task);
  if (drawn_.size() >= kDrawnKept) drawn_.erase(drawn_.begin());
  drawn_.emplace_back(key, curves);
  return curves;
}

std::vector<ReportComment> PageComposer::Comments() const {
  const auto connection = Connection::Open(log_, OpenMode::ReadOnly);
  if (!Catalog(*connection).Find("SummaryReport")) throw RuntimeError(ErrorNumber::NoSuchTable, text::NoReportForPage);
  return ReadComments(*connection, times_.Around());
}

void PageComposer::Paint(Surface& page, PageTarget target, double dotsPerInch, const PageFont& font, Parts parts) {
  textSize_ = SizeOf(page, Lines(), font);
  const PageLayout layout = Layout(target);
  std::shared_ptr<const PageCurves> curves;
  std::vector<ReportComment> comments;
  if (parts.curves) RunStep("DrawCurves", [&] { curves = Curves(target, dotsPerInch); });
  if (parts.comments) RunStep("InsertReportComments", [&] { comments = Comments(); });
  RunStep(target == PageTarget::Paper ? "PrintHeader" : "DrawHeader",
          [&] { DrawHeader(page, records_->Curves(), layout, times_, font, platform_.language); });
  if (curves) curves->Draw(page, PenOf(target));
  InsertReportComments(page, layout, times_, comments, font);
  DrawFoot(page, layout, times_, File(), platform_.clock.Now(), font, platform_.language);
  if (const PageBox box = LogoBox(); box.isThere)
    page.Picture(box.left, box.top, box.width, box.height,
                 {reinterpret_cast<const std::uint32_t*>(logo_.constBits()),
                  static_cast<std::size_t>(logo_.bytesPerLine()) / 4, logo_.width(), logo_.height()});
  if (const PageBox box = TextBox(); box.isThere)
    RunStep("Picture4_Text", [&] { DrawTextBlock(page, box, Lines(), font); });
}

void PageComposer::RunStep(const char* procedure, const std::function<void()>& step) const {
  if (runStep)
    runStep(procedure, step);
  else
    step();
}

bool PageComposer::LiesInMargins(const Paper& sheet) const {
  const auto cut = [&](double left, double top, double right, double bottom) {
    return left < sheet.left || top < sheet.top || right > sheet.width - sheet.right ||
           bottom > sheet.height - sheet.bottom;
  };
  const PageLayout layout = Layout(PageTarget::Paper);
  if (cut(kFrameLeft, layout.top, kFrameRight, layout.bottom)) return true;
  const PageBox logo = LogoBox(), words = TextBox();
  return (logo.isThere && cut(logo.left, logo.top, logo.left + logo.width, logo.Bottom())) ||
         (words.isThere && cut(words.left, words.top, words.left + words.width, words.Bottom()));
}

}  // namespace velk
