#pragma once

#include <QImage>
#include <array>
#include <string>
#include <vector>

#include "base/language.h"
#include "platform/drawing/surface.h"
#include "platform/printing/printer.h"
#include "wells/profile_table.h"

namespace velk {

/// The picture without the points of its ground, which is light grey (0xC0C0C0): the paper shows there.
QImage WithoutGround(const QImage& picture);

/// The well on sheets of A4: the survey and the computed stations, the heading on each sheet. Surfaces are in
/// millimetres.
class ProfileReport {
 public:
  struct Content {
    const ProfileTable& table;
    std::vector<SurveyStation> survey;
    OperatorText surveyDepthUnit, surveyAngleUnit;
    ProfileHead head;
    QImage logo;          ///< null: none
    std::string printed;  ///< when it is printed
    std::string family;   ///< of its letters
  };

  /// Divides it among pages by the letters of `surface`, whose font is set. Language and table outlive this; cells are
  /// read when their page is drawn.
  ProfileReport(Surface& surface, Content content, const Language& language);

  int PageCount() const { return static_cast<int>(pages_.size()); }
  void Draw(Surface& surface, int page) const;
  /// All pages as one document.
  void Print(Printer& printer) const;

 private:
  using Row = std::vector<std::string>;
  /// A line of a page: a title alone, or cells that end at the right of their columns.
  enum class LineKind { Title, Heading, Survey, Results };
  struct Line {
    double y;
    LineKind kind;
    std::size_t at;  ///< place in texts_, or number of a row
  };

  void LayOutSurvey(const Surface& surface);
  void LayOutResults(const Surface& surface);
  /// A title, the names and units of its columns, and so many rows; the names and units come back on each page.
  void LayOut(const std::vector<Row>& heading, const std::string& title, LineKind kind, std::size_t rows);
  void BeginPage();
  void Add(LineKind kind, std::size_t at);
  Row CellsOf(const Line& line) const;
  Row TableRow(int number) const;
  bool HasRoomFor(std::size_t lines) const;
  void DrawHead(Surface& surface) const;
  void DrawFoot(Surface& surface, int page) const;

  Content content_;
  const Language& language_;
  std::array<std::string, 3> labels_;
  std::string title_, page_, pageOf_, printed_;
  double lineHeight_;
  std::vector<Row> texts_;  ///< titles and headings
  std::vector<std::vector<Line>> pages_;
  double y_ = 0;
};

}  // namespace velk
