#pragma once

#include <QImage>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "model/session.h"
#include "paper/page_curves.h"
#include "paper/page_header.h"
#include "paper/page_records.h"
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
  PageComposer(Session& session, const Platform& platform, int graph, const std::string& log);
  /// A page of other records, with the comments of a log.
  PageComposer(Session& session, const Platform& platform, std::unique_ptr<PageRecords> records, std::string log);

  /// The file that the records come from.
  const std::string& File() const { return records_->File(); }
  const PageTimes& Times() const { return times_; }

  /// Finds the times of the page in the log: by round intervals, or, where `autoScale` is off, in four equal parts.
  /// False, and the times are not sound, where the log has no records over a length of time: WhyNoPage tells the
  /// cause. Raises what reading it raises.
  bool FilesAndTime(bool autoScale);
  const OperatorText& WhyNoPage() const { return whyNoPage_; }
  /// What of the log is not on the page, though nobody has entered its times; empty where all of it is.
  OperatorText Missing() const;
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
  /// Moves one so that its corner is there, within the sheet and above the plot, and remembers it.
  void MoveLogo(double left, double top);
  /// Gives the picture another size, of at least 1 mm and no higher than kEndOfHead, and remembers it.
  void SizeLogo(double width, double height);
  void MoveText(double left, double top);

  // --- What a change that is given up puts back ---
  struct State;
  State Present() const;
  void PutBack(const State& state);

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
  std::shared_ptr<const PageCurves> Curves(PageTarget target, double dotsPerInch);
  std::vector<ReportComment> Comments() const;

  /// What curves were read for: as long as it is the same, they are not read again.
  struct Key {
    PageTarget target;
    double dotsPerInch, start, step, plotTop;
    bool operator==(const Key&) const = default;
  };

  /// How the times came about.
  enum class Scaling { Round, Whole, Entered };

  Session& session_;
  Platform platform_;
  std::unique_ptr<PageRecords> records_;
  std::string log_;  ///< whose report has the comments
  PageTimes times_;
  Scaling scaling_ = Scaling::Round;
  double last_ = 0;    ///< time of the last record
  double latest_ = 0;  ///< a record has; later than that of the last one where the clock was set back
  OperatorText whyNoPage_;
  QImage logo_;
  PageLines lines_;  ///< without their prefixes
  PageBox textSize_;
  std::vector<std::pair<Key, std::shared_ptr<const PageCurves>>> drawn_;  ///< the last ones
};

struct PageComposer::State {
  PageTimes times;
  Scaling scaling;
  double last, latest;
  QImage logo;
  PageLines lines;
  PageBox textSize;
  bool logoInserted, textInserted;
  float imageX, imageY, imageH, imageW, textX, textY;
  std::string font;
};

}  // namespace velk
