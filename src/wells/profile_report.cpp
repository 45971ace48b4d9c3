#include "wells/profile_report.h"

#include <algorithm>

#include "base/colour.h"
#include "base/numbers.h"
#include "platform/drawing/units.h"
#include "wells/texts.h"

namespace velk {

namespace {

constexpr double kLeft = 20, kRight = 190, kTop = 15, kBottom = 282;
constexpr double kLogoHeight = 18, kLogoWidest = 50;
constexpr double kPoints = 9;
constexpr double kSpacing = 1.25;
constexpr int kHeadLines = 4;
constexpr QRgb kGround = 0xC0C0C0;
constexpr std::int32_t kMuted = 0x70665B;

const double kRule = Convert(0.25, Unit::Millimetre, Unit::Pixel);

double ColumnRight(std::size_t column) {
  return kLeft + (kRight - kLeft) * static_cast<double>(column + 1) / kProfileColumns;
}

/// Headings in as many rows as their words need, the last one at the bottom of each.
std::vector<std::vector<std::string>> Wrapped(const Surface& surface, const std::vector<std::string>& texts) {
  const double room = (kRight - kLeft) / kProfileColumns - 1;
  std::vector<std::vector<std::string>> columns;
  std::size_t rows = 1;
  for (const std::string& text : texts) {
    std::vector<std::string> lines(1);
    for (std::size_t at = 0; at < text.size();) {
      const std::size_t end = std::min(text.find(' ', at), text.size());
      const std::string word = text.substr(at, end - at);
      const std::string longer = lines.back().empty() ? word : lines.back() + " " + word;
      if (lines.back().empty() || surface.TextWidth(longer) <= room)
        lines.back() = longer;
      else
        lines.push_back(word);
      at = end + 1;
    }
    rows = std::max(rows, lines.size());
    columns.push_back(std::move(lines));
  }
  std::vector<std::vector<std::string>> wrapped(rows, std::vector<std::string>(texts.size()));
  for (std::size_t column = 0; column < columns.size(); ++column)
    for (std::size_t i = 0; i < columns[column].size(); ++i)
      wrapped[rows - columns[column].size() + i][column] = columns[column][i];
  return wrapped;
}

}  // namespace

QImage WithoutGround(const QImage& picture) {
  QImage shown = picture.convertToFormat(QImage::Format_ARGB32);
  for (int y = 0; y < shown.height(); ++y) {
    auto* const row = reinterpret_cast<QRgb*>(shown.scanLine(y));
    std::replace_if(
        row, row + shown.width(), [](QRgb point) { return (point & RGB_MASK) == kGround; }, QRgb{0});
  }
  return shown;
}

ProfileReport::ProfileReport(Surface& surface, Content content, const Language& language)
    : content_(std::move(content)),
      language_(language),
      labels_(ProfileLabels(language)),
      title_(language.In(text::ProjectBefore) + content_.head.project + " (" + content_.head.file + ")"),
      page_(language.In(text::ReportPage)),
      pageOf_(language.In(text::ReportPageOf)),
      printed_(language.In(text::ReportPrinted)) {
  surface.SetFont({content_.family, kPoints});
  lineHeight_ = kSpacing * surface.TextHeight("X");
  if (!content_.logo.isNull()) content_.logo = WithoutGround(content_.logo);
  BeginPage();
  LayOutSurvey(surface);
  LayOutResults(surface);
}

void ProfileReport::LayOutSurvey(const Surface& surface) {
  const std::string angle = language_.In(content_.surveyAngleUnit);
  std::vector<Row> heading = Wrapped(surface, {language_.In(text::HeadingDepth), language_.In(text::HeadingInclination),
                                               language_.In(text::HeadingAzimuth)});
  heading.push_back({language_.In(content_.surveyDepthUnit), angle, angle});
  LayOut(heading, language_.In(text::ReportInput), LineKind::Survey, content_.survey.size());
}

void ProfileReport::LayOutResults(const Surface& surface) {
  std::vector<Row> heading = Wrapped(surface, TableRow(0));
  heading.push_back(TableRow(1));
  LayOut(heading, language_.In(text::ReportResults), LineKind::Results,
         static_cast<std::size_t>(content_.table.StationCount()));
}

ProfileReport::Row ProfileReport::TableRow(int number) const {
  Row cells;
  for (int column = 0; column < kProfileColumns; ++column)
    cells.push_back(content_.table.Cell(number, column, language_));
  return cells;
}

ProfileReport::Row ProfileReport::CellsOf(const Line& line) const {
  if (line.kind == LineKind::Results) return TableRow(static_cast<int>(line.at) + kProfileHeadRows);
  if (line.kind != LineKind::Survey) return texts_[line.at];
  const SurveyStation& row = content_.survey[line.at];
  return {Format(row.depth, "#####0"), Format(row.inclination, "###0.00"), Format(row.azimuth, "###0.00")};
}

void ProfileReport::LayOut(const std::vector<Row>& heading, const std::string& title, LineKind kind, std::size_t rows) {
  if (!HasRoomFor(heading.size() + 3)) BeginPage();
  texts_.push_back({title});
  Add(LineKind::Title, texts_.size() - 1);
  const std::size_t first = texts_.size();
  texts_.insert(texts_.end(), heading.begin(), heading.end());
  const auto addHeading = [&] {
    for (std::size_t i = 0; i < heading.size(); ++i) Add(LineKind::Heading, first + i);
  };
  addHeading();
  for (std::size_t row = 0; row < rows; ++row) {
    if (!HasRoomFor(1)) {
      BeginPage();
      addHeading();
    }
    Add(kind, row);
  }
  y_ += lineHeight_;
}

void ProfileReport::BeginPage() {
  pages_.emplace_back();
  y_ = kTop + std::max(kHeadLines * lineHeight_, kLogoHeight) + lineHeight_;
}

void ProfileReport::Add(LineKind kind, std::size_t at) {
  pages_.back().push_back({y_, kind, at});
  y_ += lineHeight_;
}

/// The foot has a line of its own.
bool ProfileReport::HasRoomFor(std::size_t lines) const {
  return y_ + static_cast<double>(lines + 2) * lineHeight_ <= kBottom;
}

void ProfileReport::DrawHead(Surface& surface) const {
  if (!content_.logo.isNull()) {
    const QImage& logo = content_.logo;
    const double width = std::min(kLogoWidest, kLogoHeight * logo.width() / logo.height());
    const double height = width * logo.height() / logo.width();
    surface.Picture(kRight - width, kTop, width, height,
                    {reinterpret_cast<const std::uint32_t*>(logo.constBits()),
                     static_cast<std::size_t>(logo.bytesPerLine()) / 4, logo.width(), logo.height()});
  }
  surface.SetFont({content_.family, kPoints, true});
  surface.Print(kLeft, kTop, title_, colour::Black);
  surface.SetFont({content_.family, kPoints});
  double widest = 0;
  for (const std::string& label : labels_) widest = std::max(widest, surface.TextWidth(label));
  for (std::size_t i = 0; i < labels_.size(); ++i) {
    std::string label = labels_[i];
    while (surface.TextWidth(label) < widest) label += ' ';
    surface.Print(kLeft, kTop + static_cast<double>(i + 1) * lineHeight_, label + " : " + content_.head.values[i],
                  colour::Black);
  }
}

void ProfileReport::DrawFoot(Surface& surface, int page) const {
  const double y = kBottom - lineHeight_;
  surface.Line(kLeft, y, kRight, y, kMuted);
  const std::string number = page_ + std::to_string(page + 1) + pageOf_ + std::to_string(PageCount());
  surface.Print(kLeft, y + 0.5, printed_ + content_.printed, kMuted);
  surface.Print(kRight - surface.TextWidth(number), y + 0.5, number, kMuted);
}

void ProfileReport::Draw(Surface& surface, int page) const {
  surface.SetPenWidth(kRule);
  DrawHead(surface);
  for (const Line& line : pages_[static_cast<std::size_t>(page)]) {
    const Row cells = CellsOf(line);
    if (line.kind == LineKind::Title) {
      surface.SetFont({content_.family, kPoints, true});
      surface.Print(kLeft, line.y, cells.front(), colour::Black);
      surface.SetFont({content_.family, kPoints});
      continue;
    }
    for (std::size_t column = 0; column < cells.size(); ++column) {
      const std::string& cell = cells[column];
      if (!cell.empty()) surface.Print(ColumnRight(column) - surface.TextWidth(cell), line.y, cell, colour::Black);
    }
  }
  DrawFoot(surface, page);
}

void ProfileReport::Print(Printer& printer) const {
  Surface& surface = printer.Begin(content_.head.file.empty() ? title_ : content_.head.file, Unit::Millimetre);
  for (int page = 0; page < PageCount(); ++page) {
    if (page > 0) printer.NewPage();
    Draw(surface, page);
  }
  printer.End();
}

}  // namespace velk
