#pragma once

#include <QImage>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "graphs/parameter_curves.h"
#include "model/session.h"
#include "paper/page_curves.h"
#include "paper/page_header.h"
#include "platform/platform.h"
#include "platform/printing/printer.h"
#include "settings/page_lines.h"

namespace velk {

/// The page of one graph: which times of the log stand on it, what stands above its frame, and how it is drawn on the
/// preview and on paper.
class PageComposer {
 public:
  /// All outlive the composer. `graph` is the number of the graph whose curves are drawn, `log` the file they come
  /// from.
  PageComposer(Session& session, const Platform& platform, int graph, std::string log);

  const std::string& Log() const { return log_; }
  const PageTimes& Times() const { return times_; }
  /// Time of the last record.
  double Last() const { return last_; }

  /// Finds the times of the page in the log: by round intervals, or, where `autoScale` is off, in four equal parts.
  /// False, and the times are not sound, where the log has no records over a length of time. Raises what reading it
  /// raises.
  bool FilesAndTime(bool autoScale);
  /// A page from `start` to `end`, which the operator has entered.
  void SetTimes(double start, double end);

  // --- What stands above the frame ---
  /// Reads the company's picture; false where it can't be read.
  bool LoadLogo();
  bool HasLogoFile() const { return !session_.CompanyLogoFile.empty(); }
  /// The lines of the text block, as they were last entered.
  PageLines StoredLines() const { return ReadPageLines(platform_.settings); }
  void StoreLines(const PageLines& lines);
  /// Places on the page; not there where it isn't inserted or has no picture.
  PageBox LogoBox() const;
  PageBox TextBox() const;
  /// The company's picture; null where there is none.
  const QImage& Logo() const { return logo_; }
  /// Moves one so that its corner is there, within the sheet, and remembers it.
  void MoveLogo(double left, double top);
  /// Gives the picture another size, of at least 1 mm, and remembers it.
  void SizeLogo(double width, double height);
  void MoveText(double left, double top);

  /// Where the frame lies.
  PageLayout Layout(PageTarget target) const;

  struct Parts {
    bool curves = false;
    bool comments = false;
  };
  /// Runs a step of the drawing that has a name of its own; by itself where nothing is said.
  std::function<void(const char* procedure, const std::function<void()>& step)> runStep;
  /// Draws the page on a surface in millimetres. Curves are drawn for a device of so many dots an inch. Raises
  /// NoSuchTable for comments of a log without a report, what reading the log raises, and TaskCancelled.
  void Paint(Surface& page, PageTarget target, double dotsPerInch, const PageFont& font, Parts parts);
  /// Something of the page lies in the margins of a sheet.
  bool LiesInMargins(const Paper& sheet) const;

 private:
  TextBlock Lines() const;
  void RunStep(const char* procedure, const std::function<void()>& step) const;
  const PageCurves& Curves(PageTarget target, double dotsPerInch);
  std::vector<ReportComment> Comments() const;

  /// What curves were read for: as long as it is the same, they are not read again.
  struct Key {
    PageTarget target;
    double dotsPerInch, start, step, plotTop;
    bool operator==(const Key&) const = default;
  };

  Session& session_;
  Platform platform_;
  ParameterCurves curves_;
  std::string log_;
  PageTimes times_;
  double last_ = 0;
  QImage logo_;
  PageLines lines_;  ///< without their prefixes
  PageBox textSize_;
  std::optional<Key> drawnFor_;
  std::optional<PageCurves> drawn_;
};

}  // namespace velk
